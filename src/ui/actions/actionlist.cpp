#include "ui/actions/actionlist.h"

#include "actions/actionfiles.h"
#include "base/settings.h"
#include "ui/actions/actioneditor.h"
#include "ui/actions/actionlistrow.h"
#include "ui/shortcutdialog.h"

#include <QCoreApplication>
#include <QMenu>
#include <QMessageBox>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>

namespace {

// The built-in titles and descriptions, for the translation catalogue: menus show the
// titles translated.
[[maybe_unused]] const char *const builtInTexts[] = {
    QT_TRANSLATE_NOOP("ActionList", "To lowercase"),
    QT_TRANSLATE_NOOP("ActionList", "Changes every letter to lower case."),
    QT_TRANSLATE_NOOP("ActionList", "To uppercase"),
    QT_TRANSLATE_NOOP("ActionList", "Changes every letter to upper case."),
    QT_TRANSLATE_NOOP("ActionList", "JSON Pretty Print"),
    QT_TRANSLATE_NOOP("ActionList", "Formats JSON with an indent of two spaces."),
    QT_TRANSLATE_NOOP("ActionList", "Stript HTML tags"),
    QT_TRANSLATE_NOOP("ActionList",
                      "Removes HTML tags and keeps the text, with links written out."),
    QT_TRANSLATE_NOOP("ActionList", "Current time"),
    QT_TRANSLATE_NOOP("ActionList", "The current date and time."),
    QT_TRANSLATE_NOOP("ActionList", "Generate password"),
    QT_TRANSLATE_NOOP("ActionList", "A random password of 16 letters, digits and punctuation."),
    QT_TRANSLATE_NOOP("ActionList", "Hex dump"),
    QT_TRANSLATE_NOOP("ActionList", "The text's UTF-8 bytes in hexadecimal."),
    QT_TRANSLATE_NOOP("ActionList", "Date to Value"),
    QT_TRANSLATE_NOOP("ActionList",
                      "Reads a date and gives its milliseconds since 1970-01-01 UTC."),
    QT_TRANSLATE_NOOP("ActionList", "Value to Date"),
    QT_TRANSLATE_NOOP("ActionList",
                      "Reads milliseconds since 1970-01-01 UTC and gives the local date and time."),
    QT_TRANSLATE_NOOP("ActionList", "Create GUID"),
    QT_TRANSLATE_NOOP("ActionList", "A new random identifier (UUID version 4)."),
    QT_TRANSLATE_NOOP("ActionList", "Word wrap"),
    QT_TRANSLATE_NOOP(
        "ActionList",
        "Wraps lines at spaces so that none is longer than the length (80 when empty)."),
    QT_TRANSLATE_NOOP("ActionList", "Split lines"),
    QT_TRANSLATE_NOOP("ActionList", "Splits the text at the separator that gives the most "
                                    "pieces; each piece becomes a clipping of its own."),
};

QIcon imageIcon(const char *name)
{
    return QIcon(QStringLiteral(":/icons/images/") + QLatin1String(name));
}

} // namespace

ActionList::ActionList(QWidget *parent) : QListWidget(parent)
{
    setObjectName(QStringLiteral("actionList"));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setResizeMode(QListView::Adjust);
    connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem *item) {
        // The editor reloads the list, which must not happen inside the view's own signal.
        const QPersistentModelIndex row = indexFromItem(item);
        QMetaObject::invokeMethod(
            this, [this, row] { editAction(itemFromIndex(row)); }, Qt::QueuedConnection);
    });
}

void ActionList::showEvent(QShowEvent *event)
{
    // Each time: synchronisation may have brought action files since the last look.
    load();
    QListWidget::showEvent(event);
}

void ActionList::resizeEvent(QResizeEvent *event)
{
    QListWidget::resizeEvent(event);
    // A description wraps to the new width, which may change the number of its lines.
    for (int i = 0; i < count(); ++i)
        fitRowHeight(item(i));
}

void ActionList::load()
{
    const int scroll = verticalScrollBar()->value();
    clear();
    const QList<QPair<QString, QJsonObject>> actions = ActionFiles::listedActions();
    const QStringList hidden = Settings::value(SettingsKey::HiddenActions).toStringList();
    const QVariantMap shortcuts = Settings::value(SettingsKey::ActionShortcuts).toMap();
    for (const auto &[path, action] : actions)
        addRow(path, action, hidden, shortcuts);
    ActionFiles::writeListing(actions);
    verticalScrollBar()->setValue(scroll);
}

QListWidgetItem *ActionList::addRow(const QString &path, const QJsonObject &action,
                                    const QStringList &hidden, const QVariantMap &shortcuts)
{
    const auto text = [&action](const char *key) {
        return action.value(QLatin1String(key)).toString();
    };
    auto *item = new QListWidgetItem(this);
    item->setData(ScriptRole, text("script"));
    item->setData(PathRole, path);
    item->setData(TitleRole, text("title"));
    item->setData(DescriptionRole, text("description"));
    item->setData(InputRole, text("input"));
    item->setData(FailedRole, action.value(QLatin1String("failed")).toBool());
    item->setData(UnreadableRole, action.value(QLatin1String("unreadable")).toBool());
    item->setData(HiddenRole, hidden.contains(path));
    item->setData(ShortcutRole, shortcuts.value(path).toString());
    updateRowWidget(item);
    return item;
}

