#pragma once

#include "loglevel.h"

#include <QByteArray>
#include <QString>

// A destination for log lines. The logger formats each message once and hands the finished
// bytes to every engine; engines are called with the logger's mutex held.
class ILogEngine
{
public:
    virtual ~ILogEngine() = default;
    virtual QString name() const = 0;
    virtual void write(LogLevel level, const QByteArray &formatted) = 0;
};
