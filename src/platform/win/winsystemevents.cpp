#include "platform/win/winsystemevents.h"

#include "win32messages.h"

ISystemEvents *createSystemEvents(QObject *parent)
{
    return new WinSystemEvents(parent);
}

bool WinSystemEvents::isPowerResumeMessage(const QByteArray &eventType, void *message) const
{
    return eventType == "windows_generic_MSG" &&
           Win32Messages::isPowerResume(*static_cast<const MSG *>(message));
}
