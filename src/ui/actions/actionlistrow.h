#pragma once

#include <QWidget>

class QLabel;
class QListWidgetItem;
class QToolButton;

// One row of the action list: title, description, the status icons and the "more" button.
class ActionListRow final : public QWidget
{
    Q_OBJECT

public:
    ActionListRow(const QListWidgetItem *item, QWidget *parent = nullptr);

    QToolButton *moreButton() const { return m_more; }
    QLabel *statusIcon() const { return m_status; }
    QLabel *shortcutIcon() const { return m_shortcut; }

private:
    QLabel *iconLabel(const QString &path, const QString &toolTip);

    QLabel *m_status = nullptr;
    QLabel *m_shortcut = nullptr;
    QToolButton *m_more = nullptr;
};
