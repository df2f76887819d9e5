#pragma once

#include <QList>

class O2Reply;
class QNetworkReply;

// The pending token requests of one flow, each with its time-out.
class O2ReplyList final
{
public:
    O2ReplyList() = default;
    ~O2ReplyList();
    O2ReplyList(const O2ReplyList &) = delete;
    O2ReplyList &operator=(const O2ReplyList &) = delete;

    O2Reply *add(QNetworkReply *reply, int timeoutMs);
    void remove(QNetworkReply *reply);
    O2Reply *find(QNetworkReply *reply) const;

private:
    QList<O2Reply *> m_replies;
};
