#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QString>

// Which way a sync pass goes.
enum class SyncDirection { Both = 0, FromServer = 1, ToServer = 2 };

// What a model offers the sync engine, which never knows the content formats.
class ISyncMerge
{
public:
    virtual ~ISyncMerge() = default;

    // Lowercase hexadecimal SHA-256 of the serialised local content.
    virtual QString hash() = 0;
    // Merges downloaded content (may be empty) into the model and writes the merged, serialised
    // content to output; true when the merge changed anything. An empty output means failure.
    virtual bool merge(const QByteArray &downloaded, QByteArray &output,
                       SyncDirection direction) = 0;

    // The hash every side compares: of a model's serialised content and of a downloaded file.
    static QString contentHash(const QByteArray &content)
    {
        return QString::fromLatin1(
            QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
    }

    // The online name of the file this content last took part in.
    QString lastDownloadId;
};
