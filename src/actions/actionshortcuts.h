#pragma once

#include <QList>
#include <QObject>

class QHotkey;

// The system-wide shortcuts bound to actions. Pressing one runs its action on the clipboard's
// text and pastes the result into the application that has the focus.
class ActionShortcuts final : public QObject
{
    Q_OBJECT

public:
    explicit ActionShortcuts(QObject *parent = nullptr);

    // Registers the shortcuts the settings name again, for actions that are still listed.
    void apply();
    const QList<QHotkey *> &hotkeys() const { return m_hotkeys; }

    // What pressing the shortcut of the action at path does.
    static void runOnClipboard(const QString &path, const QString &shortcut);

private:
    QList<QHotkey *> m_hotkeys;
};
