#include "actions/actionfiles.h"

#include "base/settings.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>

namespace {

QString now()
{
    return QDateTime::currentDateTime().toString(Qt::ISODate);
}

// On failure the reason, for the log and the action list.
QString readObject(const QString &path, QJsonObject &action)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError)
        return error.errorString();
    if (!document.isObject())
        return QStringLiteral("not a JSON object");
    action = document.object();
    return QString();
}

// Listed so that the user sees it and can delete or fix it; never offered in a menu.
QJsonObject unreadableAction(const QString &path, const QString &reason)
{
    qWarning().noquote() << "The action file" << QDir::toNativeSeparators(path)
                         << "cannot be read:" << reason;
    return {{QStringLiteral("title"), QFileInfo(path).fileName()},
            {QStringLiteral("description"),
             QCoreApplication::translate("ActionList", "This action file cannot be read: %1")
                 .arg(reason)},
            {QStringLiteral("unreadable"), true}};
}

// Every character but ASCII letters and digits removed; a word after a removed character
// starts with a capital, so that "My action!" is still readable as "MyAction".
QString fileStem(const QString &title)
{
    static const QRegularExpression notLetterOrDigit(QStringLiteral("[^a-zA-Z\\d]"));
    const QStringList words = title.split(notLetterOrDigit);
    QString stem = words.first();
    for (qsizetype i = 1; i < words.size(); ++i)
        stem += words.at(i).left(1).toUpper() + words.at(i).mid(1);
    return stem;
}

QString parametersKey(const QString &path)
{
    return QLatin1String(SettingsKey::Parameters) + QLatin1Char('/') + QFileInfo(path).fileName();
}

} // namespace

namespace ActionFiles {

QString builtInFolder()
{
    return QStringLiteral(":/data/actions");
}

QString templatePath()
{
    return QStringLiteral(":/data/actions/template.js");
}

QString templateScript()
{
    QFile file(templatePath());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString userFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QLatin1Char('/') +
           QStringLiteral("actions");
}

bool isBuiltIn(const QString &path)
{
    return path.startsWith(QLatin1Char(':'));
}

bool comesBefore(const QString &a, const QString &b)
{
    if (isBuiltIn(a) != isBuiltIn(b))
        return isBuiltIn(a);
    return a < b;
}

void sortPaths(QStringList &paths)
{
    std::sort(paths.begin(), paths.end(), comesBefore);
}

QMap<QString, QJsonObject> scanFolder(const QString &folder)
{
    QMap<QString, QJsonObject> actions;
    QDirIterator entries(folder, QDir::Files);
    while (entries.hasNext()) {
        const QString path = entries.next();
        if (path == templatePath())
            continue;
        QJsonObject action;
        const QString problem = readObject(path, action);
        actions.insert(path, problem.isNull() ? action : unreadableAction(path, problem));
    }
    return actions;
}

QString newFilePath(const QString &title)
{
    const QString stem = userFolder() + QLatin1Char('/') + fileStem(title);
    QString path = stem + QStringLiteral(".json");
    for (int n = 1; QFileInfo::exists(path); ++n)
        path = stem + QStringLiteral("-%1.json").arg(n);
    return path;
}

bool writeAction(const QString &path, const QJsonObject &action)
{
    QSaveFile file(path);
    // Unbuffered: a short write on a full disk must show before the commit.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray bytes = QJsonDocument(action).toJson(QJsonDocument::Compact);
    return file.write(bytes) == bytes.size() && file.commit();
}

bool markDeleted(const QString &path)
{
    QJsonObject action;
    readObject(path, action);
    action.insert(QLatin1String("deleted"), true);
    action.insert(QLatin1String("created"), now());
    return writeAction(path, action);
}

QVariantMap parameterValues(const QString &path)
{
    return Settings::value(parametersKey(path)).toMap();
}

void setParameterValues(const QString &path, const QVariantMap &values)
{
    Settings::setValue(parametersKey(path), values);
}

QList<QPair<QString, QJsonObject>> listedActions()
{
    QMap<QString, QJsonObject> found = scanFolder(builtInFolder());
    found.insert(scanFolder(userFolder()));
    QStringList paths = found.keys();
    sortPaths(paths);
    QList<QPair<QString, QJsonObject>> actions;
    for (const QString &path : std::as_const(paths)) {
        const QJsonObject action = found.value(path);
        if (!action.value(QLatin1String("deleted")).toBool())
            actions.append({path, action});
    }
    return actions;
}

void writeListing(const QList<QPair<QString, QJsonObject>> &actions)
{
    QVariantMap titles;
    for (const auto &[path, action] : actions) {
        if (!action.value(QLatin1String("unreadable")).toBool())
            titles.insert(path, action.value(QLatin1String("title")).toString());
    }
    Settings::setValue(SettingsKey::Actions, titles);
}

QList<QPair<QString, QString>> listedActionTitles()
{
    const QVariantMap listed = Settings::value(SettingsKey::Actions).toMap();
    QStringList paths = listed.keys();
    sortPaths(paths);
    QList<QPair<QString, QString>> titles;
    for (const QString &path : std::as_const(paths))
        titles.append({path, listed.value(path).toString()});
    return titles;
}

QList<QPair<QString, QString>> menuEntries()
{
    const QStringList hidden = Settings::value(SettingsKey::HiddenActions).toStringList();
    QList<QPair<QString, QString>> entries = listedActionTitles();
    entries.removeIf(
        [&hidden](const QPair<QString, QString> &entry) { return hidden.contains(entry.first); });
    return entries;
}

} // namespace ActionFiles
