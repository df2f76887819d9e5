#include "history/historyfile.h"

#include "base/appmodes.h"
#include "base/settings.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QScopeGuard>
#include <QStandardPaths>

#include <algorithm>
#include <limits>

namespace {

const QString kType = QStringLiteral("type");
const QString kBrief = QStringLiteral("brief");
const QString kText = QStringLiteral("text");
const QString kHtml = QStringLiteral("html");
const QString kTime = QStringLiteral("time");
const QString kId = QStringLiteral("id");
const QString kRemoved = QStringLiteral("removed");
const QString kPinned = QStringLiteral("pinned");
const QString kLocked = QStringLiteral("locked");
const QString kApplication = QStringLiteral("application");
const QString kFilename = QStringLiteral("filename");

} // namespace

QString HistoryFile::fileName(const AppModes &modes)
{
    if (modes.perfTest)
        return QStringLiteral("History-perftest.json");
    if (modes.demo)
        return QStringLiteral("History-demo.json");
    return QStringLiteral("History.json");
}

QString HistoryFile::path(const AppModes &modes)
{
    const QString chosen = Settings::historyFilePath();
    if (chosen.isEmpty()) {
        return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
               QDir::separator() + fileName(modes);
    }
    if (!modes.perfTest && !modes.demo)
        return chosen;
    return QFileInfo(chosen).path() + QLatin1Char('/') + fileName(modes);
}

QString HistoryFile::temporaryPath(const QString &path)
{
    return path + QStringLiteral("-tmp");
}

bool HistoryFile::fromJson(const QJsonObject &object, Record *parsed)
{
    static const QList<QPair<QString, QJsonValue::Type>> types{
        {kType, QJsonValue::Double},    {kBrief, QJsonValue::String},
        {kText, QJsonValue::String},    {kHtml, QJsonValue::String},
        {kTime, QJsonValue::String},    {kId, QJsonValue::String},
        {kRemoved, QJsonValue::Bool},   {kPinned, QJsonValue::Bool},
        {kLocked, QJsonValue::Bool},    {kApplication, QJsonValue::String},
        {kFilename, QJsonValue::String}};
    for (const auto &[key, type] : types) {
        const QJsonValue value = object.value(key);
        if (!value.isUndefined() && !value.isNull() && value.type() != type)
            return false;
    }
    Record &record = *parsed;
    record.type = object.value(kType).toInt(0);
    record.brief = object.value(kBrief).toString();
    record.text = object.value(kText).toString();
    record.html = object.value(kHtml).toString();
    record.time = QDateTime::fromString(object.value(kTime).toString(), Qt::ISODate);
    record.id = QUuid::fromString(object.value(kId).toString());
    record.removed = object.value(kRemoved).toBool(false);
    record.pinned = object.value(kPinned).toBool(false);
    record.locked = object.value(kLocked).toBool(false);
    record.application = object.value(kApplication).toString();
    record.filename = object.value(kFilename).toString();
    return true;
}

