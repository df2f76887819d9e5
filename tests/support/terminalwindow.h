#pragma once

#include <QObject>
#include <QProcess>
#include <QTemporaryDir>

// A third-party terminal emulator (xterm, xfce4-terminal) in a real window on the test's X
// server. Its shell line goes to a file, so the test reads what the terminal received once
// Return ends the line.
class TerminalWindow final : public QObject
{
    Q_OBJECT

public:
    explicit TerminalWindow(QObject *parent = nullptr);
    ~TerminalWindow() override;

    static bool isInstalled(const QString &program);
    // Starts the terminal and gives it the focus; false with the reason in error().
    bool start(const QString &program);
    bool activate();
    QString error() const { return m_error; }
    // The lines the terminal has passed on so far.
    QString received() const;

private:
    QProcess m_process;
    QTemporaryDir m_folder;
    QString m_error;
};
