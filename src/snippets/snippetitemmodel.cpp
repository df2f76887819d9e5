#include "snippets/snippetitemmodel.h"

#include "base/unreadablefile.h"
#include "snippets/snippet.h"
#include "snippets/snippetfile.h"
#include "synclog.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTimer>

using namespace Snippet;

namespace {

// The example groups' names and snippet titles, for the translation catalogue.
[[maybe_unused]] const char *const exampleTexts[] = {
    QT_TRANSLATE_NOOP("SnippetItemModel", "Info"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Clipboard"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Keywords"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Email"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Get back"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Thanks"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Out of office"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Messaging"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Be right back"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "In a meeting"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "On my way"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Sounds good"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Templates"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Markdown"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Letter"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Bug report"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Emoji"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Pleading Face"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Red Heart"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Sparkles"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Face with Tears of Joy"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Smiling Face with Heart-Eyes"),
    QT_TRANSLATE_NOOP("SnippetItemModel", "Thumbs Up"),
};

const QString separator = QStringLiteral("---+++---");

void mergeLog(const QString &line)
{
    SyncLog::write(QStringLiteral("Merge snippets: ") + line);
}

QString isoTime(const QStandardItem *item)
{
    return time(item).toString(Qt::ISODate);
}

QJsonObject snippetObject(const QStandardItem *snippet)
{
    return {{QLatin1String("id"), snippet->data(IdRole).toString()},
            {QLatin1String("title"), snippet->text()},
            {QLatin1String("text"), snippet->data(TextRole).toString()},
            {QLatin1String("time"), isoTime(snippet)},
            {QLatin1String("hide"), snippet->data(HideRole).toBool()},
            {QLatin1String("hotkey"), snippet->data(HotkeyRole).toString()},
            {QLatin1String("expander"), snippet->data(ExpanderRole).toString()}};
}

QStandardItem *snippetFrom(const QJsonObject &object)
{
    const auto text = [&object](const char *key) {
        return object.value(QLatin1String(key)).toString();
    };
    QStandardItem *snippet = newSnippet(text("title"), text("text"), QUuid::fromString(text("id")),
                                        QDateTime::fromString(text("time"), Qt::ISODate));
    snippet->setData(object.value(QLatin1String("hide")).toBool(), HideRole);
    snippet->setData(text("hotkey"), HotkeyRole);
    snippet->setData(text("expander"), ExpanderRole);
    return snippet;
}

// An example snippet's id: the group's with its last byte set to the snippet's position.
QUuid exampleId(const QUuid &group, int position)
{
    QUuid id = group;
    id.data4[7] = uchar(position);
    return id;
}

} // namespace

SnippetItemModel::SnippetItemModel(const QString &path, QObject *parent)
    : QStandardItemModel(parent), m_path(path), m_saveTimer(new QTimer(this)),
      m_clock([] { return QDateTime::currentDateTime(); })
{
    m_saveTimer->setSingleShot(true);
    m_saveTimer->setInterval(300);
    connect(m_saveTimer, &QTimer::timeout, this, [this] {
        if (save())
            emit syncRequested();
    });
}

void SnippetItemModel::setClock(std::function<QDateTime()> clock)
{
    m_clock = std::move(clock);
}

SnippetItemModel::LoadResult SnippetItemModel::load(bool demoMode)
{
    const bool exists = QFileInfo::exists(m_path);
    if (!demoMode && !exists && rowCount() == 0) {
        loadExamples();
        // Written at once, so that the next start reads the file and not the examples again.
        save();
        return LoadResult::Examples;
    }
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << m_path + QStringLiteral(" cannot be opened for reading.");
        if (exists)
            keepUnreadableFile(tr("The snippets file cannot be read: ") + m_path);
        return LoadResult::Unreadable;
    }
    const int count = deserialize(file.readAll(), false);
    qDebug().noquote() << "Read" << count << "snippets from" << m_path;
    if (count < 0) {
        keepUnreadableFile(tr("Failed to parse the snippets file: ") + m_path);
        return LoadResult::Rejected;
    }
    emit contentChanged();
    return LoadResult::Loaded;
}

