#include "ui/snippets/snippettreeview.h"

#include "snippets/snippetitemmodel.h"
#include "ui/snippets/snippetitemdelegate.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>

SnippetTreeView::SnippetTreeView(SnippetItemModel *model, QWidget *parent)
    : QTreeView(parent), m_model(model)
{
    setObjectName(QStringLiteral("snippetTree"));
    setAccessibleName(tr("Snippets"));
    setModel(model);
    setItemDelegate(new SnippetItemDelegate(false, this));
    setHeaderHidden(true);
    setIndentation(14);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    expandAll();
    // New groups open, so that their snippets are in view.
    connect(model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex &parent) {
        if (!parent.isValid())
            expandAll();
    });
    connect(model, &QAbstractItemModel::modelReset, this, &QTreeView::expandAll);
    connect(this, &QAbstractItemView::clicked, this, &SnippetTreeView::activate);
}

void SnippetTreeView::activate(const QModelIndex &index)
{
    if (index.parent().isValid())
        emit snippetActivated(index);
}

void SnippetTreeView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (currentIndex().parent().isValid())
            emit snippetActivated(currentIndex());
        else
            setExpanded(currentIndex(), !isExpanded(currentIndex()));
        return;
    case Qt::Key_Escape:
        emit escapePressed();
        return;
    case Qt::Key_Menu: {
        const QRect row = visualRect(currentIndex());
        QContextMenuEvent menuEvent(QContextMenuEvent::Keyboard, row.center(),
                                    viewport()->mapToGlobal(row.center()));
        contextMenuEvent(&menuEvent);
        return;
    }
    default:
        break;
    }
    const QString text = event->text();
    if (!(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) && !text.isEmpty() &&
        text.at(0).isPrint() && !text.at(0).isSpace()) {
        emit textTyped(text);
        return;
    }
    QTreeView::keyPressEvent(event);
}

void SnippetTreeView::contextMenuEvent(QContextMenuEvent *event)
{
    const QPersistentModelIndex index = indexAt(event->pos());
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("snippetMenu"));
    if (index.isValid() && index.parent().isValid())
        menu.addAction(tr("Paste"), this, [this, index] { emit snippetActivated(index); });
    if (index.isValid())
        menu.addAction(tr("Edit..."), this, [this, index] { emit editRequested(index); });
    menu.addSeparator();
    const QPersistentModelIndex group =
        index.parent().isValid() ? QPersistentModelIndex(index.parent()) : index;
    if (group.isValid()) {
        menu.addAction(tr("New snippet"), this, [this, group] {
            emit editRequested(m_model->addSnippet(group, tr("New snippet"), QString()));
        });
    }
    menu.addAction(tr("New group"), this,
                   [this] { emit editRequested(m_model->addGroup(tr("New group"))); });
    if (index.isValid()) {
        menu.addSeparator();
        menu.addAction(QIcon(QStringLiteral(":/icons/images/delete.png")), tr("Remove"), this,
                       [this, index] { removeItem(index); });
    }
    menu.exec(event->globalPos());
}

void SnippetTreeView::removeItem(const QModelIndex &index)
{
    const bool group = !index.parent().isValid();
    const QString question =
        group ? tr("Remove the group '%1' with all its snippets?") : tr("Remove the snippet '%1'?");
    if (QMessageBox::question(this, QStringLiteral("Velmorin"),
                              question.arg(index.data(Qt::DisplayRole).toString())) ==
        QMessageBox::Yes)
        m_model->removeItem(index);
}
