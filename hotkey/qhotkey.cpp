#include "qhotkey.h"

#include "qhotkeyprivate.h"

#include <QHashFunctions>

Q_LOGGING_CATEGORY(logQHotkey, "QHotkey")

QHotkey::QHotkey(QObject *parent) : QObject(parent) {}

QHotkey::QHotkey(const QKeySequence &shortcut, bool registerNow, QObject *parent) : QObject(parent)
{
    setShortcut(shortcut, registerNow);
}

QHotkey::~QHotkey()
{
    if (m_registered)
        QHotkeyPrivate::instance()->removeShortcut(this);
}

QKeySequence QHotkey::shortcut() const
{
    if (m_key == Qt::Key_unknown)
        return {};
    return QKeySequence(QKeyCombination(m_modifiers, m_key));
}

bool QHotkey::setShortcut(const QKeySequence &shortcut, bool registerNow)
{
    if (shortcut.isEmpty())
        return resetShortcut();
    if (shortcut.count() > 1) {
        qCWarning(logQHotkey) << "Keysequences with multiple shortcuts are not allowed! Only the "
                                 "first shortcut will be used!";
    }
    const QKeyCombination combination = shortcut[0];
    return setShortcut(combination.key(), combination.keyboardModifiers(), registerNow);
}

bool QHotkey::setShortcut(Qt::Key key, Qt::KeyboardModifiers modifiers, bool registerNow)
{
    if (m_registered && !setRegistered(false))
        return false;
    m_key = key;
    m_modifiers = modifiers;
    m_native = QHotkeyPrivate::instance()->nativeShortcut(key, modifiers);
    if (!m_native.valid) {
        qCWarning(logQHotkey) << "Unable to map shortcut to native keys. Key:" << key
                              << "Modifiers:" << modifiers;
        m_key = Qt::Key_unknown;
        m_modifiers = Qt::NoModifier;
        return false;
    }
    return registerNow ? setRegistered(true) : true;
}

bool QHotkey::resetShortcut()
{
    if (m_registered && !setRegistered(false))
        return false;
    m_key = Qt::Key_unknown;
    m_modifiers = Qt::NoModifier;
    m_native = NativeShortcut();
    return true;
}

bool QHotkey::setRegistered(bool registered)
{
    if (registered == m_registered)
        return true;
    if (!registered)
        return QHotkeyPrivate::instance()->removeShortcut(this);
    if (!m_native.valid)
        return false;
    return QHotkeyPrivate::instance()->addShortcut(this);
}

size_t qHash(const QHotkey::NativeShortcut &shortcut, size_t seed)
{
    return qHashMulti(seed, shortcut.key, shortcut.modifier, shortcut.valid);
}
