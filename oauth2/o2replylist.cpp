#include "o2replylist.h"

#include "o2reply.h"

O2ReplyList::~O2ReplyList()
{
    qDeleteAll(m_replies);
}

O2Reply *O2ReplyList::add(QNetworkReply *reply, int timeoutMs)
{
    auto *pending = new O2Reply(reply, timeoutMs);
    m_replies.append(pending);
    return pending;
}

void O2ReplyList::remove(QNetworkReply *reply)
{
    if (O2Reply *pending = find(reply)) {
        pending->stop();
        m_replies.removeOne(pending);
        pending->deleteLater();
    }
}

O2Reply *O2ReplyList::find(QNetworkReply *reply) const
{
    for (O2Reply *pending : m_replies) {
        if (pending->reply() == reply)
            return pending;
    }
    return nullptr;
}
