#pragma once

#include <QDialog>

class QPlainTextEdit;
class QTimer;

// The sync log as it grows, for finding out why two computers disagree; it can be saved to a
// file to send along with a problem report.
class SyncLogDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit SyncLogDialog(QWidget *parent = nullptr);

    // "Synclog-<date and time>.txt" in the home folder: what the export offers.
    static QString defaultExportPath();

private:
    void poll();
    void exportLog();

    QPlainTextEdit *m_text;
    QTimer *m_poll;
    qint64 m_cursor = 0;
};
