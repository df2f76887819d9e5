#pragma once

#include <QListView>

// The history list of the paste window, with the commands on its clippings.
class HistoryItemView final : public QListView
{
    Q_OBJECT

public:
    explicit HistoryItemView(QWidget *parent = nullptr);

    // Runs the action on the clipping's text. One result is handed on with the clipping it
    // came from (textAction); any other number becomes new clippings, the first one on top
    // (addItem).
    void runAction(const QModelIndex &clipping, const QString &path, const QString &title);

signals:
    void textAction(const QModelIndex &clipping, const QString &text);
    void addItem(const QString &text);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
};
