#pragma once

#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

class InputManager;
class QHotkey;
class SnippetItemModel;
class SnippetPaster;

// What the snippet tree asks of the desktop: its keywords in the input manager, with the
// keyboard hooks installed only while there is one, and a global shortcut per snippet that has
// one, which pastes the snippet's text into the application that has the focus.
class SnippetShortcuts final : public QObject
{
    Q_OBJECT

public:
    SnippetShortcuts(SnippetItemModel *model, InputManager *input, SnippetPaster *paster,
                     QObject *parent = nullptr);

    void apply();
    const QList<QHotkey *> &hotkeys() const { return m_hotkeys; }

private:
    void registerHotkeys();

    SnippetItemModel *m_model;
    InputManager *m_input;
    SnippetPaster *m_paster;
    QList<QHotkey *> m_hotkeys;
    // (id, key sequence) of each registered shortcut, to re-register only what changed.
    QList<QPair<QString, QString>> m_registered;
};
