#pragma once

#include <QMenu>

// The "Run action" submenu: every listed action that is not hidden, read from the settings
// each time the menu opens, so it follows the action list without being told.
class RunActionMenu final : public QMenu
{
    Q_OBJECT

public:
    explicit RunActionMenu(QWidget *parent = nullptr);

    void fill();

signals:
    // title is as the menu shows it, translated for built-ins.
    void actionChosen(const QString &path, const QString &title);
};
