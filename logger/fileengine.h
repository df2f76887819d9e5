#pragma once

#include "ilogengine.h"

#include <QFile>

// Appends to a log file without buffering, so the last line before a crash is on disk and
// every run's lines follow the previous run's.
class FileEngine final : public ILogEngine
{
public:
    FileEngine(const QString &name, const QString &path);

    // False when the file cannot be opened; the engine then drops what it is given.
    bool isOpen() const { return m_file.isOpen(); }
    QString errorString() const { return m_file.errorString(); }

    QString name() const override { return m_name; }
    void write(LogLevel level, const QByteArray &formatted) override;

private:
    QString m_name;
    QFile m_file;
};
