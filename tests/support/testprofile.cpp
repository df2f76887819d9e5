#include "testprofile.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>
#include <QSysInfo>

TestProfile::TestProfile()
{
    for (const char *folder : {"config", "data", "home", "tmp", "runtime"})
        QDir(m_root.path()).mkpath(QString::fromLatin1(folder));
    QFile::setPermissions(path(QStringLiteral("runtime")),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

QString TestProfile::path(const QString &relative) const
{
    return relative.isEmpty() ? m_root.path() : m_root.filePath(relative);
}

QString TestProfile::settingsFile() const
{
    // On Windows the profile's settings are an INI file (see useInThisProcess()).
    const bool windows = QSysInfo::productType() == QLatin1String("windows");
    return path(QStringLiteral("config/Velmorin/Velmorin.") + (windows ? "ini" : "conf"));
}

QString TestProfile::debugLogFile() const
{
    return path(QStringLiteral("tmp/Velmorin-debug-log.txt"));
}

QProcessEnvironment TestProfile::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
    env.insert(QStringLiteral("XDG_DATA_HOME"), path(QStringLiteral("data")));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("runtime")));
    env.insert(QStringLiteral("HOME"), path(QStringLiteral("home")));
    env.insert(QStringLiteral("TMPDIR"), path(QStringLiteral("tmp")));
    env.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    env.remove(QStringLiteral("LANGUAGE"));
    env.remove(QStringLiteral("LC_ALL"));
    return env;
}

void TestProfile::useInThisProcess() const
{
    qputenv("XDG_DATA_HOME", path(QStringLiteral("data")).toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", path(QStringLiteral("config")).toLocal8Bit());
#ifdef Q_OS_WIN
    // Windows keeps settings in the registry and data where the shell says, for every process of
    // the user: this process's go to a file of the profile, and its data to a test folder.
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QStandardPaths::setTestModeEnabled(true);
#endif
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       path(QStringLiteral("config")));
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path(QStringLiteral("config")));
}

void TestProfile::setSetting(const QString &key, const QVariant &value) const
{
    QSettings settings(settingsFile(), QSettings::IniFormat);
    settings.setValue(key, value);
}

QVariant TestProfile::setting(const QString &key) const
{
    return QSettings(settingsFile(), QSettings::IniFormat).value(key);
}
