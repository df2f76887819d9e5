#pragma once

#include <QTreeView>

class SnippetItemModel;

// The snippets page of the paste window: groups and their snippets, each with its letter badge.
// Enter or a click pastes a snippet; the menu reaches the editing commands.
class SnippetTreeView final : public QTreeView
{
    Q_OBJECT

public:
    explicit SnippetTreeView(SnippetItemModel *model, QWidget *parent = nullptr);

signals:
    void snippetActivated(const QModelIndex &snippet);
    // Opens the snippet editor at the item; an invalid index adds what the editor is asked for.
    void editRequested(const QModelIndex &item);
    void escapePressed();
    void textTyped(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void activate(const QModelIndex &index);
    void removeItem(const QModelIndex &index);

    SnippetItemModel *m_model;
};
