#include "sync/remote/googleendpoints.h"

#include "base/settings.h"

// Given by the build to this room's library (empty when the deployment has none); a build that
// lost them must not quietly ship without its Google client.
#if !defined(VELMORIN_GOOGLE_CLIENT_ID) || !defined(VELMORIN_GOOGLE_CLIENT_SECRET) ||              \
    !defined(VELMORIN_NOTIFIER_URL)
#error "The build defines the Google client and the notification service"
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