namespace {

const char kHead[] = "{\"clippings\":[";

void appendHex(QByteArray &out, char16_t unit)
{
    static const char digits[] = "0123456789abcdef";
    out.append("\\u", 2);
    for (int shift = 12; shift >= 0; shift -= 4)
        out.append(digits[(unit >> shift) & 0xf]);
}

void appendUtf8(QByteArray &out, char32_t code)
{
    if (code < 0x800) {
        out.append(char(0xc0 | (code >> 6)));
    } else if (code < 0x10000) {
        out.append(char(0xe0 | (code >> 12)));
        out.append(char(0x80 | ((code >> 6) & 0x3f)));
    } else {
        out.append(char(0xf0 | (code >> 18)));
        out.append(char(0x80 | ((code >> 12) & 0x3f)));
        out.append(char(0x80 | ((code >> 6) & 0x3f)));
    }
    out.append(char(0x80 | (code & 0x3f)));
}

// A JSON string exactly as QJsonDocument writes it: the short escapes, \u00XX for other
// control characters, UTF-8 for the rest, \uXXXX for a surrogate without its partner.
void appendString(QByteArray &out, QStringView text)
{
    out.append('"');
    const char16_t *unit = text.utf16();
    const char16_t *end = unit + text.size();
    for (; unit != end; ++unit) {
        const char16_t c = *unit;
        if (c >= 0x20 && c < 0x80 && c != '"' && c != '\\') {
            out.append(char(c));
        } else if (c < 0x80) {
            switch (c) {
            case '"':
                out.append("\\\"", 2);
                break;
            case '\\':
                out.append("\\\\", 2);
                break;
            case '\b':
                out.append("\\b", 2);
                break;
            case '\f':
                out.append("\\f", 2);
                break;
            case '\n':
                out.append("\\n", 2);
                break;
            case '\r':
                out.append("\\r", 2);
                break;
            case '\t':
                out.append("\\t", 2);
                break;
            default:
                appendHex(out, c);
            }
        } else if (QChar::isHighSurrogate(c) && unit + 1 != end && QChar::isLowSurrogate(unit[1])) {
            appendUtf8(out, QChar::surrogateToUcs4(c, unit[1]));
            ++unit;
        } else if (QChar::isSurrogate(c)) {
            appendHex(out, c);
        } else {
            appendUtf8(out, c);
        }
    }
    out.append('"');
}

void appendMember(QByteArray &out, const char *key, QStringView value)
{
    out.append(key);
    appendString(out, value);
}

void appendMember(QByteArray &out, const char *key, bool value)
{
    out.append(key);
    out.append(value ? "true" : "false");
}

} // namespace

// Written by hand rather than through QJsonObject, which costs several times as much for a
// large history; the output is byte for byte what QJsonDocument::Compact would write (the
// keys in sorted order), which the tests hold it to.
QByteArray HistoryFile::encode(const Document &document)
{
    // The records first, then the file in one piece of the right size: growing a buffer of
    // tens of megabytes copies it again and again.
    QList<QByteArray> records;
    records.reserve(document.records.size());
    qsizetype size = sizeof(kHead);
    for (const Record &record : document.records) {
        records.append(encodeRecord(record));
        size += records.constLast().size() + 1;
    }
    const QByteArray tail = encodeTail(document);
    QByteArray out;
    out.reserve(size + tail.size());
    out.append(kHead);
    for (qsizetype i = 0; i < records.size(); ++i) {
        if (i > 0)
            out.append(',');
        out.append(records.at(i));
    }
    out.append(tail);
    return out;
}

QByteArray HistoryFile::encodeTail(const Document &document)
{
    QByteArray out("],\"icons\":");
    QJsonObject icons;
    for (auto icon = document.icons.constBegin(); icon != document.icons.constEnd(); ++icon)
        icons.insert(icon.key(), QString::fromLatin1(icon.value().toBase64()));
    out.append(QJsonDocument(icons).toJson(QJsonDocument::Compact));
    out.append(",\"magic\":");
    out.append(QByteArray::number(Magic));
    out.append(",\"version\":");
    out.append(QByteArray::number(Version));
    out.append('}');
    return out;
}

QByteArray HistoryFile::encodeRecord(const Record &record)
{
    QByteArray out;
    out.reserve(record.text.size() + record.html.size() + record.brief.size() + 256);
    appendMember(out, "{\"application\":", record.application);
    appendMember(out, ",\"brief\":", record.brief);
    if (!record.filename.isEmpty())
        appendMember(out, ",\"filename\":", record.filename);
    appendMember(out, ",\"html\":", record.html);
    appendMember(out, ",\"id\":", record.id.toString(QUuid::WithBraces));
    appendMember(out, ",\"locked\":", record.locked);
    appendMember(out, ",\"pinned\":", record.pinned);
    appendMember(out, ",\"removed\":", record.removed);
    appendMember(out, ",\"text\":", record.text);
    appendMember(out, ",\"time\":", record.time.toString(Qt::ISODate));
    out.append(",\"type\":");
    out.append(QByteArray::number(record.type));
    out.append('}');
    return out;
}

