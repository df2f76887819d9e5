#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QUuid>

#include <functional>

class AppModes;
class QIODevice;
class QJsonObject;

// The history file: where it lives, its JSON form, and how it is written and read without
// ever leaving the user with less than the last complete save. Free of widgets and of the
// model, so encoding and writing can run on a worker thread.
class HistoryFile final
{
public:
    static constexpr int Version = 8;
    static constexpr qint32 Magic = qint32(0xFEED0002);

    // One clipping as the file holds it.
    struct Record
    {
        int type = 0;
        QString brief;
        QString text;
        QString html;
        QDateTime time;
        QUuid id;
        bool removed = false;
        bool pinned = false;
        bool locked = false;
        QString application;
        QString filename;
        // Changes whenever the clipping does; 0 when unknown. Not part of the file.
        quint64 revision = 0;
    };

    // Where the last save put each record in the file, in the file's order, so that the next
    // save copies the records that kept their revision from the file instead of encoding them
    // again: between two saves a history changes by a row or two. Holds no record's bytes, and
    // is believed only while the file has the size and time that save left it with.
    class Layout
    {
    public:
        struct Place
        {
            quint64 revision = 0;
            qint64 offset = 0;
            qint64 length = 0;
        };

        QString path;
        qint64 size = -1;
        QDateTime modified;

        bool isEmpty() const { return m_revisions.isEmpty(); }
        void clear();
        void reserve(qsizetype count);
        // Places come in the file's order, each one byte (the comma) after the one before; at
        // a place that does not, the layout starts anew, and the next save asks for the
        // records before it whole.
        void append(const Place &place);
        // The place of the record with this revision, or one of revision 0. Records are mostly
        // asked for in the order of the file, so the search starts where the last one was
        // found; a revision elsewhere is found through an index made the first time one is.
        Place find(quint64 revision);

    private:
        // Twelve bytes a record, as a large history's layout is kept between saves: the
        // offsets follow from the lengths, with one kept for every Stride records.
        static constexpr qsizetype Stride = 64;
        Place placeAt(qsizetype at) const;

        QList<quint64> m_revisions;
        QList<quint32> m_lengths;
        QList<qint64> m_offsets; // of records 0, Stride, 2 * Stride, ...
        qint64 m_end = 0;        // just past the last record
        QHash<quint64, qsizetype> m_index;
        qsizetype m_next = 0;
        qint64 m_nextOffset = 0;
    };

    struct Document
    {
        QList<Record> records;
        // For a save, when set: the file's records in order, each an index into records, or
        // the negated revision of a record that the last save wrote, to be copied from that
        // file. Empty: the records in their order.
        QList<qint64> order;
        QHash<QString, QByteArray> icons; // application -> PNG bytes
        int malformed = 0;                // clippings left out: not objects, or wrong types
        quint64 revisions = 0;            // every revision up to this was known when taken
    };

    // NeedsContent: the order names records by revision that the file at hand cannot give;
    // nothing was written.
    enum class WriteResult { Written, FolderFailed, TemporaryFailed, WriteFailed, NeedsContent };
    enum class ReadResult { Read, Recovered, Missing };

    // "History.json", or the file of the performance-test or demo mode.
    static QString fileName(const AppModes &modes);
    // HistoryFilePath when set, else the application data folder. In the performance-test and
    // demo modes the mode's own file in that folder, so a test run never writes the user's file.
    static QString path(const AppModes &modes);
    static QString temporaryPath(const QString &path);

    // The whole document: its records in their order.
    static QByteArray encode(const Document &document);
    // On a refused document logs why and returns false.
    static bool decode(const QByteArray &bytes, Document *document);

    // Writes path + "-tmp" to stable storage, then replaces path with it. Logs every failure
    // and tells the system's reason in error ("No space left on device").
    static WriteResult write(const QString &path, const QByteArray &data, QString *error = nullptr);
    // Encodes and writes the document as write() does, copying unchanged records from the file
    // that layout describes, and leaves layout describing the new file.
    static WriteResult save(const QString &path, const Document &document, Layout *layout,
                            QString *error = nullptr);
    // Reads path; when only its "-tmp" file is there (a save was cut short between removing the
    // old file and renaming the new one), reads that and puts it back in place.
    static ReadResult read(const QString &path, QByteArray *data);

private:
    // False when a field is there with the wrong type: such a clipping is left out whole.
    static bool fromJson(const QJsonObject &object, Record *record);
    static QByteArray encodeRecord(const Record &record);
    static QByteArray encodeTail(const Document &document);
    enum class Trouble { None, StaleFile, MissingContent };
    static bool writeRecords(QIODevice *file, const Document &document, Layout *previous,
                             Layout *written, Trouble *trouble);
    // Writes path's "-tmp" file through fill, brings it to stable storage and puts it in
    // place of path.
    static WriteResult writeWith(const QString &path, const std::function<bool(QIODevice *)> &fill,
                                 QString *error);
};
