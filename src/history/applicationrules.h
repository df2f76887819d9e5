#pragma once

#include "platform/pastekeys.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QPixmap>
#include <QSet>
#include <QString>
#include <QVariant>

#include <array>

// The per-application rules as the settings keep them. Applications are known by executable
// name, compared exactly: NOTEPAD.EXE and notepad.exe are two applications.
class ApplicationRules final
{
public:
    enum Rule { Excluded, NoImages, TextOnly, FormattingOnly, NoExpand };
    static constexpr int RuleCount = 5;

    struct Application
    {
        QString name;
        QPixmap icon;
        std::array<bool, RuleCount> rules{};
        int delay = 0; // milliseconds; 0 means no delay
        PasteKeys::Key pasteKey = PasteKeys::Automatic;
    };

    // The settings key of a rule's list.
    static QString key(Rule rule);
    // The names listed under one rule.
    static QSet<QString> names(Rule rule);
    // Expansion delays of the applications that have one.
    static QHash<QString, int> delays();
    // The keys the user chose to paste with in an application; Automatic when none.
    static PasteKeys::Key pasteKey(const QString &application);

    // Every application seen as a clipboard source, with its rules.
    static QList<Application> load();
    // The keys that save() writes, in the order it writes them: the five lists, the delays,
    // the paste keys, then the applications themselves (so one removed from the list loses its
    // entry).
    static QList<QPair<QString, QVariant>> entries(const QList<Application> &applications);
    static void save(const QList<Application> &applications);

    // Adds or replaces one application's icon in the list of known applications.
    static void recordApplication(const QString &name, const QPixmap &icon);
};
