#pragma once

#include <QObject>
#include <QProcess>
#include <QString>

class QTimer;

// Reads the text in an image with the Tesseract program, in a process of its own so the
// window never waits for it. One extraction at a time; a run that takes too long is stopped.
class TextExtractor final : public QObject
{
    Q_OBJECT

public:
    static constexpr int DefaultTimeoutMs = 60000;

    explicit TextExtractor(QObject *parent = nullptr);
    ~TextExtractor() override;

    // The tesseract program on the PATH; empty when it is not installed.
    static QString program();
    // What to tell a user who has no tesseract.
    static QString installHint();

    void setTimeoutMs(int ms) { m_timeoutMs = ms; }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    // Answers with finished() or failed(), always later.
    void extract(const QString &imagePath);

signals:
    void finished(const QString &text);
    void failed(const QString &why);

private:
    void onFinished(int exitCode, QProcess::ExitStatus status);

    QProcess m_process;
    QTimer *m_timer;
    int m_timeoutMs = DefaultTimeoutMs;
    bool m_timedOut = false;
};