void SnippetItemModel::keepUnreadableFile(const QString &failure)
{
    m_fileUnreadable = true;
    emit warning(UnreadableFile::keep(m_path, failure));
}

bool SnippetItemModel::mayReplaceFile() const
{
    // An empty tree written over a file that could not be read would pass for the user's
    // snippets, here and, through sync, on every other computer.
    return !m_fileUnreadable || itemCount() > 0;
}

void SnippetItemModel::loadExamples()
{
    QDirIterator entries(QStringLiteral(":/data/examples"));
    QStringList paths;
    while (entries.hasNext())
        paths.append(entries.next());
    paths.sort(); // in their numbered order
    for (const QString &path : std::as_const(paths)) {
        QFile file(path);
        if (!path.endsWith(QLatin1String("txt")) || !file.open(QIODevice::ReadOnly))
            continue;
        const QString name = path.section(QLatin1Char('/'), -1)
                                 .section(QLatin1Char('-'), -1)
                                 .section(QLatin1Char('.'), 0, 0);
        mergeGroup(exampleGroup(name, QString::fromUtf8(file.readAll())));
    }
    emit contentChanged();
}

QStandardItem *SnippetItemModel::exampleGroup(const QString &name, const QString &content) const
{
    QStringList pieces = content.split(separator);
    const QUuid groupId = QUuid::fromString(pieces.takeFirst().trimmed());
    QStandardItem *group = newGroup(tr(name.toUtf8().constData()), groupId, now());
    for (int i = 0; i < pieces.size(); ++i) {
        const QString piece = pieces.at(i).trimmed();
        const qsizetype lineEnd = piece.indexOf(QLatin1Char('\n'));
        // The header's fields are not trimmed: with CR LF the last one keeps its CR.
        const QStringList header = piece.left(lineEnd).split(QLatin1Char('|'));
        const QString text = lineEnd < 0 ? QString() : piece.mid(lineEnd + 1);
        QStandardItem *snippet = newSnippet(tr(header.first().toUtf8().constData()), text,
                                            exampleId(groupId, i + 1), now());
        if (header.size() > 1)
            snippet->setData(header.at(1), ExpanderRole);
        group->appendRow(snippet);
    }
    return group;
}

QByteArray SnippetItemModel::serialize(bool indented) const
{
    QJsonArray groups;
    for (int row = 0; row < rowCount(); ++row) {
        const QStandardItem *group = item(row);
        QJsonArray snippets;
        for (int child = 0; child < group->rowCount(); ++child)
            snippets.append(snippetObject(group->child(child)));
        groups.append(QJsonObject{{QLatin1String("id"), group->data(IdRole).toString()},
                                  {QLatin1String("title"), group->text()},
                                  {QLatin1String("time"), isoTime(group)},
                                  {QLatin1String("snippets"), snippets}});
    }
    QJsonObject removed;
    for (auto it = m_removed.cbegin(); it != m_removed.cend(); ++it)
        removed.insert(it.key().toString(), it.value().toString(Qt::ISODate));
    const QJsonObject document{{QLatin1String("version"), SnippetFile::Version},
                               {QLatin1String("magic"), SnippetFile::Magic},
                               {QLatin1String("groups"), groups},
                               {QLatin1String("removedItems"), removed}};
    return QJsonDocument(document).toJson(indented ? QJsonDocument::Indented
                                                   : QJsonDocument::Compact);
}

