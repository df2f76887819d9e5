#include "ui/history/historyitemview.h"

#include "actions/actionapi.h"
#include "clipboard/clipboardops.h"
#include "history/clipping.h"
#include "history/historyitemmodel.h"
#include "maintenance/textextractor.h"
#include "snippets/snippetitemmodel.h"
#include "ui/actions/runactionmenu.h"
#include "ui/annotation/annotationeditor.h"
#include "ui/history/historyitemdelegate.h"

#include <QContextMenuEvent>
#include <QDebug>
#include <QMenu>
#include <QMessageBox>
#include <QPersistentModelIndex>
#include <QSortFilterProxyModel>

using namespace Clipping;

namespace {

// Where an image clipping's picture is kept in the cache.
QString imageFile(const QModelIndex &clipping)
{
    return Clipping::imageFile(clipping.data(IdRole).toUuid(),
                               clipping.data(FilenameRole).toString());
}

bool isText(const QModelIndex &clipping)
{
    return !isImage(clipping.data(TypeRole).toInt());
}

QString withKey(const QString &text, const QKeySequence &key)
{
    return text + QLatin1Char('\t') + key.toString(QKeySequence::NativeText);
}

QList<QPersistentModelIndex> persistent(const QModelIndexList &indexes)
{
    return {indexes.cbegin(), indexes.cend()};
}

QModelIndexList plain(const QList<QPersistentModelIndex> &indexes)
{
    QModelIndexList result;
    for (const QPersistentModelIndex &index : indexes) {
        if (index.isValid())
            result.append(index);
    }
    return result;
}

} // namespace

HistoryItemView::HistoryItemView(QWidget *parent) : QListView(parent)
{
    setAccessibleName(tr("Clipboard history"));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
}

void HistoryItemView::setModels(HistoryItemModel *history, SnippetItemModel *snippets)
{
    m_history = history;
    m_snippets = snippets;
    setModel(history->proxy());
    m_delegate = new HistoryItemDelegate(history, this);
    setItemDelegate(m_delegate);
}

int HistoryItemView::sourceRow(const QModelIndex &clipping) const
{
    return m_history->proxy()->mapToSource(clipping).row();
}

QList<int> HistoryItemView::sourceRows(const QModelIndexList &clippings) const
{
    QList<int> rows;
    for (const QModelIndex &clipping : clippings)
        rows.append(sourceRow(clipping));
    return rows;
}

QModelIndexList HistoryItemView::selectedClippings() const
{
    QModelIndexList selected =
        selectionModel() ? selectionModel()->selectedRows() : QModelIndexList();
    std::sort(selected.begin(), selected.end(),
              [](const QModelIndex &a, const QModelIndex &b) { return a.row() < b.row(); });
    if (selected.isEmpty() && currentIndex().isValid())
        selected.append(currentIndex());
    return selected;
}

