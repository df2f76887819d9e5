#pragma once

#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QRect>
#include <QStringList>

// The test target of the desktop tests: our small editor in a real window on the test's X
// server, with xdotool to type and click into it as a user would.
class TargetWindow final : public QObject
{
    Q_OBJECT

public:
    explicit TargetWindow(QObject *parent = nullptr);
    ~TargetWindow() override;

    // The editor's program; a copy of it under another name is another application.
    static QString editorPath();
    // Starts the editor (or a copy of it) and gives it the focus; false with the reason in
    // error().
    bool start(const QString &program = editorPath());
    bool activate();
    QString error() const { return m_error; }
    qint64 processId() const { return m_process.processId(); }

    // What the editor holds: "text", "position" (caret) and "anchor".
    QJsonObject state();
    QString text() { return state().value(QLatin1String("text")).toString(); }
    bool clear();
    // Ends the editor at once, as a crash would.
    void kill();
    // Puts content on the clipboard from the editor: "copy-rich some text", "copy-image 800 600",
    // "copy-files /a.png;/b.png", "copy-secret text" (see the editor for what each holds).
    bool copy(const QByteArray &command);

    // Runs xdotool with the arguments; false when it fails.
    static bool xdotool(const QStringList &arguments, QString *output = nullptr);
    // Presses keys ("ctrl+shift+v", "Return") or types text into the focused window, at a
    // person's pace.
    static bool press(const QStringList &keys);
    static bool type(const QString &text);
    // Where a window (by its X id) is on the screen; empty when xdotool cannot tell.
    static QRect geometry(const QString &window);

private:
    QByteArray request(const QByteArray &command, const QByteArray &answerPrefix);

    QProcess m_process;
    QByteArray m_output;
    QString m_error;
};
