#pragma once

#include "platform/isystemevents.h"

class QSocketNotifier;

// SIGTERM and SIGINT end the program the way Quit does; logind's PrepareForSleep(false) on the
// system bus announces a resume from sleep.
class UnixSystemEvents final : public ISystemEvents
{
    Q_OBJECT

public:
    explicit UnixSystemEvents(QObject *parent = nullptr);
    ~UnixSystemEvents() override;

    bool isPowerResumeMessage(const QByteArray &, void *) const override { return false; }

private slots:
    void onSignalPipeReadable();
    void onPrepareForSleep(bool start);

private:
    void installSignalHandlers();
    void watchLogind();

    QSocketNotifier *m_notifier = nullptr;
};
