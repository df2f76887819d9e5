#pragma once

#include <QObject>
#include <QStringList>
#include <QUrl>

class QNetworkAccessManager;

// The crash reports of earlier runs: telling the user once that Velmorin closed unexpectedly,
// and sending the reports where the build says, only while SendDumps is on. A build without
// an address sends nothing, so by default no report leaves the computer.
class CrashReports final : public QObject
{
    Q_OBJECT

public:
    CrashReports(const QString &folder, const QUrl &uploadUrl, QObject *parent = nullptr);

    // The address this build sends reports to; empty for none.
    static QUrl configuredUploadUrl();

    // Reports written since the user was last told.
    QStringList unseen() const;
    void markSeen();
    // What to ask the user of reports not seen yet (empty when there are none): whether to open
    // the folder, where newest is the last report. The reports count as seen then.
    QString takeUnseenQuestion(QString *newest);
    // Posts each report; false when nothing is sent (no address, or SendDumps off).
    bool upload(const QStringList &reports);

signals:
    void uploaded(const QString &report, bool success);

private:
    QString m_folder;
    QUrl m_uploadUrl;
    QNetworkAccessManager *m_manager = nullptr;
};
