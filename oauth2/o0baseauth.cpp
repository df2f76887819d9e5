#include "o0baseauth.h"

#include "o0abstractstore.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

namespace {

// Tokens for this run only, when no store is given.
class MemoryStore final : public O0AbstractStore
{
public:
    using O0AbstractStore::O0AbstractStore;

    QString value(const QString &key, const QString &defaultValue) override
    {
        return m_values.value(key, defaultValue);
    }
    void setValue(const QString &key, const QString &value) override { m_values[key] = value; }

private:
    QMap<QString, QString> m_values;
};

} // namespace

O0BaseAuth::O0BaseAuth(QObject *parent, O0AbstractStore *store) : QObject(parent)
{
    setStore(store);
}

void O0BaseAuth::setStore(O0AbstractStore *store)
{
    if (store) {
        m_store = store;
        if (!store->parent())
            store->setParent(this);
    } else {
        m_store = new MemoryStore(this);
    }
}

QString O0BaseAuth::key(const char *pattern) const
{
    return QString::fromLatin1(pattern).arg(m_clientId);
}

bool O0BaseAuth::linked()
{
    const bool result = !m_store->value(key("linked.%1")).isEmpty();
    qDebug() << "O0BaseAuth::linked:" << (result ? "Yes" : "No");
    return result;
}

void O0BaseAuth::setLinked(bool linked)
{
    const bool old = !m_store->value(key("linked.%1")).isEmpty();
    m_store->setValue(key("linked.%1"), linked ? QStringLiteral("1") : QString());
    if (old != linked)
        emit linkedChanged();
}

QString O0BaseAuth::token()
{
    return m_store->value(key("token.%1"));
}

void O0BaseAuth::setToken(const QString &token)
{
    m_store->setValue(key("token.%1"), token);
    emit tokenChanged();
}

QString O0BaseAuth::refreshToken()
{
    return m_store->value(key("refreshtoken.%1"));
}

void O0BaseAuth::setRefreshToken(const QString &token)
{
    m_store->setValue(key("refreshtoken.%1"), token);
    emit refreshTokenChanged();
}

qint64 O0BaseAuth::expires()
{
    return m_store->value(key("expires.%1")).toLongLong();
}

void O0BaseAuth::setExpires(qint64 expires)
{
    m_store->setValue(key("expires.%1"), QString::number(expires));
    emit expiresChanged();
}

QString O0BaseAuth::tokenSecret()
{
    return m_store->value(key("tokensecret.%1"));
}

void O0BaseAuth::setTokenSecret(const QString &secret)
{
    m_store->setValue(key("tokensecret.%1"), secret);
}

QVariantMap O0BaseAuth::extraTokens()
{
    const QString stored = m_store->value(key("extratokens.%1"));
    return QJsonDocument::fromJson(stored.toUtf8()).object().toVariantMap();
}

void O0BaseAuth::setExtraTokens(const QVariantMap &tokens)
{
    const QByteArray json =
        tokens.isEmpty()
            ? QByteArray()
            : QJsonDocument(QJsonObject::fromVariantMap(tokens)).toJson(QJsonDocument::Compact);
    m_store->setValue(key("extratokens.%1"), QString::fromUtf8(json));
    emit extraTokensChanged();
}

QByteArray O0BaseAuth::createQueryParameters(const QList<QPair<QString, QString>> &parameters)
{
    QByteArray query;
    for (const auto &[name, value] : parameters) {
        if (!query.isEmpty())
            query.append('&');
        query.append(QUrl::toPercentEncoding(name) + '=' + QUrl::toPercentEncoding(value));
    }
    return query;
}
