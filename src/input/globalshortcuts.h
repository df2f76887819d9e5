#pragma once

#include <QMap>
#include <QObject>
#include <QStringList>

class QHotkey;

// The program's own system-wide shortcuts, as the settings name them: open the paste window,
// paste as plain text, paste the next history item. Applied again whenever settings change.
// Ctrl+Shift+V is how Linux terminals paste: while a terminal is in front, a shortcut on
// those keys is left to it.
class GlobalShortcuts final : public QObject
{
    Q_OBJECT

public:
    explicit GlobalShortcuts(QObject *parent = nullptr);

    void apply();

    QHotkey *mainShortcut() const { return m_main; }
    QHotkey *plainTextShortcut() const { return m_plainText; }
    QHotkey *pasteNextShortcut() const { return m_pasteNext; }
    // Shortcuts another program holds, as the user wrote them.
    QStringList taken() const { return m_taken.values(); }

signals:
    void takenChanged();
    void mainActivated();
    void plainTextActivated();
    void pasteNextActivated();

private:
    void applyOne(QHotkey *hotkey, const char *key);
    void followForeground();
    // sequence empty: the shortcut of that setting is not taken (any more).
    void setTaken(const char *key, const QString &sequence);

    QMap<QByteArray, QString> m_taken; // by setting
    QHotkey *m_main;
    QHotkey *m_plainText;
    QHotkey *m_pasteNext;
    bool m_terminalInFront = false;
};
