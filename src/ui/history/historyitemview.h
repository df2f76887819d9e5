#pragma once

#include "history/historyitemmodel.h"

#include <QListView>

class AnnotationEditor;
class HistoryItemDelegate;
class QMenu;
class SnippetItemModel;
class TextExtractor;

// The history list of the paste window, with the commands on its clippings. Keyboard first:
// Enter pastes, Shift+Enter pastes plain text, 1 to 9 paste the numbered rows, Delete removes,
// Right or the menu key opens the commands, and typing starts a search.
class HistoryItemView final : public QListView
{
    Q_OBJECT

public:
    explicit HistoryItemView(QWidget *parent = nullptr);

    // Shows the history's visible rows; snippets: where "Add to snippets" adds.
    void setModels(HistoryItemModel *history, SnippetItemModel *snippets);
    HistoryItemDelegate *historyDelegate() const { return m_delegate; }

    // The selected clippings, top to bottom, as rows of the visible list.
    QModelIndexList selectedClippings() const;
    void showMenu(const QModelIndexList &clippings, const QPoint &globalPos);

    // Runs the action on the clipping's text. One result is handed on with the clipping it
    // came from (textAction); any other number becomes new clippings, the first one on top
    // (addItem).
    void runAction(const QModelIndex &clipping, const QString &path, const QString &title);

    // The commands that change the history; clippings are rows of the visible list.
    void join(const QModelIndexList &clippings);
    void reverse(const QModelIndexList &clippings);
    void remove(const QModelIndexList &clippings);
    // Brings back what the last removal took; removals are remembered while the window is
    // open.
    void undoRemoval();
    void forgetRemovals() { m_removals.clear(); }
    void togglePinned(const QModelIndex &clipping);
    void toggleLocked(const QModelIndex &clipping);
    void clearStyle(const QModelIndexList &clippings);
    void addToSnippets(const QModelIndex &clipping, const QModelIndex &group);
    // Opens the image clipping in the annotation editor; what is saved there becomes a new
    // clipping. Null for a clipping without an image.
    AnnotationEditor *annotate(const QModelIndex &clipping);
    // Reads the text in an image clipping (Tesseract) and adds it as a new clipping.
    void extractText(const QModelIndex &clipping);
    TextExtractor *textExtractor();

signals:
    void textAction(const QModelIndex &clipping, const QString &text);
    void addItem(const QString &text);
    // mode: ClipboardOps::TextMode, or -1 for the one the settings make the default.
    void pasteRequested(const QModelIndexList &clippings, int mode);
    void pasteImageRequested(const QModelIndex &clipping, bool asFile);
    void typeRequested(const QString &text);
    void editRequested(const QModelIndex &clipping);
    void escapePressed();
    void textTyped(const QString &text);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addPasteActions(QMenu *menu, const QModelIndexList &clippings);
    void addEditActions(QMenu *menu, const QModelIndexList &clippings);
    QMenu *createSnippetGroupMenu(QMenu *parent, const QModelIndex &clipping);
    int sourceRow(const QModelIndex &clipping) const;
    QList<int> sourceRows(const QModelIndexList &clippings) const;
    bool handleCommandKey(QKeyEvent *event);

    HistoryItemModel *m_history = nullptr;
    SnippetItemModel *m_snippets = nullptr;
    HistoryItemDelegate *m_delegate = nullptr;
    TextExtractor *m_extractor = nullptr;
    QList<QList<HistoryItemModel::Removal>> m_removals;
};