bool HistoryFile::decode(const QByteArray &bytes, Document *document)
{
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        qWarning() << "Parsing JSON document failed.";
        return false;
    }
    const QJsonObject root = json.object();
    const int version = root.value(QStringLiteral("version")).toInt(0);
    if (version > Version) {
        qWarning() << "The history file has version" << version
                   << "but the application expects version" << Version;
        return false;
    }
    const qint64 magic = root.value(QStringLiteral("magic")).toInteger(0);
    if (magic != Magic) {
        qWarning() << "The history file has unknown magic number" << magic;
        return false;
    }
    const QJsonArray clippings = root.value(QStringLiteral("clippings")).toArray();
    document->records.reserve(clippings.size());
    for (const QJsonValue &clipping : clippings) {
        Record record;
        if (clipping.isObject() && fromJson(clipping.toObject(), &record))
            document->records.append(record);
        else
            ++document->malformed;
    }
    if (document->malformed > 0)
        qWarning() << "Left out" << document->malformed
                   << "clippings with fields of the wrong type";
    const QJsonObject icons = root.value(QStringLiteral("icons")).toObject();
    for (auto icon = icons.constBegin(); icon != icons.constEnd(); ++icon)
        document->icons.insert(icon.key(),
                               QByteArray::fromBase64(icon.value().toString().toLatin1()));
    return true;
}

HistoryFile::WriteResult HistoryFile::write(const QString &path, const QByteArray &data,
                                            QString *error)
{
    return writeWith(
        path,
        [&data](QIODevice *file) { return !data.isEmpty() && file->write(data) == data.size(); },
        error);
}

HistoryFile::WriteResult HistoryFile::save(const QString &path, const Document &document,
                                           Layout *layout, QString *error)
{
    const QFileInfo file(path);
    if (layout->path != path || file.size() != layout->size ||
        file.lastModified() != layout->modified)
        layout->clear();
    const auto copied = [](qint64 entry) { return entry < 0; };
    if (layout->isEmpty() && std::any_of(document.order.cbegin(), document.order.cend(), copied))
        return WriteResult::NeedsContent;
    Layout written;
    Trouble trouble = Trouble::None;
    const auto fill = [&](QIODevice *out) {
        return writeRecords(out, document, layout, &written, &trouble);
    };
    WriteResult result = writeWith(path, fill, error);
    if (trouble == Trouble::StaleFile) {
        // Someone else wrote the file with its size and time as they were: encode everything.
        qWarning() << "The history file changed since the last save; writing it anew";
        layout->clear();
        written = Layout();
        trouble = Trouble::None;
        result = writeWith(path, fill, error);
    }
    if (trouble == Trouble::MissingContent)
        return WriteResult::NeedsContent;
    if (result == WriteResult::Written) {
        const QFileInfo saved(path);
        written.path = path;
        written.size = saved.size();
        written.modified = saved.lastModified();
        *layout = std::move(written);
    }
    return result;
}

namespace {

// The file in pieces of about a megabyte: one buffer of the whole file would take tens of
// megabytes of fresh memory for every save of a large history.
class ChunkedOutput
{
public:
    explicit ChunkedOutput(QIODevice *file) : m_file(file) { m_chunk.reserve(Size + 4096); }

