#pragma once

#include <QKeySequence>
#include <QLoggingCategory>
#include <QObject>

Q_DECLARE_LOGGING_CATEGORY(logQHotkey)

// One system-wide key combination: activated() is emitted whenever it is pressed, whichever
// application has the focus. Objects with the same combination share one registration.
class QHotkey : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool registered READ isRegistered WRITE setRegistered NOTIFY registeredChanged)
    Q_PROPERTY(QKeySequence shortcut READ shortcut WRITE setShortcut RESET resetShortcut)

public:
    // The combination in the system's own terms.
    struct NativeShortcut
    {
        quint32 key = 0;
        quint32 modifier = 0;
        bool valid = false;

        NativeShortcut() = default;
        NativeShortcut(quint32 key, quint32 modifier) : key(key), modifier(modifier), valid(true) {}
        bool operator==(const NativeShortcut &other) const
        {
            return key == other.key && modifier == other.modifier && valid == other.valid;
        }
    };

    explicit QHotkey(QObject *parent = nullptr);
    // Takes the first combination of the sequence; registers it at once when asked to.
    QHotkey(const QKeySequence &shortcut, bool registerNow = false, QObject *parent = nullptr);
    ~QHotkey() override;

    bool isRegistered() const { return m_registered; }
    QKeySequence shortcut() const;
    Qt::Key keyCode() const { return m_key; }
    Qt::KeyboardModifiers modifiers() const { return m_modifiers; }
    NativeShortcut currentNativeShortcut() const { return m_native; }

public slots:
    bool setRegistered(bool registered);
    bool setShortcut(const QKeySequence &shortcut, bool registerNow = false);
    bool setShortcut(Qt::Key key, Qt::KeyboardModifiers modifiers, bool registerNow = false);
    bool resetShortcut();

signals:
    void activated();
    void registeredChanged(bool registered);

private:
    friend class QHotkeyPrivate;

    Qt::Key m_key = Qt::Key_unknown;
    Qt::KeyboardModifiers m_modifiers = Qt::NoModifier;
    NativeShortcut m_native;
    bool m_registered = false;
};

size_t qHash(const QHotkey::NativeShortcut &shortcut, size_t seed = 0);

Q_DECLARE_METATYPE(QHotkey::NativeShortcut)