int SnippetItemModel::deserialize(const QByteArray &bytes, bool ignoreRemovals)
{
    QElapsedTimer total;
    total.start();
    const QJsonObject document = QJsonDocument::fromJson(bytes).object();
    const int version = document.value(QLatin1String("version")).toInt();
    if (version > SnippetFile::Version) {
        qWarning() << "The snippet file has version" << version
                   << "but the application supports only version" << SnippetFile::Version;
    }
    const qint32 magic = qint32(document.value(QLatin1String("magic")).toInteger());
    if (magic != SnippetFile::Magic) {
        qWarning() << "The snippet file has unknown magic number" << magic;
        return -1;
    }
    if (!ignoreRemovals) {
        QElapsedTimer step;
        step.start();
        for (const QJsonValue &id : document.value(QLatin1String("removed")).toArray())
            m_removed.insert(QUuid::fromString(id.toString()), now());
        const QJsonObject removed = document.value(QLatin1String("removedItems")).toObject();
        for (auto it = removed.constBegin(); it != removed.constEnd(); ++it) {
            m_removed.insert(QUuid::fromString(it.key()),
                             QDateTime::fromString(it.value().toString(), Qt::ISODate));
        }
        removeListedRows();
        qDebug() << "Profile: Deserialize snippet remove rows" << step.elapsed();
    }

    int count = 0;
    QSet<QUuid> seen;
    for (const QJsonValue &value : document.value(QLatin1String("groups")).toArray()) {
        const QJsonObject object = value.toObject();
        const QUuid id = QUuid::fromString(object.value(QLatin1String("id")).toString());
        if (seen.contains(id)) {
            qDebug() << "Snippets group ignored as dupe";
            continue;
        }
        seen.insert(id);
        const QString title = object.value(QLatin1String("title")).toString();
        QStandardItem *group = newGroup(
            title, id,
            QDateTime::fromString(object.value(QLatin1String("time")).toString(), Qt::ISODate));
        const QJsonArray snippets = object.value(QLatin1String("snippets")).toArray();
        qDebug().noquote() << "Snippets: Group = " + title
                           << " child count = " + QString::number(snippets.size());
        ++count;
        for (const QJsonValue &snippet : snippets) {
            QStandardItem *child = snippetFrom(snippet.toObject());
            if (seen.contains(Snippet::id(child))) {
                qDebug() << "Snippets item ignored as dupe";
                delete child;
                continue;
            }
            seen.insert(Snippet::id(child));
            group->appendRow(child);
            ++count;
        }
        mergeGroup(group);
    }
    qDebug() << "Profile: Deserialize snippet add items" << total.elapsed();
    qDebug() << "Profile: Deserialize snippet emit loaded" << total.elapsed();
    emit loaded();
    qDebug().noquote() << "Profile: Deserializing snippet model took " +
                              QString::number(total.elapsed());
    return count;
}

void SnippetItemModel::removeListedRows()
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        QStandardItem *group = item(row);
        if (m_removed.contains(Snippet::id(group))) {
            removeRow(row);
            continue;
        }
        for (int child = group->rowCount() - 1; child >= 0; --child) {
            if (m_removed.contains(Snippet::id(group->child(child))))
                group->removeRow(child);
        }
    }
}

void SnippetItemModel::mergeGroup(QStandardItem *incoming)
{
    const QString title = incoming->text();
    if (m_removed.contains(Snippet::id(incoming))) {
        mergeLog(
            QStringLiteral("Parent group '%1' is in removed list -> Ignoring children").arg(title));
        delete incoming;
        return;
    }
    QStandardItem *group = groupById(Snippet::id(incoming));
    if (!group) {
        mergeLog(QStringLiteral("Adding new parent group '%1'").arg(title));
        appendRow(incoming);
        return;
    }
    if (time(group) < time(incoming)) {
        mergeLog(QStringLiteral("Updating parent group '%1'").arg(title));
        group->setText(title);
        group->setData(incoming->data(IdRole), IdRole);
        group->setData(incoming->data(TimeRole), TimeRole);
    }
    while (incoming->rowCount() > 0)
        mergeChild(group, incoming->takeRow(0));
    delete incoming;
}

void SnippetItemModel::mergeChild(QStandardItem *group, QList<QStandardItem *> row)
{
    QStandardItem *incoming = row.first();
    const QString title = incoming->text();
    const QUuid id = Snippet::id(incoming);
    if (m_removed.contains(id)) {
        mergeLog(QStringLiteral("Child '%1' is in removed list -> Ignored.").arg(title));
        qDeleteAll(row);
        return;
    }
    for (int child = 0; child < group->rowCount(); ++child) {
        QStandardItem *existing = group->child(child);
        if (Snippet::id(existing) != id)
            continue;
        if (time(existing) < time(incoming)) {
            mergeLog(
                QStringLiteral("Updating child '%1' under parent '%2'.").arg(title, group->text()));
            group->removeRow(child);
            group->insertRow(child, row);
        } else {
            mergeLog(QStringLiteral("Child '%1' already exists under parent '%2'.")
                         .arg(title, group->text()));
            qDeleteAll(row);
        }
        return;
    }
    mergeLog(QStringLiteral("Added child '%1' under parent '%2'.").arg(title, group->text()));
    group->appendRow(row);
}

