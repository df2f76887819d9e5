#pragma once

#include <QObject>

// Tells the parts that keep copies of settings (rule sets, limits) to read them again after
// the user applied new ones. The program has one, which its services wire to those parts.
class SettingsEvents final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void notifyChanged() { emit changed(); }
    void notifyActionsChanged() { emit actionsChanged(); }
    void notifyActionFilesEdited() { emit actionFilesEdited(); }

signals:
    void changed();
    // Action shortcuts or the listing of actions were written.
    void actionsChanged();
    // The user saved, created or deleted an action file.
    void actionFilesEdited();
};
