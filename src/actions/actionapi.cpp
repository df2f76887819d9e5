#include "actions/actionapi.h"

#include "actions/actionfiles.h"
#include "actions/scriptwatchdog.h"

#include <QDebug>
#include <QFile>
#include <QJSEngine>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// Calls the action inside a try block: a script may throw any value, not only an Error, and
// the engine would hand a thrown string back as if it were the result.
const char callWrapper[] = "(function (action, args) {\n"
                           "    try {\n"
                           "        return { result: action.apply(undefined, args) };\n"
                           "    } catch (thrown) {\n"
                           "        return { thrown: thrown };\n"
                           "    }\n"
                           "})";

QString failure(const QJSValue &error)
{
    return ActionAPI::tr("Failure at line %1: %2")
        .arg(error.property(QStringLiteral("lineNumber")).toInt())
        .arg(error.property(QStringLiteral("message")).toString());
}

QString tooLong(int timeLimitMs)
{
    return ActionAPI::tr("Failure: the script was stopped because it ran longer than %1 ms.")
        .arg(timeLimitMs);
}

QString elementText(const QJSValue &value)
{
    if (value.isObject())
        return value.property(QStringLiteral("plainText")).toString();
    return value.toString();
}

QStringList convertResult(const QJSValue &result)
{
    if (result.isArray()) {
        const int length = result.property(QStringLiteral("length")).toInt();
        QStringList texts;
        texts.reserve(length);
        for (int i = 0; i < length; ++i)
            texts.append(elementText(result.property(quint32(i))));
        return texts;
    }
    return {elementText(result)};
}

QJSValue argumentsFor(QJSEngine &engine, const QString &plainText, const QString &application,
                      const QStringList &parameterValues)
{
    QJSValue clipping = engine.newObject();
    clipping.setProperty(QStringLiteral("plainText"), plainText);
    clipping.setProperty(QStringLiteral("application"), application);
    QJSValue arguments = engine.newArray(quint32(parameterValues.size() + 1));
    arguments.setProperty(0, clipping);
    for (int i = 0; i < parameterValues.size(); ++i)
        arguments.setProperty(quint32(i + 1), parameterValues.at(i));
    return arguments;
}

} // namespace

ActionAPI::ActionAPI(QObject *parent) : QObject(parent) {}

QString ActionAPI::test()
{
    qDebug() << "Called test()";
    return QStringLiteral("Hello world");
}

QStringList ActionAPI::runScript(const QString &script, const QString &plainText,
                                 const QString &application, const QStringList &parameterValues,
                                 QString &error, int timeLimitMs)
{
    error.clear();
    QJSEngine engine;
    engine.installExtensions(QJSEngine::ConsoleExtension);
    engine.globalObject().setProperty(QStringLiteral("velmorin"),
                                      engine.newQObject(new ActionAPI(&engine)));
    ScriptWatchdog watchdog(&engine, timeLimitMs);

    const QJSValue action = engine.evaluate(script, QString(), 1);
    if (watchdog.fired()) {
        error = tooLong(timeLimitMs);
        return {};
    }
    if (action.isError()) {
        error = failure(action);
        return {};
    }
    if (!action.isCallable()) {
        error = tr("The action script is not a function.");
        return {};
    }

    const QJSValue outcome =
        engine.evaluate(QLatin1String(callWrapper))
            .call({action, argumentsFor(engine, plainText, application, parameterValues)});
    QStringList texts;
    if (outcome.isError()) {
        error = failure(outcome);
    } else if (outcome.hasOwnProperty(QStringLiteral("thrown"))) {
        const QJSValue thrown = outcome.property(QStringLiteral("thrown"));
        error = thrown.isError() ? failure(thrown)
                                 : tr("The action script threw: %1").arg(thrown.toString());
    } else {
        // Still watched: reading the result can run the script's own getters.
        texts = convertResult(outcome.property(QStringLiteral("result")));
    }
    if (watchdog.fired())
        error = tooLong(timeLimitMs);
    watchdog.disarm();
    return error.isEmpty() ? texts : QStringList();
}

QStringList ActionAPI::runActionFile(const QString &path, const QString &plainText,
                                     const QString &application, QString &error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = tr("Failed to open: ") + path;
        return {};
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError || !document.isObject()) {
        error = tr("Failed to parse json: ") + path;
        return {};
    }
    const QJsonObject action = document.object();
    const QVariantMap stored = ActionFiles::parameterValues(path);
    QStringList values;
    for (const QJsonValue &name : action.value(QLatin1String("params")).toArray())
        values.append(stored.value(name.toString()).toString());
    return runScript(action.value(QLatin1String("script")).toString(), plainText, application,
                     values, error);
}
