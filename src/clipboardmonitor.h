#pragma once

#include <QWidget>

class QTreeWidget;

// A diagnostic window listing the formats on the clipboard and their sizes, kept up to date
// while it is open.
class ClipboardMonitor final : public QWidget
{
    Q_OBJECT

public:
    explicit ClipboardMonitor(QWidget *parent = nullptr);

    void refresh();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void onClipboardChanged();

    QTreeWidget *m_formats;
};
