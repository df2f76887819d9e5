#include "history/copytocache.h"

#include "history/clipping.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

// The format the file name's suffix names; PNG when it names none, as web addresses may.
QByteArray formatFor(const QString &path)
{
    const QByteArray suffix = QFileInfo(path).suffix().toLower().toLatin1();
    return QImageWriter::supportedImageFormats().contains(suffix) ? suffix : "PNG";
}

bool copyInto(QIODevice *target, const QString &sourcePath)
{
    QFile source(sourcePath);
    if (!source.open(QIODevice::ReadOnly))
        return false;
    while (!source.atEnd()) {
        const QByteArray chunk = source.read(1 << 20);
        if (chunk.isEmpty() || target->write(chunk) != chunk.size())
            return false;
    }
    return true;
}

} // namespace

CopyToCache::CopyToCache(const QImage &image, const QByteArray &bytes, const QUuid &id,
                         const QString &fileName, const QUrl &source, const QString &folderName)
    : m_image(image), m_bytes(bytes), m_id(id), m_fileName(fileName), m_source(source),
      m_folderName(folderName)
{
    setAutoDelete(true);
}

QString CopyToCache::targetPath() const
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QString folder = data + QLatin1Char('/') + m_folderName;
    if (!QDir(folder).exists())
        QDir().mkpath(folder); // on a first run the data folder itself may not exist yet
    if (!m_id.isNull()) {
        folder += QLatin1Char('/') + Clipping::idFolderName(m_id);
        QDir().mkpath(folder);
    }
    return folder + QLatin1Char('/') + m_fileName;
}

bool CopyToCache::writeInto(QIODevice *file, const QString &target) const
{
    // An image copied in a browser comes with its web address: the image is what there is.
    if (m_source.isLocalFile())
        return copyInto(file, m_source.toLocalFile());
    if (!m_bytes.isEmpty())
        return file->write(m_bytes) == m_bytes.size();
    return m_image.save(file, formatFor(target).constData());
}

void CopyToCache::run()
{
    const QString target = targetPath();
    // The file appears under its name only when complete: the thumbnailer, the editor and sync
    // read it as soon as it exists.
    QSaveFile file(target);
    // Unbuffered: a short write on a full disk must show before the commit.
    if (!(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeInto(&file, target) &&
          file.commit())) {
        if (m_source.isLocalFile())
            qWarning() << "Failed to copy" << m_source.toLocalFile() << "to" << target;
        else
            qWarning() << "Failed to save the file" << target;
    }
    emit done();
}
