#include "fileengine.h"

FileEngine::FileEngine(const QString &name, const QString &path) : m_name(name), m_file(path)
{
    m_file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered);
}

void FileEngine::write(LogLevel, const QByteArray &formatted)
{
    if (m_file.isOpen())
        m_file.write(formatted);
}
