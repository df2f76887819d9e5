#pragma once

#include <QList>
#include <QObject>
#include <QProcess>
#include <QString>

class QTimer;

// Asks the installer's maintenance tool, which sits next to the program on Windows, whether
// there is a newer version, without making anyone wait for the answer. Elsewhere the system's
// packages update the program and there is no tool, so there is nothing to check.
class UpdateChecker final : public QObject
{
    Q_OBJECT

public:
    struct Update
    {
        QString name;
        QString version;
    };

    static constexpr int TimeoutMs = 120000;

    // tool: the maintenance tool's path; empty means none.
    explicit UpdateChecker(const QString &tool, QObject *parent = nullptr);
    ~UpdateChecker() override;

    // The maintenance tool of this program, on Windows; empty elsewhere.
    static QString toolForThisProgram();
    // The updates listed in the tool's answer (an <updates> element).
    static QList<Update> parse(const QByteArray &output);

    bool isAvailable() const { return !m_tool.isEmpty(); }
    // Answers with updatesAvailable(), noUpdates() or failed().
    void check();
    // Starts the tool's updater, which takes over from here.
    bool startUpdater() const;
    // The question that tells the user what is new and asks whether to update.
    static QString offerText(const QList<Update> &updates);

signals:
    void updatesAvailable(const QList<UpdateChecker::Update> &updates);
    void noUpdates();
    void failed(const QString &why);

private:
    void onFinished(int exitCode, QProcess::ExitStatus status);

    QString m_tool;
    QProcess m_process;
    QTimer *m_timer;
};
