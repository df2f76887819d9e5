#include "history/clippingitem.h"

#include <QMutex>

#include <atomic>
#include <unordered_set>

using namespace Clipping;

namespace {

std::atomic<quint64> g_lastRevision{0};

quint64 nextRevision()
{
    return ++g_lastRevision;
}

// QStandardItem keeps its flags as data under this role.
constexpr int FlagsRole = Qt::UserRole - 1;

template <typename T> bool change(T &field, const T &value)
{
    if (field == value)
        return false;
    field = value;
    return true;
}

// Equal texts are most often the very same string (a brief and its one-line text); comparing
// the pointers first spares reading them.
bool change(QString &field, const QString &value)
{
    if (field.isSharedWith(value) || field == value)
        return false;
    field = value;
    return true;
}

// Application names, each kept once for as long as the program runs: a history names a few
// hundred programs at most, and each clipping keeps a pointer instead of a string of its own.
// Set elements stay where they are when the set grows. A name is copied when first seen: one
// cut from a decoded file would keep the decoder's memory around it.
const QString *internedApplication(const QString &name)
{
    static QMutex mutex;
    static std::unordered_set<QString> names;
    const QMutexLocker locker(&mutex);
    auto found = names.find(name);
    if (found == names.end())
        found = names.insert(QString(name.constData(), name.size())).first;
    return &*found;
}

const QString *noApplication()
{
    static const QString none;
    return &none;
}

bool changeApplication(const QString *&field, const QString &name)
{
    if (*field == name)
        return false;
    field = name.isEmpty() ? noApplication() : internedApplication(name);
    return true;
}

} // namespace

ClippingItem::ClippingItem() : m_application(noApplication()), m_revision(nextRevision()) {}

quint64 ClippingItem::lastRevision()
{
    return g_lastRevision;
}

HistoryFile::Record ClippingItem::record() const
{
    HistoryFile::Record record;
    record.type = m_type;
    record.brief = m_brief;
    record.text = m_text;
    if (m_hasHtml)
        record.html = QStandardItem::data(HtmlRole).toString();
    record.time = m_time;
    record.id = m_id;
    record.removed = m_removed;
    record.pinned = m_pinned;
    record.locked = m_locked;
    record.application = *m_application;
    if (m_hasFilename)
        record.filename = QStandardItem::data(FilenameRole).toString();
    record.revision = m_revision;
    return record;
}

QVariant ClippingItem::data(int role) const
{
    switch (role) {
    case Qt::EditRole:
    case BriefRole:
        return m_brief;
    case IconRole:
        return m_icon.isNull() ? QVariant() : QVariant(m_icon);
    case ToolTipRole: {
        const QString html = m_hasHtml ? QStandardItem::data(HtmlRole).toString() : QString();
        return html.isEmpty() ? m_text : html;
    }
    case PinnedRole:
        return m_pinned;
    case TextRole:
        return m_text;
    case IdRole:
        return m_id;
    case TimeRole:
        return m_time;
    case RemovedRole:
        return m_removed;
    case ApplicationRole:
        return *m_application;
    case TypeRole:
        return int(m_type);
    case LockedRole:
        return m_locked;
    case FlagsRole:
        return m_flags < 0 ? QVariant() : QVariant(int(m_flags));
    default:
        return QStandardItem::data(role);
    }
}

void ClippingItem::setData(const QVariant &value, int role)
{
    switch (role) {
    case Qt::EditRole:
    case BriefRole:
    case IconRole:
    case ToolTipRole:
    case PinnedRole:
    case TextRole:
    case IdRole:
    case TimeRole:
    case RemovedRole:
    case ApplicationRole:
    case TypeRole:
    case LockedRole:
    case FlagsRole:
        if (assign(value, role)) {
            m_revision = nextRevision();
            emitDataChanged();
        }
        return;
    default:
        if (role != ThumbnailRole)
            m_revision = nextRevision();
        if (role == HtmlRole)
            m_hasHtml = value.isValid();
        else if (role == FilenameRole)
            m_hasFilename = value.isValid();
        QStandardItem::setData(value, role);
    }
}

bool ClippingItem::assign(const QVariant &value, int role)
{
    switch (role) {
    case Qt::EditRole:
    case BriefRole:
        return change(m_brief, value.toString());
    case IconRole:
        // Told apart by their cache keys: comparing the pixels of every copy's icon is waste.
        if (m_icon.cacheKey() == value.value<QPixmap>().cacheKey())
            return false;
        m_icon = value.value<QPixmap>();
        return true;
    case ToolTipRole:
        return false; // follows the HTML and the text
    case PinnedRole:
        return change(m_pinned, value.toBool());
    case TextRole:
        return change(m_text, value.toString());
    case IdRole:
        return change(m_id, value.toUuid());
    case TimeRole:
        return change(m_time, value.toDateTime());
    case RemovedRole:
        return change(m_removed, value.toBool());
    case ApplicationRole:
        return changeApplication(m_application, value.toString());
    case TypeRole:
        return change(m_type, qint8(value.toInt()));
    case LockedRole:
        return change(m_locked, value.toBool());
    case FlagsRole:
        return change(m_flags, qint16(value.isValid() ? value.toInt() : -1));
    }
    return false;
}
