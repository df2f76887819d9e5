#pragma once

#include "base/appmodes.h"

#include <QObject>

class ActionShortcuts;
class SettingsEvents;
class ClipboardListener;
class GlobalShortcuts;
class HistoryItemModel;
class InputManager;
class Notifier;
class SnippetItemModel;
class SnippetPaster;
class SnippetShortcuts;
class Sync;
class SyncGoogleDrive;
class SyncLocalFolder;
class TextTyper;

// The program without its windows. Makes the history and snippet models, the clipboard
// listener, the global, snippet and action shortcuts, the keyword input and the sync engine
// with its targets and notifier, and wires them to each other. The windows only show what is
// here; tests and tools assemble the same program without one.
class AppServices final : public QObject
{
    Q_OBJECT

public:
    explicit AppServices(const AppModes &modes, QObject *parent = nullptr);
    ~AppServices() override;

    // Reads the history and the snippets, then starts recording copies and syncing. Called once
    // whoever shows the program's state listens.
    void start();
    // Clears the history when the user asked for that, and finishes saves under way.
    void prepareToQuit();
    // After sleep: what the other computers did meanwhile.
    void resume();

    const AppModes &modes() const { return m_modes; }
    HistoryItemModel *history() const { return m_history; }
    SnippetItemModel *snippets() const { return m_snippets; }
    ClipboardListener *clipboardListener() const { return m_clipboardListener; }
    GlobalShortcuts *shortcuts() const { return m_shortcuts; }
    InputManager *input() const { return m_input; }
    SnippetPaster *snippetPaster() const { return m_snippetPaster; }
    SnippetShortcuts *snippetShortcuts() const { return m_snippetShortcuts; }
    ActionShortcuts *actionShortcuts() const { return m_actionShortcuts; }
    TextTyper *textTyper() const { return m_typer; }
    Sync *sync() const { return m_sync; }
    SyncLocalFolder *localFolder() const { return m_localFolder; }
    SyncGoogleDrive *googleDrive() const { return m_googleDrive; }
    Notifier *notifier() const { return m_notifier; }
    // Where the windows say that the user changed settings or actions.
    SettingsEvents *settingsEvents() const { return m_settingsEvents; }

signals:
    // Something the user must read (a failed action, an unreadable file).
    void warning(const QString &text);

private:
    void createSync();
    void loadHistory();
    void loadSnippets();
    void followSettings();

    AppModes m_modes;
    SettingsEvents *m_settingsEvents;
    HistoryItemModel *m_history;
    SnippetItemModel *m_snippets;
    ClipboardListener *m_clipboardListener;
    GlobalShortcuts *m_shortcuts;
    InputManager *m_input;
    SnippetPaster *m_snippetPaster;
    SnippetShortcuts *m_snippetShortcuts = nullptr;
    ActionShortcuts *m_actionShortcuts = nullptr;
    TextTyper *m_typer;
    Sync *m_sync = nullptr;
    SyncLocalFolder *m_localFolder = nullptr;
    SyncGoogleDrive *m_googleDrive = nullptr;
    Notifier *m_notifier = nullptr;
};
