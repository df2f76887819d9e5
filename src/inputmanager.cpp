#include "inputmanager.h"

#include "clipboardops.h"
#include "historyitemmodel.h"
#include "keysender.h"
#include "platform.h"
#include "platform/idesktop.h"
#include "platform/virtualkeys.h"
#include "settings.h"
#include "settingsevents.h"
#include "snippet.h"
#include "snippetplaceholders.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>
#include <QTimer>

InputManager *InputManager::instance()
{
    // Lives until the application object goes, like the desktop back end it listens to.
    static InputManager *manager = new InputManager(Platform::desktop());
    return manager;
}

InputManager::InputManager(IDesktop *desktop) : QObject(desktop), m_desktop(desktop)
{
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
    connect(SettingsEvents::instance(), &SettingsEvents::changed, this,
            &InputManager::loadSettings);
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
    // Even without a delay, through the event loop: the key that completed the keyword is
    // still being delivered.
    QTimer::singleShot(delay, this, [this, backspaces, text = *found, application] {
        if (!m_typedWord.isEmpty()) {
            qDebug() << "The text was not expanded because there were characters typed before "
                        "the delay ended";
            return;
        }
        expandKeyword(backspaces, text, application);
    });
    m_typedWord.clear();
}

void InputManager::expandKeyword(int backspaces, const QString &snippetText,
                                 const QString &application)
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

    QStringList failures;
    QString text = SnippetPlaceholders::resolve(snippetText, application,
                                                HistoryItemModel::clippingTexts(), &failures);
    QMimeData *saved = ClipboardOps::saveClipboard();
    const ClipboardOps::CursorSteps steps = Snippet::caretSteps(text);
    text.remove(Snippet::cursorMarker);
    ClipboardOps::setClipboardText(text);
    ClipboardOps::paste();
    QTimer::singleShot(100, this, [steps] { ClipboardOps::moveCursor(steps); });
    ClipboardOps::restoreClipboardLater(saved);
    if (hooksRemoved)
        installHooks();
    for (const QString &failure : std::as_const(failures))
        emit actionFailed(failure);
}
