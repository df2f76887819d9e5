#include "settings.h"

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