    qint64 position() const { return m_flushed + m_chunk.size(); }
    bool failed() const { return m_failed; }
    void append(const QByteArray &bytes)
    {
        m_chunk.append(bytes);
        if (m_chunk.size() >= Size)
            flush();
    }
    void append(char c) { m_chunk.append(c); }
    // Copies bytes of another file; false when they are not all there or do not look like
    // records (they start with '{' and end with '}').
    bool copy(QFile &from, qint64 offset, qint64 length)
    {
        if (!from.seek(offset))
            return false;
        for (qint64 left = length; left > 0;) {
            const qsizetype piece = qsizetype(qMin<qint64>(left, Size));
            const qsizetype start = m_chunk.size();
            m_chunk.resize(start + piece);
            if (from.read(m_chunk.data() + start, piece) != piece)
                return false;
            if ((left == length && m_chunk.at(start) != '{') ||
                (left == piece && m_chunk.back() != '}'))
                return false;
            left -= piece;
            flush();
        }
        return true;
    }
    bool flush()
    {
        if (!m_failed && m_file->write(m_chunk) != m_chunk.size())
            m_failed = true;
        m_flushed += m_chunk.size();
        m_chunk.clear();
        return !m_failed;
    }

private:
    static constexpr qsizetype Size = 1 << 20;
    QIODevice *m_file;
    QByteArray m_chunk;
    qint64 m_flushed = 0;
    bool m_failed = false;
};

} // namespace

void HistoryFile::Layout::clear()
{
    m_revisions.clear();
    m_lengths.clear();
    m_offsets.clear();
    m_end = 0;
    m_index.clear();
    m_next = 0;
    m_nextOffset = 0;
}

void HistoryFile::Layout::reserve(qsizetype count)
{
    m_revisions.reserve(count);
    m_lengths.reserve(count);
    m_offsets.reserve(count / Stride + 1);
}

void HistoryFile::Layout::append(const Place &place)
{
    const bool follows = isEmpty() || place.offset == m_end + 1;
    if (!follows || place.length < 0 || place.length > std::numeric_limits<quint32>::max()) {
        clear();
        return;
    }
    if (m_revisions.size() % Stride == 0)
        m_offsets.append(place.offset);
    if (isEmpty())
        m_nextOffset = place.offset;
    m_revisions.append(place.revision);
    m_lengths.append(quint32(place.length));
    m_end = place.offset + place.length;
}

HistoryFile::Layout::Place HistoryFile::Layout::placeAt(qsizetype at) const
{
    qint64 offset = m_offsets.at(at / Stride);
    for (qsizetype before = at - at % Stride; before < at; ++before)
        offset += qint64(m_lengths.at(before)) + 1;
    return {m_revisions.at(at), offset, qint64(m_lengths.at(at))};
}

HistoryFile::Layout::Place HistoryFile::Layout::find(quint64 revision)
{
    // The next record, or the one after it (the record between moved or was removed).
    qint64 offset = m_nextOffset;
    for (qsizetype at = m_next; at < m_revisions.size() && at <= m_next + 1; ++at) {
        const qint64 length = qint64(m_lengths.at(at));
        if (m_revisions.at(at) == revision) {
            m_next = at + 1;
            m_nextOffset = offset + length + 1;
            return {revision, offset, length};
        }
        offset += length + 1;
    }
    if (m_index.isEmpty()) {
        m_index.reserve(m_revisions.size());
        for (qsizetype at = 0; at < m_revisions.size(); ++at)
            m_index.insert(m_revisions.at(at), at);
    }
    const auto found = m_index.constFind(revision);
    if (found == m_index.constEnd())
        return {};
    const Place place = placeAt(*found);
    m_next = *found + 1;
    m_nextOffset = place.offset + place.length + 1;
    return place;
}

