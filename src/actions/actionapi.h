#pragma once

#include <QObject>
#include <QStringList>

// Runs action scripts, and is what a script sees as the global "velmorin". Every run gets an
// engine of its own, so nothing a script leaves behind reaches the next one.
class ActionAPI final : public QObject
{
    Q_OBJECT

public:
    // A script that runs longer is stopped, so that a mistake cannot freeze the program.
    static constexpr int DefaultTimeLimitMs = 5000;

    explicit ActionAPI(QObject *parent = nullptr);

    Q_INVOKABLE QString test();

    // The script must evaluate to a function; it is called with the clipping object, then
    // one string per parameter value. On failure error is set and the list is empty.
    static QStringList runScript(const QString &script, const QString &plainText,
                                 const QString &application, const QStringList &parameterValues,
                                 QString &error, int timeLimitMs = DefaultTimeLimitMs);
    // Runs the action file at path (a resource or a file) with its parameter values from the
    // settings.
    static QStringList runActionFile(const QString &path, const QString &plainText,
                                     const QString &application, QString &error);
};
