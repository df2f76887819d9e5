#include "o2google.h"

O2Google::O2Google(QObject *parent, QNetworkAccessManager *manager, O0AbstractStore *store,
                   const QString &accountsUrl)
    : O2(parent, manager, store)
{
    setRequestUrl(QUrl(accountsUrl + QStringLiteral("/o/oauth2/auth")));
    setTokenUrl(QUrl(accountsUrl + QStringLiteral("/o/oauth2/token")));
    setRefreshTokenUrl(tokenUrl());
}
