#include "base/settings.h"

#include "base/secrets.h"

#include <QDir>
#include <QSize>
#include <QStandardPaths>
#include <QVariantMap>

namespace {

QString inFolder(QStandardPaths::StandardLocation location, const QString &name)
{
    return QDir::toNativeSeparators(QStandardPaths::writableLocation(location) + QLatin1Char('/') +
                                    name);
}

QVariantMap &runOverrides()
{
    static QVariantMap overrides;
    return overrides;
}

} // namespace

QList<QPair<QString, QVariant>> Settings::firstRunDefaults()
{
    using namespace SettingsKey;
    const QVariantMap emptyMap;
    const QStringList emptyList;
    const QString none;
    return {
        {WriteDebugLog, false},
        {ClearHistory, false},
        {HistoryFilePath,
         inFolder(QStandardPaths::AppDataLocation, QStringLiteral("History.json"))},
        {KeepItems, QStringLiteral("20")},
        {IgnoreLength, QStringLiteral("3")},
        {IgnoreSize, QStringLiteral("4")},
        {IncludeImages, true},
        {Applications, emptyMap},
        {ExcludedApplications, emptyList},
        {NoImagesApplications, emptyList},
        {TextOnlyApplications, emptyList},
        {FormattingOnlyApplications, emptyList},
        {NoExpandApplications, emptyList},
        {DelayedApplications, emptyMap},
        {PasteKeyApplications, emptyMap},
        {RequireSpace, false},
        {Shortcut, QStringLiteral("CTRL+SHIFT+V")},
        {ShortcutPlainText, none},
        {ShortcutPasteNext, none},
        {SnippetFilePath,
         inFolder(QStandardPaths::AppDataLocation, QStringLiteral("Snippets.json"))},
        {Actions, emptyMap},
        {HiddenActions, emptyList},
        {ActionShortcuts, emptyMap},
        {SyncHistory, true},
        {SyncSnippets, true},
        {SyncActions, true},
        {EncryptData, false},
        {StrongEncryption, false},
        {Passphrase, none},
        {PreviousPassphrase, none},
        {SyncFolder,
         inFolder(QStandardPaths::DocumentsLocation, QStringLiteral("Velmorin Sync Folder"))},
        {StartAutomatically, true},
        {OpenOnMouse, true},
        {WindowSize, QSize(420, 520)},
        {SendDumps, true},
        {Theme, 2},
        {PastePlainText, false},
    };
}

int Settings::writeDefaults(QSettings &settings)
{
    int written = 0;
    for (const auto &[key, value] : firstRunDefaults()) {
        if (!settings.contains(key)) {
            settings.setValue(key, value);
            ++written;
        }
    }
    if (written > 0)
        settings.sync();
    return written;
}

void Settings::setRunOverrides(const QVariantMap &overrides)
{
    runOverrides() = overrides;
}

QVariant Settings::value(const QString &key, const QVariant &fallback)
{
    const auto overridden = runOverrides().constFind(key);
    if (overridden != runOverrides().constEnd())
        return *overridden;
    return QSettings().value(key, fallback);
}

bool Settings::contains(const QString &key)
{
    return runOverrides().contains(key) || QSettings().contains(key);
}

void Settings::setValue(const QString &key, const QVariant &value)
{
    QSettings().setValue(key, value);
}

QString Settings::secret(const char *key)
{
    return Secrets::read(QLatin1String(key));
}

void Settings::setSecret(const char *key, const QString &text)
{
    Secrets::write(QLatin1String(key), text);
}

bool Settings::writeDebugLog()
{
    return QSettings().value(SettingsKey::WriteDebugLog).toBool();
}

void Settings::setWriteDebugLog(bool on)
{
    QSettings().setValue(SettingsKey::WriteDebugLog, on);
}

QString Settings::releaseNotesVersion()
{
    return QSettings().value(SettingsKey::ReleaseNotesVersion).toString();
}

void Settings::setReleaseNotesVersion(const QString &version)
{
    QSettings().setValue(SettingsKey::ReleaseNotesVersion, version);
}

bool Settings::clearHistory()
{
    return value(SettingsKey::ClearHistory).toBool();
}

int Settings::keepItems()
{
    return value(SettingsKey::KeepItems).toInt();
}

int Settings::ignoreLength()
{
    return value(SettingsKey::IgnoreLength).toInt();
}

int Settings::ignoreSize()
{
    return value(SettingsKey::IgnoreSize).toInt();
}

bool Settings::includeImages()
{
    return value(SettingsKey::IncludeImages).toBool();
}

QString Settings::historyFilePath()
{
    return value(SettingsKey::HistoryFilePath).toString();
}
