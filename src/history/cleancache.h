#pragma once

#include <QObject>
#include <QRunnable>
#include <QSet>
#include <QStringList>

// Deletes, on a pool thread, the image-cache folders that no clipping owns any more. Files
// lying loose in the cache folder are not its business and stay.
class CleanCache final : public QObject, public QRunnable
{
    Q_OBJECT

public:
    explicit CleanCache(const QStringList &keep);

    void run() override;

private:
    QSet<QString> m_keep;
};
