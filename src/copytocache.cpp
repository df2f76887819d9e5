#include "copytocache.h"

#include "clipping.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <QStandardPaths>

namespace {

// The format the file name's suffix names; PNG when it names none, as web addresses may.
const char *formatFor(const QString &path)
{
    const QByteArray suffix = QFileInfo(path).suffix().toLower().toLatin1();
    return QImageWriter::supportedImageFormats().contains(suffix) ? nullptr : "PNG";
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
    QString folder = data + QDir::separator() + m_folderName;
    if (!QDir(folder).exists())
        QDir().mkpath(folder); // on a first run the data folder itself may not exist yet
    if (!m_id.isNull()) {
        folder += QDir::separator() + Clipping::idFolderName(m_id);
        QDir().mkpath(folder);
    }
    return folder + QDir::separator() + m_fileName;
}

void CopyToCache::run()
{
    const QString target = targetPath();
    // An image copied in a browser comes with its web address: the image is what there is.
    if (m_source.isLocalFile()) {
        if (!QFile::copy(m_source.toLocalFile(), target))
            qWarning() << "Failed to copy" << m_source.toLocalFile() << "to" << target;
    } else if (!m_bytes.isEmpty()) {
        QFile file(target);
        if (file.open(QIODevice::WriteOnly))
            file.write(m_bytes);
        else
            qWarning() << "Failed to create" << target;
    } else if (!m_image.save(target, formatFor(target))) {
        qWarning() << "Failed to save the file" << target;
    }
    emit done();
}
