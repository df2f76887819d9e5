#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QUuid>

class AppModes;
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

        // Found without reading the texts when they are the very strings of other, as they are
        // when both were taken from the same rows.
        bool operator==(const Record &other) const;
        bool operator!=(const Record &other) const { return !(*this == other); }
    };

    // Records as the last encode wrote them. Between two saves a history changes by a row or
    // two, so with this most records are copied rather than encoded again. Kept from save to
    // save and pruned only when rows went away: rebuilding it cost more than the encoding.
    struct EncodedRecords
    {
        struct Entry
        {
            Record record;
            QByteArray bytes;
            quint32 save = 0; // the last save that wrote it
        };
        QHash<QUuid, Entry> byId;
        quint32 saves = 0;
    };

    struct Document
    {
        QList<Record> records;
        QHash<QString, QByteArray> icons; // application -> PNG bytes
        int malformed = 0;                // clippings left out: not objects, or wrong types
    };

    enum class WriteResult { Written, FolderFailed, TemporaryFailed, WriteFailed };
    enum class ReadResult { Read, Recovered, Missing };

    // "History.json", or the file of the performance-test or demo mode.
    static QString fileName(const AppModes &modes);
    // HistoryFilePath when set, else the application data folder. In the performance-test and
    // demo modes the mode's own file in that folder, so a test run never writes the user's file.
    static QString path(const AppModes &modes);
    static QString temporaryPath(const QString &path);

    static QByteArray encode(const Document &document, EncodedRecords *reuse = nullptr);
    // On a refused document logs why and returns false.
    static bool decode(const QByteArray &bytes, Document *document);

    // Writes path + "-tmp" to stable storage, then replaces path with it. Logs every failure
    // and tells the system's reason in error ("No space left on device").
    static WriteResult write(const QString &path, const QByteArray &data, QString *error = nullptr);
    // Reads path; when only its "-tmp" file is there (a save was cut short between removing the
    // old file and renaming the new one), reads that and puts it back in place.
    static ReadResult read(const QString &path, QByteArray *data);

private:
    // False when a field is there with the wrong type: such a clipping is left out whole.
    static bool fromJson(const QJsonObject &object, Record *record);
    static QByteArray encodeRecord(const Record &record);
};
