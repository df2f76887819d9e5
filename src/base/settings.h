#pragma once

#include <QList>
#include <QPair>
#include <QSettings>
#include <QString>
#include <QVariant>
#include <QVariantMap>

// Every settings key of the program. Nothing else in the code spells a key.
namespace SettingsKey {
inline constexpr char WriteDebugLog[] = "WriteDebugLog";
inline constexpr char ReleaseNotesVersion[] = "ReleaseNotesVersion";
inline constexpr char ClearHistory[] = "ClearHistory";
inline constexpr char HistoryFilePath[] = "HistoryFilePath";
inline constexpr char KeepItems[] = "KeepItems";
inline constexpr char IgnoreLength[] = "IgnoreLength";
inline constexpr char IgnoreSize[] = "IgnoreSize";
inline constexpr char IncludeImages[] = "IncludeImages";
inline constexpr char Applications[] = "Applications";
inline constexpr char ExcludedApplications[] = "ExcludedApplications";
inline constexpr char NoImagesApplications[] = "NoImagesApplications";
inline constexpr char TextOnlyApplications[] = "TextOnlyApplications";
inline constexpr char FormattingOnlyApplications[] = "FormattingOnlyApplications";
inline constexpr char NoExpandApplications[] = "NoExpandApplications";
inline constexpr char DelayedApplications[] = "DelayedApplications";
// Map of executable name to the keys that paste there ("Shift+Insert"); absent means automatic.
inline constexpr char PasteKeyApplications[] = "PasteKeyApplications";
inline constexpr char RequireSpace[] = "RequireSpace";
inline constexpr char Shortcut[] = "Shortcut";
inline constexpr char ShortcutPlainText[] = "ShortcutPlainText";
inline constexpr char ShortcutPasteNext[] = "ShortcutPasteNext";
inline constexpr char SnippetFilePath[] = "SnippetFilePath";
inline constexpr char Actions[] = "Actions";
inline constexpr char HiddenActions[] = "HiddenActions";
inline constexpr char ActionShortcuts[] = "ActionShortcuts";
inline constexpr char Parameters[] = "Parameters"; // a group, one key per action parameter
inline constexpr char SyncTarget[] = "SyncTarget";
inline constexpr char SyncHistory[] = "SyncHistory";
inline constexpr char SyncSnippets[] = "SyncSnippets";
inline constexpr char SyncActions[] = "SyncActions";
inline constexpr char EncryptData[] = "EncryptData";
// Sealing with a key derived from the pass phrase instead of the compatible cipher.
inline constexpr char StrongEncryption[] = "StrongEncryption";
inline constexpr char Passphrase[] = "Passphrase";
inline constexpr char PreviousPassphrase[] = "PreviousPassphrase";
inline constexpr char SyncFolder[] = "SyncFolder";
inline constexpr char LastSync[] = "LastSync";
inline constexpr char SyncStatus[] = "SyncStatus";
// Where Google Drive sync and the notifier connect; empty means the build's defaults.
inline constexpr char GoogleClientId[] = "GoogleClientId";
inline constexpr char GoogleClientSecret[] = "GoogleClientSecret";
inline constexpr char GoogleAccountsUrl[] = "GoogleAccountsUrl";
inline constexpr char GoogleApiUrl[] = "GoogleApiUrl";
inline constexpr char NotifierUrl[] = "NotifierUrl";
inline constexpr char StartAutomatically[] = "StartAutomatically";
inline constexpr char OpenOnMouse[] = "OpenOnMouse";
inline constexpr char WindowSize[] = "WindowSize";
inline constexpr char SendDumps[] = "SendDumps";
inline constexpr char Theme[] = "Theme";
inline constexpr char PastePlainText[] = "PastePlainText";
} // namespace SettingsKey

// Typed access to the per-user settings store. Reads take the stored value: the first-run
// defaults are written once by writeDefaults(), so a missing key reads as empty, 0 or false.
class Settings final
{
public:
    // The release-notes version this build carries.
    static QString currentReleaseNotesVersion() { return QStringLiteral("1.9"); }

    // Key and value of every setting that has a default. Keys without one (ReleaseNotesVersion,
    // SyncTarget, LastSync) stay absent until the program sets them.
    static QList<QPair<QString, QVariant>> firstRunDefaults();
    // Writes the defaults of keys that are not stored yet; returns how many were written.
    static int writeDefaults(QSettings &settings);

    // Values that replace stored ones for this run only (the performance-test mode raises the
    // history limit without touching what the user chose).
    static void setRunOverrides(const QVariantMap &overrides);
    // Every read and write of a setting goes through these, so that the overrides apply
    // everywhere.
    static QVariant value(const QString &key, const QVariant &fallback = QVariant());
    static bool contains(const QString &key);
    static void setValue(const QString &key, const QVariant &value);
    // The pass phrases, kept as Secrets says; empty is none.
    static QString secret(const char *key);
    static void setSecret(const char *key, const QString &text);

    static bool writeDebugLog();
    static void setWriteDebugLog(bool on);
    static QString releaseNotesVersion();
    static void setReleaseNotesVersion(const QString &version);
    static bool clearHistory();

    // History limits. The stored texts are read as integers; anything unreadable counts as 0.
    static int keepItems();
    static int ignoreLength();
    static int ignoreSize();
    static bool includeImages();
    static QString historyFilePath();
};
