#include "consoleengine.h"

ConsoleEngine::ConsoleEngine(const QString &name, FILE *out, FILE *err)
    : m_name(name), m_out(out), m_err(err)
{}

void ConsoleEngine::write(LogLevel level, const QByteArray &formatted)
{
    const bool serious = level == LogLevel::Warning || level == LogLevel::Error ||
                         level == LogLevel::Critical || level == LogLevel::Fatal;
    FILE *stream = serious ? m_err : m_out;
    std::fwrite(formatted.constData(), 1, size_t(formatted.size()), stream);
    // A line that is still in a buffer when the program crashes is a line lost.
    std::fflush(stream);
}
