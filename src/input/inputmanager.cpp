#include "input/inputmanager.h"

#include "base/settings.h"
#include "clipboard/clipboardops.h"
#include "platform/idesktop.h"
#include "platform/keysender.h"
#include "platform/virtualkeys.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>
#include <QTimer>

#include <utility>

namespace {
constexpr char caretMoved[] = "The text was not expanded because the caret moved before typing "
                              "paused";
} // namespace

InputManager::InputManager(IDesktop *desktop, QObject *parent)
    : QObject(parent), m_desktop(desktop), m_pause(new QTimer(this))
{
    m_pause->setSingleShot(true);
    connect(m_pause, &QTimer::timeout, this, &InputManager::finishPendingExpansion);
    // Queued, so the hook returns at once and the word changes on a later turn of the loop.
    connect(
        this, &InputManager::keywordBreakerTyped, this, [this] { m_typedWord.clear(); },
        Qt::QueuedConnection);
    connect(
        this, &InputManager::backspaceTyped, this, [this] { m_typedWord.chop(1); },
        Qt::QueuedConnection);
    connect(this, &InputManager::characterTyped, this, &InputManager::onCharacterTyped,
            Qt::QueuedConnection);
    connect(desktop, &IDesktop::keyPressed, this, &InputManager::classifyKey);
    connect(desktop, &IDesktop::mouseButtonPressed, this, &InputManager::keywordBreakerTyped);
    connect(
        desktop, &IDesktop::mouseButtonPressed, this, [this] { dropPendingExpansion(caretMoved); },
        Qt::QueuedConnection);
    loadSettings();
}

void InputManager::installHooks()
{
    installHook(IDesktop::KeyboardHook, "Keyboard hook registered successfully",
                "Unable to create the keyboard hook");
    installHook(IDesktop::MouseHook, "Mouse hook registered successfully",
                "Unable to create the mouse hook");
}

bool InputManager::removeHooks()
{
    removeHook(IDesktop::KeyboardHook, "Keyboard hook unregistered successfully",
               "Unable to unregister the keyboard hook");
    removeHook(IDesktop::MouseHook, "Mouse hook unregistered successfully",
               "Unable to unregister the mouse hook");
    return !m_desktop->isHookInstalled(IDesktop::KeyboardHook);
}

void InputManager::installHook(int hook, const char *installed, const char *failed)
{
    const auto which = IDesktop::Hook(hook);
    if (m_desktop->isHookInstalled(which))
        return;
    if (m_desktop->installHook(which))
        qDebug() << installed;
    else
        qWarning() << failed;
}

void InputManager::removeHook(int hook, const char *removed, const char *failed)
{
    const auto which = IDesktop::Hook(hook);
    if (!m_desktop->isHookInstalled(which))
        return;
    if (m_desktop->removeHook(which))
        qDebug() << removed;
    else
        qWarning() << failed;
}

void InputManager::loadSettings()
{
    const QStringList noExpand = Settings::value(SettingsKey::NoExpandApplications).toStringList();
    m_noExpandApplications = QSet<QString>(noExpand.cbegin(), noExpand.cend());
    // Keywords never expand inside the program's own windows, whatever the executable is
    // called where it is installed: a keyword must be typeable into the snippet editor.
    m_noExpandApplications << QStringLiteral("Velmorin.exe") << QStringLiteral("Velmorin")
                           << QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    m_delayedApplications = Settings::value(SettingsKey::DelayedApplications).toMap();
    m_requireSpace = Settings::value(SettingsKey::RequireSpace).toBool();
}

void InputManager::classifyKey(quint32 virtualKey, const QString &text)
{
    // Queued ahead of the key's own signals: a keyword this key completes starts waiting
    // only after it, and the key is not counted as typed after the keyword.
    QMetaObject::invokeMethod(
        this, [this, virtualKey, text] { followPendingExpansion(virtualKey, text); },
        Qt::QueuedConnection);
    if (VirtualKey::isNavigation(virtualKey)) {
        emit keywordBreakerTyped();
        return;
    }
    for (const QChar character : text) {
        if (character == QChar(0x08))
            emit backspaceTyped();
        else if (!character.isPrint())
            emit keywordBreakerTyped();
        else if (m_requireSpace || !character.isSpace())
            emit characterTyped(character);
        else
            emit keywordBreakerTyped();
    }
}

