#include "sync/remote/googleendpoints.h"

#include "base/settings.h"

#ifndef VELMORIN_GOOGLE_CLIENT_ID
#define VELMORIN_GOOGLE_CLIENT_ID ""
#endif
#ifndef VELMORIN_GOOGLE_CLIENT_SECRET
#define VELMORIN_GOOGLE_CLIENT_SECRET ""
#endif
#ifndef VELMORIN_NOTIFIER_URL
#define VELMORIN_NOTIFIER_URL ""
#endif

namespace {

QString configured(const char *environment, const char *key, const QString &fallback)
{
    const QString fromEnvironment = qEnvironmentVariable(environment);
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    const QString fromSettings = Settings::value(QLatin1String(key)).toString();
    return fromSettings.isEmpty() ? fallback : fromSettings;
}

QString withoutTrailingSlash(QString url)
{
    while (url.endsWith(QLatin1Char('/')))
        url.chop(1);
    return url;
}

} // namespace

QString GoogleEndpoints::accountsUrl()
{
    return withoutTrailingSlash(configured("VELMORIN_GOOGLE_ACCOUNTS_URL",
                                           SettingsKey::GoogleAccountsUrl, DefaultAccountsUrl));
}

QString GoogleEndpoints::apiUrl()
{
    return withoutTrailingSlash(
        configured("VELMORIN_GOOGLE_API_URL", SettingsKey::GoogleApiUrl, DefaultApiUrl));
}

QString GoogleEndpoints::notifierUrl()
{
    return withoutTrailingSlash(configured("VELMORIN_NOTIFIER_URL", SettingsKey::NotifierUrl,
                                           QStringLiteral(VELMORIN_NOTIFIER_URL)));
}

QString GoogleEndpoints::clientId()
{
    const QString id = Settings::value(QLatin1String(SettingsKey::GoogleClientId)).toString();
    return id.isEmpty() ? QStringLiteral(VELMORIN_GOOGLE_CLIENT_ID) : id;
}

QString GoogleEndpoints::clientSecret()
{
    const QString secret =
        Settings::value(QLatin1String(SettingsKey::GoogleClientSecret)).toString();
    return secret.isEmpty() ? QStringLiteral(VELMORIN_GOOGLE_CLIENT_SECRET) : secret;
}