void HistoryItemView::runAction(const QModelIndex &clipping, const QString &path,
                                const QString &title)
{
    QString error;
    const QStringList result = ActionAPI::runActionFile(
        path, clipping.data(TextRole).toString(), clipping.data(ApplicationRole).toString(), error);
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

void HistoryItemView::join(const QModelIndexList &clippings)
{
    QStringList texts;
    for (const QModelIndex &clipping : clippings) {
        if (isText(clipping))
            texts.append(clipping.data(TextRole).toString());
    }
    if (texts.size() > 1)
        emit addItem(texts.join(QLatin1Char('\n')));
}

TextExtractor *HistoryItemView::textExtractor()
{
    if (!m_extractor) {
        m_extractor = new TextExtractor(this);
        connect(m_extractor, &TextExtractor::finished, this, [this](const QString &text) {
            if (text.isEmpty())
                QMessageBox::information(this, QStringLiteral("Velmorin"),
                                         tr("No text was found in the image."));
            else
                emit addItem(text);
        });
        connect(m_extractor, &TextExtractor::failed, this, [this](const QString &why) {
            QMessageBox::information(this, QStringLiteral("Velmorin"), why);
        });
    }
    return m_extractor;
}

AnnotationEditor *HistoryItemView::annotate(const QModelIndex &clipping)
{
    if (!clipping.isValid() || isText(clipping))
        return nullptr;
    const QImage image(imageFile(clipping));
    if (image.isNull()) {
        QMessageBox::information(this, QStringLiteral("Velmorin"),
                                 tr("The image of this clipping cannot be read."));
        return nullptr;
    }
    auto *editor = new AnnotationEditor(image, this);
    editor->setAttribute(Qt::WA_DeleteOnClose);
    const QString application = clipping.data(ApplicationRole).toString();
    connect(editor, &AnnotationEditor::saved, this, [this, application](const QImage &edited) {
        if (m_history)
            m_history->addImage(QUrl(), edited, QPixmap(), application,
                                QDateTime::currentDateTime());
    });
    return editor;
}

void HistoryItemView::extractText(const QModelIndex &clipping)
{
    if (!clipping.isValid() || isText(clipping))
        return;
    textExtractor()->extract(imageFile(clipping));
}

void HistoryItemView::reverse(const QModelIndexList &clippings)
{
    m_history->reverseOrder(sourceRows(clippings));
}

void HistoryItemView::remove(const QModelIndexList &clippings)
{
    const int nextRow = clippings.isEmpty() ? 0 : clippings.first().row();
    const QList<HistoryItemModel::Removal> removals = m_history->markRemoved(sourceRows(clippings));
    if (!removals.isEmpty())
        m_removals.append(removals);
    // The row that took the first removed one's place is ready for the next key.
    const int rows = model()->rowCount();
    if (rows > 0)
        setCurrentIndex(model()->index(qMin(nextRow, rows - 1), 0));
}

void HistoryItemView::undoRemoval()
{
    if (m_removals.isEmpty())
        return;
    m_history->restoreRemoved(m_removals.takeLast());
    // What came back is the newest, on top.
    selectionModel()->setCurrentIndex(model()->index(0, 0), QItemSelectionModel::ClearAndSelect);
}

void HistoryItemView::togglePinned(const QModelIndex &clipping)
{
    m_history->setPinned(sourceRow(clipping), !clipping.data(PinnedRole).toBool());
}

void HistoryItemView::toggleLocked(const QModelIndex &clipping)
{
    m_history->setLocked(sourceRow(clipping), !clipping.data(LockedRole).toBool());
}

void HistoryItemView::clearStyle(const QModelIndexList &clippings)
{
    for (int row : sourceRows(clippings))
        m_history->clearStyle(row);
}

void HistoryItemView::addToSnippets(const QModelIndex &clipping, const QModelIndex &group)
{
    const QString text = clipping.data(TextRole).toString();
    // The brief is one line already; a long one is cut at a word.
    QString title = clipping.data(BriefRole).toString();
    if (title.size() > 40) {
        const qsizetype space = title.lastIndexOf(QLatin1Char(' '), 40);
        title = title.left(space > 10 ? space : 40) + QStringLiteral("…");
    }
    m_snippets->addSnippet(group, title, text);
}

void HistoryItemView::contextMenuEvent(QContextMenuEvent *event)
{
    const QModelIndex clicked = indexAt(event->pos());
    if (!clicked.isValid())
        return;
    QModelIndexList clippings = selectedClippings();
    if (!clippings.contains(clicked))
        clippings = {clicked};
    showMenu(clippings, event->globalPos());
}

void HistoryItemView::showMenu(const QModelIndexList &clippings, const QPoint &globalPos)
{
    if (clippings.isEmpty())
        return;
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("historyMenu"));
    addPasteActions(&menu, clippings);
    menu.addSeparator();
    addEditActions(&menu, clippings);
    menu.exec(globalPos);
}

void HistoryItemView::addPasteActions(QMenu *menu, const QModelIndexList &clippings)
{
    const auto kept = persistent(clippings);
    const QModelIndex first = clippings.first();
    const bool one = clippings.size() == 1;
    const QString pasteText =
        one ? tr("&Paste") : tr("&Paste %n items joined", nullptr, int(clippings.size()));
    menu->addAction(withKey(pasteText, QKeySequence(Qt::Key_Return)), this,
                    [this, kept] { emit pasteRequested(plain(kept), -1); });
    if (one && !isText(first)) {
        menu->addAction(tr("Paste as &image"), this,
                        [this, kept] { emit pasteImageRequested(kept.first(), false); });
        menu->addAction(tr("Paste as &file"), this,
                        [this, kept] { emit pasteImageRequested(kept.first(), true); });
        menu->addAction(tr("&Annotate..."), this, [this, kept] {
            if (AnnotationEditor *editor = annotate(kept.first()))
                editor->show();
        });
        menu->addAction(tr("E&xtract text"), this, [this, kept] { extractText(kept.first()); });
        return;
    }
    menu->addAction(withKey(tr("Paste as &plain text"), QKeySequence(Qt::SHIFT | Qt::Key_Return)),
                    this,
                    [this, kept] { emit pasteRequested(plain(kept), ClipboardOps::PlainText); });
    if (one) {
        menu->addAction(tr("&Type text"), this, [this, kept] {
            emit typeRequested(kept.first().data(TextRole).toString());
        });
    }
}

