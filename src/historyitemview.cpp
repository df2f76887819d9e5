#include "historyitemview.h"

#include "actionapi.h"
#include "clipping.h"
#include "runactionmenu.h"

#include <QContextMenuEvent>
#include <QDebug>
#include <QMenu>
#include <QMessageBox>
#include <QPersistentModelIndex>

HistoryItemView::HistoryItemView(QWidget *parent) : QListView(parent) {}

void HistoryItemView::runAction(const QModelIndex &clipping, const QString &path,
                                const QString &title)
{
    QString error;
    const QStringList result =
        ActionAPI::runActionFile(path, clipping.data(Clipping::TextRole).toString(),
                                 clipping.data(Clipping::ApplicationRole).toString(), error);
    qDebug() << "Executed" << result;
    if (!error.isEmpty()) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"),
                             tr("Failed to run action '%1'\n%2").arg(title, error));
        return;
    }
    if (result.size() == 1) {
        emit textAction(clipping, result.first());
        return;
    }
    // Each new clipping goes on top, so the first string is added last.
    for (auto it = result.crbegin(); it != result.crend(); ++it)
        emit addItem(*it);
}

void HistoryItemView::contextMenuEvent(QContextMenuEvent *event)
{
    const QPersistentModelIndex clipping = indexAt(event->pos());
    if (!clipping.isValid() || Clipping::isImage(clipping.data(Clipping::TypeRole).toInt()))
        return;
    QMenu menu(this);
    auto *actions = new RunActionMenu(&menu);
    connect(actions, &RunActionMenu::actionChosen, this,
            [this, clipping](const QString &path, const QString &title) {
                if (clipping.isValid())
                    runAction(clipping, path, title);
            });
    menu.addMenu(actions);
    menu.exec(event->globalPos());
}
