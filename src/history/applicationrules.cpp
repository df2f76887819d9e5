#include "history/applicationrules.h"

#include "base/settings.h"

QString ApplicationRules::key(Rule rule)
{
    switch (rule) {
    case Excluded:
        return QString::fromLatin1(SettingsKey::ExcludedApplications);
    case NoImages:
        return QString::fromLatin1(SettingsKey::NoImagesApplications);
    case TextOnly:
        return QString::fromLatin1(SettingsKey::TextOnlyApplications);
    case FormattingOnly:
        return QString::fromLatin1(SettingsKey::FormattingOnlyApplications);
    case NoExpand:
        return QString::fromLatin1(SettingsKey::NoExpandApplications);
    }
    return QString();
}

QSet<QString> ApplicationRules::names(Rule rule)
{
    const QStringList list = Settings::value(key(rule)).toStringList();
    return QSet<QString>(list.cbegin(), list.cend());
}

QHash<QString, int> ApplicationRules::delays()
{
    QHash<QString, int> delays;
    const QVariantMap stored = Settings::value(SettingsKey::DelayedApplications).toMap();
    for (auto entry = stored.constBegin(); entry != stored.constEnd(); ++entry) {
        const int delay = entry.value().toInt();
        if (delay >= 1)
            delays.insert(entry.key(), delay);
    }
    return delays;
}

PasteKeys::Key ApplicationRules::pasteKey(const QString &application)
{
    const QVariantMap chosen = Settings::value(SettingsKey::PasteKeyApplications).toMap();
    return PasteKeys::fromName(chosen.value(application).toString());
}

QList<ApplicationRules::Application> ApplicationRules::load()
{
    std::array<QSet<QString>, RuleCount> lists;
    for (int rule = 0; rule < RuleCount; ++rule)
        lists[rule] = names(Rule(rule));
    const QHash<QString, int> delayed = delays();
    const QVariantMap pasteKeys = Settings::value(SettingsKey::PasteKeyApplications).toMap();

    QList<Application> applications;
    const QVariantMap known = Settings::value(SettingsKey::Applications).toMap();
    for (auto entry = known.constBegin(); entry != known.constEnd(); ++entry) {
        Application application;
        application.name = entry.key();
        application.icon = entry.value().value<QPixmap>();
        for (int rule = 0; rule < RuleCount; ++rule)
            application.rules[rule] = lists[rule].contains(application.name);
        application.delay = delayed.value(application.name, 0);
        application.pasteKey = PasteKeys::fromName(pasteKeys.value(application.name).toString());
        applications.append(application);
    }
    return applications;
}

QList<QPair<QString, QVariant>> ApplicationRules::entries(const QList<Application> &applications)
{
    QList<QPair<QString, QVariant>> entries;
    for (int rule = 0; rule < RuleCount; ++rule) {
        QStringList names;
        for (const Application &application : applications) {
            if (application.rules[rule])
                names.append(application.name);
        }
        entries.append({key(Rule(rule)), names});
    }
    QVariantMap delayed;
    QVariantMap pasteKeys;
    QVariantMap known;
    for (const Application &application : applications) {
        if (application.delay >= 1)
            delayed.insert(application.name, application.delay);
        if (application.pasteKey != PasteKeys::Automatic)
            pasteKeys.insert(application.name, PasteKeys::name(application.pasteKey));
        known.insert(application.name, application.icon);
    }
    entries.append({QString::fromLatin1(SettingsKey::DelayedApplications), delayed});
    entries.append({QString::fromLatin1(SettingsKey::PasteKeyApplications), pasteKeys});
    entries.append({QString::fromLatin1(SettingsKey::Applications), known});
    return entries;
}

void ApplicationRules::save(const QList<Application> &applications)
{
    for (const auto &[key, value] : entries(applications))
        Settings::setValue(key, value);
}

void ApplicationRules::recordApplication(const QString &name, const QPixmap &icon)
{
    QVariantMap known = Settings::value(SettingsKey::Applications).toMap();
    known.insert(name, icon);
    Settings::setValue(SettingsKey::Applications, known);
}
