#include "input/globalshortcuts.h"

#include "base/settings.h"
#include "platform/idesktop.h"
#include "platform/pastekeys.h"
#include "platform/platform.h"
#include "qhotkey.h"

#include <QDebug>

GlobalShortcuts::GlobalShortcuts(QObject *parent)
    : QObject(parent), m_main(new QHotkey(this)), m_plainText(new QHotkey(this)),
      m_pasteNext(new QHotkey(this))
{
    connect(m_main, &QHotkey::activated, this, &GlobalShortcuts::mainActivated);
    connect(m_plainText, &QHotkey::activated, this, &GlobalShortcuts::plainTextActivated);
    connect(m_pasteNext, &QHotkey::activated, this, &GlobalShortcuts::pasteNextActivated);
    connect(Platform::desktop(), &IDesktop::foregroundWindowChanged, this,
            &GlobalShortcuts::followForeground);
    apply();
}

void GlobalShortcuts::followForeground()
{
    const bool terminal = PasteKeys::isTerminal(Platform::desktop()->foregroundWindowClass());
    if (terminal == m_terminalInFront)
        return;
    m_terminalInFront = terminal;
    apply();
}

void GlobalShortcuts::apply()
{
    applyOne(m_main, SettingsKey::Shortcut);
    applyOne(m_plainText, SettingsKey::ShortcutPlainText);
    applyOne(m_pasteNext, SettingsKey::ShortcutPasteNext);
}

void GlobalShortcuts::applyOne(QHotkey *hotkey, const char *key)
{
    const QString text = Settings::value(QLatin1String(key)).toString();
    const QKeySequence sequence = QKeySequence::fromString(text);
    const bool terminalKeys =
        m_terminalInFront && sequence == QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_V);
    if (text.isEmpty() || terminalKeys) {
        hotkey->setRegistered(false);
        setTaken(key, QString());
        return;
    }
    if (hotkey->isRegistered() && hotkey->shortcut() == sequence)
        return;
    const bool registered = hotkey->setShortcut(sequence, true);
    if (registered)
        qDebug().noquote() << "Registered hotkey" << sequence.toString();
    else
        qWarning().noquote() << "Unable to register hotkey" << sequence.toString();
    setTaken(key, registered ? QString() : sequence.toString(QKeySequence::NativeText));
}

void GlobalShortcuts::setTaken(const char *key, const QString &sequence)
{
    if (m_taken.value(key) == sequence)
        return;
    if (sequence.isEmpty())
        m_taken.remove(key);
    else
        m_taken.insert(key, sequence);
    emit takenChanged();
}
