#pragma once

#include <QMap>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QWidget>

#include "clipboard/clipboardops.h"

class AppServices;
class ClippingEditor;
class FramelessHelper;
class GlobalShortcuts;
class HistoryItemModel;
class HistoryItemView;
class QAbstractButton;
class QLabel;
class QModelIndex;
class QStackedWidget;
class QToolButton;
class ReleaseNotesDialog;
class SearchEdit;
class SearchModel;
class SearchView;
class SettingsDialog;
class SnippetItemModel;
class SnippetTreeView;
class Sync;
class TextTyper;

// The paste window: a compact frameless window opened by the global shortcut at the mouse,
// with the history, the snippets and the search results as pages. It hides again when another
// application takes the focus unless it is pinned open, and gives the focus back to the
// application it was opened from before pasting.
class MainWindow final : public QWidget
{
    Q_OBJECT

public:
    enum Page { HistoryPage, SnippetsPage, SearchPage };

    explicit MainWindow(AppServices *services, QWidget *parent = nullptr);
    ~MainWindow() override;

    bool isPinned() const;
    void setPinned(bool pinned);

    void showAndPin();
    void toggleVisible();
    // Opens the window where the mouse is (or where it was left), or hides it when open.
    void toggleAtMouse();
    // Puts the clippings on the clipboard (several joined by line feeds), hides the window and
    // pastes into the application that gets the focus back. mode: ClipboardOps::TextMode, or -1
    // for the default that the settings choose.
    void pasteClippings(const QModelIndexList &proxyIndexes, int mode = -1);
    void pasteClipping(const QModelIndex &proxyIndex) { pasteClippings({proxyIndex}); }
    void pasteImage(const QModelIndex &proxyIndex, bool asFile);
    // The snippet's text with its placeholders resolved, the caret where it marks it.
    void pasteSnippet(const QModelIndex &snippet);
    void typeText(const QString &text);
    // Pastes the history item after the last one pasted this way, the second newest first.
    void pasteNext();
    void hideWindow();
    void showSettings();
    void chooseOtherShortcut();
    void editSnippet(const QModelIndex &item);
    void openReleaseNotes();
    // Runs the action on the clipboard's text and puts the result on the clipboard, where the
    // history records it as a copy from the same application.
    void runActionOnClipboard(const QString &path, const QString &title);

    void showPage(Page page);
    Page currentPage() const;

    // The program runs in debug, performance-test or demo mode.
    bool testModes() const;
    AppServices *services() const { return m_services; }
    HistoryItemModel *historyModel() const { return m_history; }
    GlobalShortcuts *shortcuts() const { return m_shortcuts; }
    SnippetItemModel *snippetModel() const { return m_snippets; }
    HistoryItemView *historyView() const { return m_historyView; }
    SnippetTreeView *snippetView() const { return m_snippetView; }
    SearchEdit *searchEdit() const { return m_search; }
    SearchModel *searchModel() const { return m_searchModel; }
    SearchView *searchView() const { return m_searchView; }
    FramelessHelper *framelessHelper() const { return m_helper; }
    SettingsDialog *settingsDialog() const;
    ClippingEditor *clippingEditor() const;

signals:
    void clippingCountChanged(int count);
    // A problem the user should hear of even with the window closed (shown in the window too).
    void problemStarted(const QString &text);
    // The clipping editor, a window of its own, was made.
    void editorCreated(QWidget *editor);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *createHeader();
    QWidget *createHistoryPage();
    void createSearchPage();
    void connectHistory();
    void connectSearch();
    void createKeys();
    void connectServices();
    void updateEmptyState();
    // What the notice above the lists can say, each shown until it is solved (Told: until the
    // window has been open with it).
    enum class Notice { SaveProblem, TakenShortcut, Told };
    // html empty: that one is solved. A new one goes to the tray too.
    void setNotice(Notice notice, const QString &html);
    void tellTakenShortcuts();
    void keepActionResult(const QModelIndex &proxyIndex, const QString &text);
    void editClipping(const QModelIndex &proxyIndex);
    void onSearchTextChanged(const QString &text);
    void activateSearchResult(const QModelIndex &source);
    void startSearchWith(const QString &text);
    void rememberForegroundWindow();
    // Hides the window unless it is pinned and hands the focus back to the application the
    // window was opened from, then pastes once it has it.
    void finishPaste(ClipboardOps::CursorSteps steps = {-1, 0});
    void returnFocus();
    void placeAtMouse();

    AppServices *m_services;
    HistoryItemModel *m_history;
    FramelessHelper *m_helper;
    SearchEdit *m_search = nullptr;
    QToolButton *m_pinButton = nullptr;
    QAbstractButton *m_historyButton = nullptr;
    QAbstractButton *m_snippetsButton = nullptr;
    QStackedWidget *m_pages = nullptr;
    QStackedWidget *m_historyStack = nullptr;
    QLabel *m_emptyLabel = nullptr;
    QLabel *m_notice = nullptr;
    QMap<Notice, QString> m_notices;
    HistoryItemView *m_historyView = nullptr;
    SnippetTreeView *m_snippetView = nullptr;
    SearchModel *m_searchModel = nullptr;
    SearchView *m_searchView = nullptr;
    GlobalShortcuts *m_shortcuts;
    SnippetItemModel *m_snippets = nullptr;
    TextTyper *m_typer = nullptr;
    Sync *m_sync = nullptr;
    int m_pasteNextRow = 0;
    Page m_lastListPage = HistoryPage;
    quint64 m_previousWindow = 0;
    QString m_previousApplication;
    QPersistentModelIndex m_editedClipping;
    QPointer<ClippingEditor> m_editor;
    QPointer<SettingsDialog> m_settingsDialog;
    QPointer<ReleaseNotesDialog> m_releaseNotes;
};
