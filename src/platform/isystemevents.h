#pragma once

#include <QByteArray>
#include <QObject>

// What the operating system tells the program about its session: the machine resumed from
// sleep, or the program is asked to end (logout, service manager, Ctrl+C).
class ISystemEvents : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Whether a native message (as a native event filter sees it) announces a resume.
    virtual bool isPowerResumeMessage(const QByteArray &eventType, void *message) const = 0;

signals:
    void powerResumed();
    void terminationRequested();
};

// Made by the platform back end that CMake builds in.
ISystemEvents *createSystemEvents(QObject *parent);
