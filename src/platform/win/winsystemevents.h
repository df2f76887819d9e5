#pragma once

#include "platform/isystemevents.h"

// The power-broadcast window message announces a resume; ending the session reaches the
// program through Qt's own handling of WM_ENDSESSION.
class WinSystemEvents final : public ISystemEvents
{
    Q_OBJECT

public:
    using ISystemEvents::ISystemEvents;

    bool isPowerResumeMessage(const QByteArray &eventType, void *message) const override;
};