void HistoryItemView::addEditActions(QMenu *menu, const QModelIndexList &clippings)
{
    const auto kept = persistent(clippings);
    const QPersistentModelIndex first = clippings.first();
    const bool one = clippings.size() == 1;
    if (one && isText(first))
        menu->addAction(tr("&Edit text..."), this, [this, first] { emit editRequested(first); });
    if (clippings.size() > 1) {
        menu->addAction(tr("&Join into a new clipping"), this, [this, kept] { join(plain(kept)); });
        menu->addAction(tr("Re&verse the order"), this, [this, kept] { reverse(plain(kept)); });
    }
    const bool styled = std::any_of(clippings.cbegin(), clippings.cend(), [](const auto &c) {
        return !c.data(HtmlRole).toString().isEmpty();
    });
    if (styled)
        menu->addAction(tr("Clear st&yle"), this, [this, kept] { clearStyle(plain(kept)); });
    if (one) {
        QAction *pin =
            menu->addAction(tr("P&in to the top"), this, [this, first] { togglePinned(first); });
        pin->setCheckable(true);
        pin->setChecked(first.data(PinnedRole).toBool());
        QAction *lock =
            menu->addAction(tr("&Keep forever"), this, [this, first] { toggleLocked(first); });
        lock->setCheckable(true);
        lock->setChecked(first.data(LockedRole).toBool());
    }
    if (one && isText(first)) {
        if (m_snippets)
            menu->addMenu(createSnippetGroupMenu(menu, first));
        auto *actions = new RunActionMenu(menu);
        connect(actions, &RunActionMenu::actionChosen, this,
                [this, first](const QString &path, const QString &title) {
                    if (first.isValid())
                        runAction(first, path, title);
                });
        menu->addMenu(actions);
    }
    menu->addSeparator();
    menu->addAction(QIcon(QStringLiteral(":/icons/images/delete.png")),
                    withKey(tr("&Remove"), QKeySequence(Qt::Key_Delete)), this,
                    [this, kept] { remove(plain(kept)); });
}

QMenu *HistoryItemView::createSnippetGroupMenu(QMenu *parent, const QModelIndex &clipping)
{
    auto *groups = new QMenu(tr("Add to &snippets"), parent);
    groups->setObjectName(QStringLiteral("addToSnippetsMenu"));
    const QPersistentModelIndex kept = clipping;
    for (int row = 0; row < m_snippets->rowCount(); ++row) {
        const QPersistentModelIndex group = m_snippets->index(row, 0);
        groups->addAction(group.data(Qt::DisplayRole).toString(), this, [this, kept, group] {
            if (kept.isValid() && group.isValid())
                addToSnippets(kept, group);
        });
    }
    if (!groups->isEmpty())
        groups->addSeparator();
    groups->addAction(tr("New group"), this, [this, kept] {
        const QModelIndex group = m_snippets->addGroup(tr("Clippings"));
        if (kept.isValid())
            addToSnippets(kept, group);
    });
    return groups;
}

void HistoryItemView::keyPressEvent(QKeyEvent *event)
{
    if (!handleCommandKey(event))
        QListView::keyPressEvent(event);
}

bool HistoryItemView::handleCommandKey(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Undo)) {
        undoRemoval();
        return true;
    }
    const int key = event->key();
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit pasteRequested(selectedClippings(),
                            modifiers & Qt::ShiftModifier ? int(ClipboardOps::PlainText) : -1);
        return true;
    case Qt::Key_Delete:
        remove(selectedClippings());
        return true;
    case Qt::Key_Escape:
        emit escapePressed();
        return true;
    case Qt::Key_Right:
    case Qt::Key_Menu: {
        const QModelIndex current = currentIndex();
        if (!current.isValid())
            return true;
        const QRect row = visualRect(current);
        showMenu(selectedClippings(),
                 viewport()->mapToGlobal(QPoint(row.right() - row.height() / 2, row.center().y())));
        return true;
    }
    default:
        break;
    }
    // Alt (or Ctrl) with 1 to 9 pastes that row; a plain digit starts a search like any text.
    if ((modifiers & (Qt::AltModifier | Qt::ControlModifier)) && key >= Qt::Key_1 &&
        key <= Qt::Key_9) {
        const QModelIndex row = model()->index(key - Qt::Key_1, 0);
        if (row.isValid())
            emit pasteRequested({row}, -1);
        return true;
    }
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    const QString text = event->text();
    if (!text.isEmpty() && text.at(0).isPrint() && !text.at(0).isSpace()) {
        emit textTyped(text);
        return true;
    }
    return false;
}