QStandardItem *SnippetItemModel::groupById(const QUuid &id) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (Snippet::id(item(row)) == id)
            return item(row);
    }
    return nullptr;
}

QStandardItem *SnippetItemModel::snippetById(const QUuid &id) const
{
    for (int row = 0; row < rowCount(); ++row) {
        const QStandardItem *group = item(row);
        for (int child = 0; child < group->rowCount(); ++child) {
            if (Snippet::id(group->child(child)) == id)
                return group->child(child);
        }
    }
    return nullptr;
}

bool SnippetItemModel::exportTo(const QString &path) const
{
    return SnippetFile::write(path, serialize(true));
}

int SnippetItemModel::importFrom(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << path + QStringLiteral(" cannot be opened for reading.");
        return -1;
    }
    const int count = deserialize(file.readAll(), true);
    qDebug().noquote() << "Imported" << count << "snippets from" << path;
    if (count >= 0) {
        scheduleSave();
        emit contentChanged();
    }
    return count;
}

bool SnippetItemModel::save(const QByteArray &backup)
{
    m_saveTimer->stop();
    if (!mayReplaceFile()) {
        qWarning().noquote() << "Not writing an empty snippet tree over the unreadable file"
                             << m_path;
        return false;
    }
    const QByteArray bytes = serialize(true);
    QDir().mkpath(QFileInfo(m_path).path());
    if (!SnippetFile::write(m_path, bytes)) {
        emit warning(tr("Writing the snippets file failed: ") + m_path);
        return false;
    }
    qDebug().noquote() << "Wrote snippets to " + m_path;
    m_fileUnreadable = false;
    SnippetFile::writeBackup(backup.isEmpty() ? bytes : backup, now().date());
    return true;
}

void SnippetItemModel::scheduleSave()
{
    m_saveTimer->start();
}

void SnippetItemModel::finishSaves()
{
    if (m_saveTimer->isActive() && save())
        emit syncRequested();
}

QString SnippetItemModel::hash()
{
    return contentHash(serialize());
}

bool SnippetItemModel::merge(const QByteArray &downloaded, QByteArray &output,
                             SyncDirection direction)
{
    const QByteArray before = serialize();
    output = before;
    if (downloaded.isEmpty()) {
        if (!mayReplaceFile()) {
            SyncLog::write(QStringLiteral("Merge snippets: The snippets file could not be read; "
                                          "an empty tree is not uploaded in its place."));
            output.clear();
        }
        return false;
    }
    const int itemsBefore = itemCount();
    if (direction == SyncDirection::FromServer) {
        // Only for a document that will be read: a rejected one must not cost the local tree.
        const QJsonObject document = QJsonDocument::fromJson(downloaded).object();
        if (qint32(document.value(QLatin1String("magic")).toInteger()) == SnippetFile::Magic) {
            SyncLog::write(QStringLiteral("FromServer sync -> clearing the local content."));
            removeRows(0, rowCount());
        }
    }
    if (deserialize(downloaded, false) < 0) {
        SyncLog::write(QStringLiteral("Deserializing the snippet data failed."));
        output.clear();
        return false;
    }
    output = serialize();
    if (output == before)
        return false;
    // Snippets that another computer removed stay in the day's backup, in case the removal was
    // a mistake made there.
    save(itemCount() < itemsBefore ? QJsonDocument::fromJson(before).toJson() : QByteArray());
    emit contentChanged();
    return true;
}

int SnippetItemModel::itemCount() const
{
    int count = rowCount();
    for (int row = 0; row < rowCount(); ++row)
        count += item(row)->rowCount();
    return count;
}

void SnippetItemModel::markEdited(QStandardItem *item)
{
    item->setData(now(), TimeRole);
    scheduleSave();
    emit contentChanged();
}

void SnippetItemModel::recordRemoval(QStandardItem *item)
{
    m_removed.insert(Snippet::id(item), now());
    for (int child = 0; child < item->rowCount(); ++child)
        recordRemoval(item->child(child));
}