void InputManager::onCharacterTyped(QChar character)
{
    // With RequireSpace the space is what asks for the match, not part of the word.
    if (!m_requireSpace || !character.isSpace()) {
        m_typedWord.append(character);
        if (m_requireSpace)
            return;
    }
    const auto found = m_keywords.constFind(m_typedWord);
    if (found == m_keywords.constEnd())
        return;
    qDebug() << "Matched keyword:" << m_typedWord << *found;
    const QString application = m_desktop->foregroundApplicationName();
    if (m_noExpandApplications.contains(application))
        return;
    const int backspaces = int(m_typedWord.size()) + (m_requireSpace ? 1 : 0);
    const int delay = m_delayedApplications.value(application).toInt();
    queueExpansion(backspaces, *found, application, delay);
    m_typedWord.clear();
}

void InputManager::queueExpansion(int backspaces, const QString &snippetText,
                                  const QString &application, int delay)
{
    const PasteText resolved =
        m_resolver ? m_resolver(snippetText, application) : PasteText{snippetText, {-1, 0}, {}};
    if (isExpansionPending()) {
        // Typed while an earlier keyword waited: its characters are among those typed after
        // that one, and already counted for erasing.
        m_pending.text.chop(backspaces);
    } else {
        m_pending.erase = backspaces;
    }
    m_pending.text += resolved.text;
    m_pending.steps = resolved.steps;
    m_pending.typedAfter = 0;
    m_pending.dropOnTyping = delay > 0;
    m_pending.failures += resolved.failures;
    m_pause->start(delay > 0 ? delay : TypingPause);
}

void InputManager::followPendingExpansion(quint32 virtualKey, const QString &text)
{
    if (!isExpansionPending())
        return;
    if (VirtualKey::isNavigation(virtualKey)) {
        dropPendingExpansion(caretMoved);
        return;
    }
    for (const QChar character : text) {
        if (m_pending.dropOnTyping) {
            dropPendingExpansion("The text was not expanded because there were characters "
                                 "typed before the delay ended");
            return;
        }
        if (character == QChar(0x08) && m_pending.typedAfter == 0) {
            dropPendingExpansion("The text was not expanded because the keyword was changed");
            return;
        }
        if (character == QChar(0x08)) {
            m_pending.text.chop(1);
            --m_pending.erase;
            --m_pending.typedAfter;
        } else if (character.isPrint()) {
            m_pending.text.append(character);
            ++m_pending.erase;
            ++m_pending.typedAfter;
        } else {
            // Enter, Tab, Escape: the text may be sent or the caret gone elsewhere.
            dropPendingExpansion(caretMoved);
            return;
        }
    }
    if (!text.isEmpty())
        m_pause->start();
}

void InputManager::dropPendingExpansion(const char *why)
{
    if (!isExpansionPending())
        return;
    qDebug() << why;
    m_pending = PendingExpansion();
    m_pause->stop();
}

void InputManager::finishPendingExpansion()
{
    const PendingExpansion pending = std::exchange(m_pending, PendingExpansion());
    ClipboardOps::CursorSteps steps = pending.steps;
    if (steps.first != -1)
        steps.first += pending.typedAfter;
    sendExpansion(pending.erase, pending.text, steps);
    for (const QString &failure : pending.failures)
        emit actionFailed(failure);
}

void InputManager::sendExpansion(int backspaces, const QString &text,
                                 ClipboardOps::CursorSteps steps)
{
    // The program's own keys must not reach its own hook.
    const bool hooksRemoved = removeHooks();
    if (m_desktop->heldModifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier)) {
        KeySender::sendKey(VirtualKey::Shift, false, 0);
        KeySender::sendKey(VirtualKey::Alt, false, 0);
        KeySender::sendKey(VirtualKey::Control, false, 0);
    }
    for (int i = 0; i < backspaces; ++i)
        KeySender::tapKey(VirtualKey::Backspace, 0);
    ClipboardOps::pasteInstead(text, [] { ClipboardOps::paste(); });
    ClipboardOps::moveCursorLater(steps);
    if (hooksRemoved)
        installHooks();
}