void ActionList::updateRowWidget(QListWidgetItem *item)
{
    auto *row = new ActionListRow(item, this);
    const QPersistentModelIndex index = indexFromItem(item);
    connect(row->moreButton(), &QToolButton::clicked, this, [this, index] {
        // Not from inside the click: a command may rebuild this row and its button.
        QMetaObject::invokeMethod(
            this, [this, index] { showRowMenu(itemFromIndex(index)); }, Qt::QueuedConnection);
    });
    setItemWidget(item, row);
    fitRowHeight(item);
}

void ActionList::fitRowHeight(QListWidgetItem *item)
{
    const QWidget *row = itemWidget(item);
    if (!row)
        return;
    // The row's own size hint guesses a width for its wrapped description; the list knows it.
    const int width = viewport()->width();
    const int height = row->heightForWidth(width);
    item->setSizeHint(QSize(width, height > 0 ? height : row->sizeHint().height()));
}

void ActionList::showRowMenu(QListWidgetItem *item)
{
    if (!item)
        return;
    auto *row = qobject_cast<ActionListRow *>(itemWidget(item));
    QMenu *menu = createRowMenu(item, this);
    menu->exec(row ? row->moreButton()->mapToGlobal(row->moreButton()->rect().bottomLeft())
                   : QCursor::pos());
    menu->deleteLater();
}

QMenu *ActionList::createRowMenu(QListWidgetItem *item, QWidget *parent)
{
    auto *menu = new QMenu(parent);
    const bool builtIn = ActionFiles::isBuiltIn(item->data(PathRole).toString());
    menu->addAction(imageIcon(builtIn ? "eye.png" : "pencil.png"),
                    builtIn ? tr("View") : tr("Edit"), this, [this, item] { editAction(item); });
    if (item->data(ShortcutRole).toString().isEmpty()) {
        menu->addAction(imageIcon("command.png"), tr("Set shortcut"), this,
                        [this, item] { askForShortcut(item); });
    } else {
        menu->addAction(imageIcon("command.png"), tr("Remove shortcut"), this,
                        [this, item] { setShortcut(item, QString()); });
    }
    const bool hidden = item->data(HiddenRole).toBool();
    menu->addAction(imageIcon("action.png"), hidden ? tr("Show in menu") : tr("Hide from menu"),
                    this, [this, item, hidden] { setHidden(item, !hidden); });
    if (!builtIn) {
        menu->addSeparator();
        menu->addAction(imageIcon("delete.png"), tr("Delete"), this,
                        [this, item] { deleteAction(item); });
    }
    return menu;
}

void ActionList::editAction(QListWidgetItem *item)
{
    if (!item)
        return;
    ActionEditor editor(indexFromItem(item), this);
    if (editor.exec() == QDialog::Accepted)
        emit actionFilesEdited();
    load();
}

void ActionList::newAction()
{
    ActionEditor editor(QModelIndex(), this);
    if (editor.exec() != QDialog::Accepted)
        return;
    load();
    emit actionFilesEdited();
}

void ActionList::askForShortcut(QListWidgetItem *item)
{
    ShortcutDialog dialog(QKeySequence(), this);
    if (dialog.exec() == QDialog::Accepted && !dialog.shortcut().isEmpty())
        setShortcut(item, dialog.shortcut().toString());
}

void ActionList::setShortcut(QListWidgetItem *item, const QString &shortcut)
{
    item->setData(ShortcutRole, shortcut);
    updateRowWidget(item);
    writeSettings();
}

void ActionList::setHidden(QListWidgetItem *item, bool hidden)
{
    item->setData(HiddenRole, hidden);
    updateRowWidget(item);
    writeSettings();
}

void ActionList::deleteAction(QListWidgetItem *item)
{
    const QString path = item->data(PathRole).toString();
    if (ActionFiles::isBuiltIn(path))
        return;
    const auto answer = QMessageBox::question(this, QStringLiteral("Velmorin"),
                                              tr("Are you sure you want to delete the action '%1'?")
                                                  .arg(item->data(TitleRole).toString()),
                                              QMessageBox::Yes | QMessageBox::No);
    if (answer != QMessageBox::Yes)
        return;
    if (!ActionFiles::markDeleted(path)) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"),
                             tr("Failed to delete the file '%1'.").arg(path));
    }
    emit actionFilesEdited();
    load();
    // Its hidden flag and shortcut go with it.
    writeSettings();
}

void ActionList::writeSettings()
{
    QStringList hidden;
    QVariantMap shortcuts;
    for (int i = 0; i < count(); ++i) {
        const QListWidgetItem *row = item(i);
        const QString path = row->data(PathRole).toString();
        if (row->data(HiddenRole).toBool())
            hidden.append(path);
        const QString shortcut = row->data(ShortcutRole).toString();
        if (!shortcut.isEmpty())
            shortcuts.insert(path, shortcut);
    }
    Settings::setValue(SettingsKey::HiddenActions, hidden);
    Settings::setValue(SettingsKey::ActionShortcuts, shortcuts);
    emit actionsChanged();
}
