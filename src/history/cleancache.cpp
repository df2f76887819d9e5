#include "history/cleancache.h"

#include "history/clipping.h"

#include <QDebug>
#include <QDir>

CleanCache::CleanCache(const QStringList &keep) : m_keep(keep.cbegin(), keep.cend())
{
    setAutoDelete(true);
}

void CleanCache::run()
{
    const QDir dir(Clipping::imagesRoot());
    qDebug() << "Cleaning image cache:" << dir.path();
    const QStringList folders = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : folders) {
        if (m_keep.contains(name)) {
            qDebug() << name << "still exists.";
        } else {
            qDebug() << name << "doesn't exist. Deleting...";
            QDir(dir.filePath(name)).removeRecursively();
        }
    }
}
