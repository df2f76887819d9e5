#pragma once

#include "o2.h"

// The OAuth flow with Google's endpoints under the accounts base URL
// ("https://accounts.google.com" unless a stand-in is configured).
class O2Google final : public O2
{
    Q_OBJECT

public:
    static inline const QString DefaultAccountsUrl = QStringLiteral("https://accounts.google.com");

    explicit O2Google(QObject *parent = nullptr, QNetworkAccessManager *manager = nullptr,
                      O0AbstractStore *store = nullptr,
                      const QString &accountsUrl = DefaultAccountsUrl);
};
