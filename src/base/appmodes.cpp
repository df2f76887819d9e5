#include "base/appmodes.h"

#include "base/settings.h"

#include <QStandardPaths>

AppModes AppModes::fromArguments(const QStringList &arguments, bool writeDebugLog)
{
    AppModes modes;
    const QString first = arguments.size() > 1 ? arguments.at(1) : QString();
    modes.debug = arguments.size() > 1 && first == QLatin1String("--debug") ? true : writeDebugLog;
    modes.perfTest = first == QLatin1String("--perf-test");
    modes.demo = first == QLatin1String("--demo");
    return modes;
}

QVariantMap AppModes::settingsOverrides() const
{
    if (!perfTest)
        return {};
    return {{QLatin1String(SettingsKey::KeepItems), QStringLiteral("1000")},
            {QLatin1String(SettingsKey::IncludeImages), true},
            {QLatin1String(SettingsKey::SyncHistory), false}};
}

QString AppModes::debugLogPath()
{
    static const QString path = QStandardPaths::writableLocation(QStandardPaths::TempLocation) +
                                QStringLiteral("/Velmorin-debug-log.txt");
    return path;
}
