#pragma once

#include <QObject>
#include <QString>

// What the sync engine asks of the news between computers: to listen while a target is usable,
// to hold news back during its own uploads, and to tell the others of an upload.
class ISyncNotifier : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Starts listening for the target ("GoogleDrive", "LocalFolder").
    virtual void connectTarget(const QString &targetName) = 0;
    virtual void close() = 0;
    // While false, news is held back; what came meanwhile is told when it is set again.
    virtual void setReact(bool react) = 0;
    // Tells the other computers that the content ("History.json", "Snippets.json") was uploaded.
    virtual void notify(const QString &content) = 0;

signals:
    // Another computer uploaded the content.
    void dataUpdated(const QString &content);
};