QModelIndex SnippetItemModel::addGroup(const QString &title)
{
    QStandardItem *group = newGroup(title, QUuid::createUuid(), now());
    appendRow(group);
    markEdited(group);
    return group->index();
}

QModelIndex SnippetItemModel::addSnippet(const QModelIndex &group, const QString &title,
                                         const QString &text)
{
    QStandardItem *parent = itemFromIndex(group);
    if (!parent || parent->parent())
        return {};
    QStandardItem *snippet = newSnippet(title, text, QUuid::createUuid(), now());
    parent->appendRow(snippet);
    markEdited(snippet);
    return snippet->index();
}

void SnippetItemModel::setTitle(const QModelIndex &index, const QString &title)
{
    if (QStandardItem *item = itemFromIndex(index)) {
        item->setText(title);
        markEdited(item);
    }
}

void SnippetItemModel::setSnippetData(const QModelIndex &snippet, int role, const QVariant &value)
{
    QStandardItem *item = itemFromIndex(snippet);
    if (!item || !item->parent() || item->data(role) == value)
        return;
    item->setData(value, role);
    markEdited(item);
}

void SnippetItemModel::removeItem(const QModelIndex &index)
{
    QStandardItem *item = itemFromIndex(index);
    if (!item)
        return;
    recordRemoval(item);
    removeRow(index.row(), index.parent());
    scheduleSave();
    emit contentChanged();
}

bool SnippetItemModel::moveItem(const QModelIndex &index, int delta)
{
    const int target = index.row() + delta;
    if (!index.isValid() || target < 0 || target >= rowCount(index.parent()))
        return false;
    QStandardItem *parent =
        index.parent().isValid() ? itemFromIndex(index.parent()) : invisibleRootItem();
    parent->insertRow(target, parent->takeRow(index.row()));
    markEdited(parent->child(target));
    return true;
}

QModelIndex SnippetItemModel::moveToGroup(const QModelIndex &snippet, const QModelIndex &group)
{
    QStandardItem *item = itemFromIndex(snippet);
    QStandardItem *target = itemFromIndex(group);
    if (!item || !item->parent() || !target || target->parent() || target == item->parent())
        return {};
    recordRemoval(item);
    QList<QStandardItem *> row = item->parent()->takeRow(snippet.row());
    row.first()->setData(QUuid::createUuid().toString(), IdRole);
    target->appendRow(row);
    markEdited(row.first());
    return row.first()->index();
}

QMap<QString, QString> SnippetItemModel::keywords() const
{
    QMap<QString, QString> keywords;
    for (int row = 0; row < rowCount(); ++row) {
        const QStandardItem *group = item(row);
        for (int child = 0; child < group->rowCount(); ++child) {
            const QString keyword = group->child(child)->data(ExpanderRole).toString();
            // The first snippet in the tree keeps a keyword that several carry.
            if (!keyword.isEmpty() && !keywords.contains(keyword))
                keywords.insert(keyword, group->child(child)->data(TextRole).toString());
        }
    }
    return keywords;
}

QModelIndex
SnippetItemModel::firstOtherKeyword(const QModelIndex &except,
                                    const std::function<bool(const QString &)> &matches) const
{
    for (int row = 0; row < rowCount(); ++row) {
        const QStandardItem *group = item(row);
        for (int child = 0; child < group->rowCount(); ++child) {
            const QStandardItem *snippet = group->child(child);
            const QString keyword = snippet->data(ExpanderRole).toString();
            if (snippet->index() != except && !keyword.isEmpty() && matches(keyword))
                return snippet->index();
        }
    }
    return {};
}

QModelIndex SnippetItemModel::keywordPrefixClash(const QString &keyword,
                                                 const QModelIndex &except) const
{
    if (keyword.isEmpty())
        return {};
    return firstOtherKeyword(except, [&keyword](const QString &other) {
        return other != keyword && (keyword.startsWith(other) || other.startsWith(keyword));
    });
}

QString SnippetItemModel::keywordOwner(const QString &keyword, const QModelIndex &except) const
{
    if (keyword.isEmpty())
        return {};
    return firstOtherKeyword(except, [&keyword](const QString &other) { return other == keyword; })
        .data()
        .toString();
}