bool HistoryFile::writeRecords(QIODevice *file, const Document &document, Layout *previous,
                               Layout *written, Trouble *trouble)
{
    QFile old(previous->path);
    if (!previous->isEmpty() && !old.open(QIODevice::ReadOnly)) {
        *trouble = Trouble::StaleFile;
        return false;
    }
    ChunkedOutput out(file);
    out.append(QByteArray(kHead));
    // Records that followed each other in the old file and still do are copied as one run,
    // the comma between them included.
    Layout::Place run;
    const auto copyRun = [&] {
        const bool copied = run.length == 0 || out.copy(old, run.offset, run.length);
        run = Layout::Place();
        if (!copied)
            *trouble = Trouble::StaleFile;
        return copied;
    };
    const bool ordered = !document.order.isEmpty();
    const qsizetype count = ordered ? document.order.size() : document.records.size();
    written->reserve(count);
    for (qsizetype i = 0; i < count && !out.failed(); ++i) {
        const qint64 entry = ordered ? document.order.at(i) : i;
        const Record *record = entry >= 0 ? &document.records.at(entry) : nullptr;
        const quint64 revision = record ? record->revision : quint64(-entry);
        const Layout::Place found =
            revision == 0 || previous->isEmpty() ? Layout::Place() : previous->find(revision);
        const bool inOldFile = found.revision != 0;
        Layout::Place placed{revision, 0, 0};
        if (inOldFile && run.length > 0 && found.offset == run.offset + run.length + 1) {
            placed.offset = out.position() + run.length + 1;
            placed.length = found.length;
            run.length += 1 + found.length;
        } else {
            if (!copyRun())
                return false;
            if (i > 0)
                out.append(',');
            placed.offset = out.position();
            if (inOldFile) {
                run = found;
                placed.length = found.length;
            } else if (!record) {
                *trouble = Trouble::MissingContent;
                return false;
            } else {
                const QByteArray bytes = encodeRecord(*record);
                out.append(bytes);
                placed.length = bytes.size();
            }
        }
        written->append(placed);
    }
    if (!copyRun())
        return false;
    out.append(encodeTail(document));
    return out.flush();
}

HistoryFile::WriteResult HistoryFile::writeWith(const QString &path,
                                                const std::function<bool(QIODevice *)> &fill,
                                                QString *error)
{
    QString reason;
    const auto tell = qScopeGuard([&reason, error] {
        if (error)
            *error = reason;
    });
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder)) {
        qWarning().noquote() << "Failed to create " + folder;
        reason = QCoreApplication::translate("HistoryFile", "the folder %1 cannot be made")
                     .arg(QDir::toNativeSeparators(folder));
        return WriteResult::FolderFailed;
    }
    // QSaveFile brings the "-tmp" file to stable storage before it appears under its name, so
    // the old history is removed only once a complete new one is on disk.
    const QString temporary = temporaryPath(path);
    QSaveFile file(temporary);
    // Unbuffered: Qt's buffer would take the whole write, then lose its end on a full disk and
    // still commit the cut-off file. Unbuffered, the short write shows here.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        qWarning().noquote() << temporary + " cannot be opened for writing.";
        reason = file.errorString();
        return WriteResult::TemporaryFailed;
    }
    if (fill(&file) && file.commit()) {
        QFile::remove(path);
        if (QFile::rename(temporary, path)) {
            qDebug().noquote() << "Wrote history items to " + path;
            return WriteResult::Written;
        }
    }
    reason = file.errorString();
    qWarning() << "Writing to file" << path << "failed." << reason;
    return WriteResult::WriteFailed;
}

HistoryFile::ReadResult HistoryFile::read(const QString &path, QByteArray *data)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        *data = file.readAll();
        return ReadResult::Read;
    }
    const QString temporary = temporaryPath(path);
    QFile recovered(temporary);
    if (!QFile::exists(path) && recovered.open(QIODevice::ReadOnly)) {
        *data = recovered.readAll();
        recovered.close();
        const bool renamed = QFile::rename(temporary, path);
        qWarning().noquote() << "The history file was missing; recovered it from" << temporary
                             << (renamed ? "" : "(it stays under that name until the next save)");
        return ReadResult::Recovered;
    }
    qWarning().noquote() << path + " cannot be opened for reading.";
    return ReadResult::Missing;
}
