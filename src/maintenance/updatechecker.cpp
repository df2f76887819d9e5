#include "maintenance/updatechecker.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QSysInfo>
#include <QTimer>
#include <QXmlStreamReader>

UpdateChecker::UpdateChecker(const QString &tool, QObject *parent)
    : QObject(parent), m_tool(tool), m_timer(new QTimer(this))
{
    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, [this] {
        m_process.kill();
        emit failed(tr("The maintenance tool did not answer in time."));
    });
    connect(&m_process, &QProcess::finished, this, &UpdateChecker::onFinished);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            m_timer->stop();
            emit failed(m_process.errorString());
        }
    });
}

UpdateChecker::~UpdateChecker()
{
    m_process.disconnect(this);
    m_process.kill();
    m_process.waitForFinished(1000);
}

QString UpdateChecker::toolForThisProgram()
{
    if (QSysInfo::productType() != QLatin1String("windows"))
        return {};
    const QString tool = QDir(QCoreApplication::applicationDirPath())
                             .filePath(QStringLiteral("maintenancetool.exe"));
    qDebug().noquote() << "Maintenance tool path:" << QDir::toNativeSeparators(tool);
    return QFileInfo::exists(tool) ? tool : QString();
}

QList<UpdateChecker::Update> UpdateChecker::parse(const QByteArray &output)
{
    // The tool writes log lines before and after the XML.
    const qsizetype start = output.indexOf("<updates");
    const qsizetype end = output.indexOf("</updates>");
    QList<Update> updates;
    if (start < 0 || end < start)
        return updates;
    QXmlStreamReader xml(output.mid(start, end - start + 10));
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("updates"))
            continue;
        if (xml.name() == QLatin1String("update")) {
            const auto attributes = xml.attributes();
            updates.append({attributes.value(QLatin1String("name")).toString(),
                            attributes.value(QLatin1String("version")).toString()});
        }
        xml.skipCurrentElement();
    }
    return updates;
}

void UpdateChecker::check()
{
    if (!isAvailable() || m_process.state() != QProcess::NotRunning)
        return;
    qDebug().noquote() << "Checking for updates with" << m_tool;
    m_process.start(m_tool, {QStringLiteral("check-updates")});
    m_timer->start(TimeoutMs);
}

void UpdateChecker::onFinished(int exitCode, QProcess::ExitStatus status)
{
    if (!m_timer->isActive())
        return; // timed out, already reported
    m_timer->stop();
    const QByteArray output = m_process.readAllStandardOutput();
    const QList<Update> updates = parse(output);
    if (!updates.isEmpty()) {
        emit updatesAvailable(updates);
        return;
    }
    // The tool ends with 1 when there is nothing to update, and says so.
    if (status == QProcess::NormalExit &&
        (exitCode == 0 || output.contains("no updates available"))) {
        emit noUpdates();
        return;
    }
    qWarning().noquote() << "The update check failed:" << exitCode
                         << m_process.readAllStandardError().trimmed();
    emit failed(tr("The maintenance tool could not check for updates."));
}

bool UpdateChecker::startUpdater() const
{
    return isAvailable() && QProcess::startDetached(m_tool, {QStringLiteral("--start-updater")});
}

QString UpdateChecker::offerText(const QList<Update> &updates)
{
    QStringList lines;
    for (const Update &update : updates)
        lines.append(QStringLiteral("%1 %2").arg(update.name, update.version));
    return tr("A new version is available:\n%1\n\nDo you want to update now?")
        .arg(lines.join(QLatin1Char('\n')));
}
