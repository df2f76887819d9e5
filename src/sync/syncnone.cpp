#include "sync/syncnone.h"

#include <QTimer>

// Answers come on the next turn of the event loop, as from every other target.

void SyncNone::initialise(InitMode)
{
    QTimer::singleShot(0, this, [this] { emit initialized(true); });
}

void SyncNone::listFiles()
{
    QTimer::singleShot(0, this, [this] { emit filesListed({}); });
}

void SyncNone::download(int kind, const SyncEntry &entry)
{
    QTimer::singleShot(0, this, [this, kind, entry] { emit downloaded(kind, entry, {}); });
}

void SyncNone::upload(int kind, const SyncEntry &entry, const QByteArray &)
{
    QTimer::singleShot(0, this, [this, kind, entry] { emit uploaded(kind, entry); });
}

void SyncNone::remove(const SyncEntry &entry)
{
    QTimer::singleShot(0, this, [this, entry] { emit removed(entry); });
}
