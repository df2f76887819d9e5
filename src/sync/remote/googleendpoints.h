#pragma once

#include <QString>

// Where the Google Drive target and the notifier connect, and as whom. Each comes from the
// environment (for a test or a stand-in), then the settings, then the build.
class GoogleEndpoints final
{
public:
    static inline const QString DefaultApiUrl = QStringLiteral("https://www.googleapis.com");
    static inline const QString DefaultAccountsUrl = QStringLiteral("https://accounts.google.com");

    // The OAuth endpoints' base: VELMORIN_GOOGLE_ACCOUNTS_URL, GoogleAccountsUrl.
    static QString accountsUrl();
    // The Drive API's base: VELMORIN_GOOGLE_API_URL, GoogleApiUrl.
    static QString apiUrl();
    // The notification service, "wss://host[:port]": VELMORIN_NOTIFIER_URL, NotifierUrl.
    static QString notifierUrl();
    // The OAuth client of this deployment: GoogleClientId, GoogleClientSecret.
    static QString clientId();
    static QString clientSecret();
};
