#include "maintenance/crashreports.h"

#include "base/settings.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>

// Given by the build to this room's library (empty sends none).
#ifndef VELMORIN_CRASH_REPORT_URL
#error "VELMORIN_CRASH_REPORT_URL must be defined"
#endif

namespace {

constexpr char SeenKey[] = "CrashReportsSeen";
constexpr qint64 MaxReportBytes = 16 * 1024 * 1024;

} // namespace

CrashReports::CrashReports(const QString &folder, const QUrl &uploadUrl, QObject *parent)
    : QObject(parent), m_folder(folder), m_uploadUrl(uploadUrl)
{}

QUrl CrashReports::configuredUploadUrl()
{
    return QUrl(QStringLiteral(VELMORIN_CRASH_REPORT_URL));
}

QStringList CrashReports::unseen() const
{
    const QDateTime seen = Settings::value(QLatin1String(SeenKey)).toDateTime();
    QStringList reports;
    const QFileInfoList files =
        QDir(m_folder).entryInfoList({QStringLiteral("crash-*.txt"), QStringLiteral("*.dmp")},
                                     QDir::Files, QDir::Time | QDir::Reversed);
    for (const QFileInfo &file : files) {
        if (!seen.isValid() || file.lastModified() > seen)
            reports.append(file.filePath());
    }
    return reports;
}

void CrashReports::markSeen()
{
    Settings::setValue(QLatin1String(SeenKey), QDateTime::currentDateTime());
}

QString CrashReports::takeUnseenQuestion(QString *newest)
{
    const QStringList reports = unseen();
    if (reports.isEmpty())
        return QString();
    markSeen();
    *newest = reports.last();
    return tr("Velmorin closed unexpectedly last time. A report of what happened was written to "
              "%1.\n\nDo you want to open the folder?")
        .arg(QDir::toNativeSeparators(m_folder));
}

bool CrashReports::upload(const QStringList &reports)
{
    if (m_uploadUrl.isEmpty() || !Settings::value(QLatin1String(SettingsKey::SendDumps)).toBool())
        return false;
    if (!m_manager)
        m_manager = new QNetworkAccessManager(this);
    for (const QString &path : reports) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly) || file.size() > MaxReportBytes)
            continue;
        QNetworkRequest request(m_uploadUrl);
        request.setHeader(QNetworkRequest::ContentTypeHeader,
                          QStringLiteral("application/octet-stream"));
        request.setRawHeader("X-Velmorin-Version", QCoreApplication::applicationVersion().toUtf8());
        request.setRawHeader("X-Velmorin-Report", QFileInfo(path).fileName().toUtf8());
        QNetworkReply *reply = m_manager->post(request, file.readAll());
        connect(reply, &QNetworkReply::finished, this, [this, reply, path] {
            reply->deleteLater();
            const bool ok = reply->error() == QNetworkReply::NoError;
            if (!ok)
                qWarning().noquote()
                    << "Unable to send the crash report" << path << "-" << reply->errorString();
            emit uploaded(path, ok);
        });
    }
    return true;
}
