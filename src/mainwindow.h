#pragma once

#include <QPointer>
#include <QWidget>

class HistoryItemModel;
class QLabel;
class QListView;
class QToolButton;
class ReleaseNotesDialog;
class SettingsDialog;

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
    void hideWindow();
    void showSettings();
    void openReleaseNotes();

    bool testModes() const { return m_testModes; }
    HistoryItemModel *historyModel() const { return m_history; }

    // What quitting does to the history: cleared and saved when the user asked for it, and
    // saves under way finished.
    void prepareToQuit();

private:
    void loadHistory();
    void updateEmptyState();

    bool m_testModes;
    HistoryItemModel *m_history;
    QToolButton *m_pinButton;
    QLabel *m_emptyLabel;
    QListView *m_historyView;
    QPointer<SettingsDialog> m_settingsDialog;
    QPointer<ReleaseNotesDialog> m_releaseNotes;
};
