#pragma once

#include <QPointer>
#include <QWidget>

class ActionShortcuts;
class ClipboardListener;
class GlobalShortcuts;
class HistoryItemModel;
class HistoryItemView;
class QLabel;
class QModelIndex;
class QToolButton;
class ReleaseNotesDialog;
class SettingsDialog;
class SnippetItemModel;
class SnippetShortcuts;

// The paste window: opened from the tray or the global shortcut, hidden again when another
// application takes the focus unless it is pinned open.
class MainWindow final : public QWidget
{
    Q_OBJECT

public:
    // testModes: the program runs in debug, performance-test or demo mode.
    explicit MainWindow(bool testModes, QWidget *parent = nullptr);
    ~MainWindow() override;

    bool isPinned() const;
    void setPinned(bool pinned);

    void showAndPin();
    void toggleVisible();
    // Opens the window where the mouse is (or where it was left), or hides it when open.
    void toggleAtMouse();
    // Puts the clipping on the clipboard, hides the window and pastes into the application
    // that gets the focus back.
    void pasteClipping(const QModelIndex &proxyIndex);
    // Pastes the history item after the last one pasted this way, the second newest first.
    void pasteNext();
    void hideWindow();
    void showSettings();
    void openReleaseNotes();
    // Runs the action on the clipboard's text and puts the result on the clipboard, where the
    // history records it as a copy from the same application.
    void runActionOnClipboard(const QString &path, const QString &title);

    bool testModes() const { return m_testModes; }
    HistoryItemModel *historyModel() const { return m_history; }
    GlobalShortcuts *shortcuts() const { return m_shortcuts; }
    ClipboardListener *clipboardListener() const { return m_clipboardListener; }
    ActionShortcuts *actionShortcuts() const { return m_actionShortcuts; }
    SnippetItemModel *snippetModel() const { return m_snippets; }

    // What quitting does to the history: cleared and saved when the user asked for it, and
    // saves under way finished.
    void prepareToQuit();

private:
    void loadHistory();
    void loadSnippets();
    void updateEmptyState();
    void keepActionResult(const QModelIndex &proxyIndex, const QString &text);

    bool m_testModes;
    HistoryItemModel *m_history;
    QToolButton *m_pinButton;
    QLabel *m_emptyLabel;
    HistoryItemView *m_historyView;
    GlobalShortcuts *m_shortcuts;
    ClipboardListener *m_clipboardListener;
    ActionShortcuts *m_actionShortcuts = nullptr;
    SnippetItemModel *m_snippets = nullptr;
    SnippetShortcuts *m_snippetShortcuts = nullptr;
    int m_pasteNextRow = 0;
    QPointer<SettingsDialog> m_settingsDialog;
    QPointer<ReleaseNotesDialog> m_releaseNotes;
};
