#include "actions/actionshortcuts.h"

#include "actions/actionapi.h"
#include "base/settings.h"
#include "clipboard/clipboardops.h"
#include "qhotkey.h"

#include <QClipboard>
#include <QDebug>
#include <QGuiApplication>

ActionShortcuts::ActionShortcuts(QObject *parent) : QObject(parent)
{
    apply();
}

void ActionShortcuts::apply()
{
    qDeleteAll(m_hotkeys);
    m_hotkeys.clear();
    const QVariantMap listed = Settings::value(SettingsKey::Actions).toMap();
    const QVariantMap shortcuts = Settings::value(SettingsKey::ActionShortcuts).toMap();
    for (auto it = shortcuts.cbegin(); it != shortcuts.cend(); ++it) {
        const QString path = it.key();
        const QString text = it.value().toString();
        // A deleted action keeps its file as a tombstone; its shortcut must not run it.
        if (text.isEmpty() || !listed.contains(path))
            continue;
        auto *hotkey = new QHotkey(this);
        if (!hotkey->setShortcut(QKeySequence::fromString(text), true)) {
            qWarning().noquote() << "Unable to register hotkey" << text << "for action" << path;
            delete hotkey;
            continue;
        }
        qDebug().noquote() << "Registered hotkey" << text << "for action" << path;
        connect(hotkey, &QHotkey::activated, this, [path, text] { runOnClipboard(path, text); });
        m_hotkeys.append(hotkey);
    }
}

void ActionShortcuts::runOnClipboard(const QString &path, const QString &shortcut)
{
    const QString text = QGuiApplication::clipboard()->text();
    if (text.isEmpty()) {
        qWarning() << "Current clipboard content is not text. Unable to run the action.";
        return;
    }
    QString error;
    const QStringList result = ActionAPI::runActionFile(path, text, QString(), error);
    if (!error.isEmpty()) {
        qWarning().noquote() << "Failed to run action" << path << error;
        return;
    }
    ClipboardOps::pasteTextForShortcut(result.join(QLatin1Char('\n')), shortcut);
}
