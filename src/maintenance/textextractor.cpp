#include "maintenance/textextractor.h"

#include <QDebug>
#include <QStandardPaths>
#include <QTimer>

TextExtractor::TextExtractor(QObject *parent) : QObject(parent), m_timer(new QTimer(this))
{
    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, [this] {
        m_timedOut = true;
        m_process.kill();
    });
    connect(&m_process, &QProcess::finished, this, &TextExtractor::onFinished);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            m_timer->stop();
            emit failed(tr("Tesseract could not be started: %1").arg(m_process.errorString()));
        }
    });
}

TextExtractor::~TextExtractor()
{
    m_process.disconnect(this);
    m_process.kill();
    m_process.waitForFinished(1000);
}

QString TextExtractor::program()
{
    return QStandardPaths::findExecutable(QStringLiteral("tesseract"));
}

QString TextExtractor::installHint()
{
    return tr("Extracting text needs the free Tesseract program, which is not installed.\n\n"
              "On Windows, install it from https://github.com/UB-Mannheim/tesseract/wiki and add "
              "its folder to the PATH.\nOn Debian or Ubuntu: sudo apt install tesseract-ocr");
}

void TextExtractor::extract(const QString &imagePath)
{
    const QString tesseract = program();
    if (tesseract.isEmpty()) {
        QTimer::singleShot(0, this, [this] { emit failed(installHint()); });
        return;
    }
    if (isRunning()) {
        QTimer::singleShot(0, this,
                           [this] { emit failed(tr("Text is being extracted already.")); });
        return;
    }
    m_timedOut = false;
    // "stdout" as the output base writes the text to standard output.
    m_process.start(tesseract, {imagePath, QStringLiteral("stdout")});
    m_timer->start(m_timeoutMs);
}

void TextExtractor::onFinished(int exitCode, QProcess::ExitStatus status)
{
    m_timer->stop();
    if (m_timedOut) {
        emit failed(tr("Extracting the text took too long and was stopped."));
        return;
    }
    if (status != QProcess::NormalExit || exitCode != 0) {
        const QString error = QString::fromLocal8Bit(m_process.readAllStandardError()).trimmed();
        qWarning().noquote() << "Tesseract failed:" << exitCode << error;
        emit failed(tr("Tesseract could not read the image: %1").arg(error));
        return;
    }
    emit finished(QString::fromUtf8(m_process.readAllStandardOutput()).trimmed());
}
