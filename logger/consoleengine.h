#pragma once

#include "ilogengine.h"

#include <cstdio>

// Writes to the process's standard streams: warnings and worse to stderr, the rest to stdout.
class ConsoleEngine final : public ILogEngine
{
public:
    explicit ConsoleEngine(const QString &name, FILE *out = stdout, FILE *err = stderr);

    QString name() const override { return m_name; }
    void write(LogLevel level, const QByteArray &formatted) override;

private:
    QString m_name;
    FILE *m_out;
    FILE *m_err;
};
