// Reports of earlier crashes: the user is told once and may open the folder, and reports are
// sent only to a configured address while SendDumps is on.
#include "base/settings.h"
#include "maintenance/crashreports.h"
#include "support/testprofile.h"

#include <QDir>
#include <QHostAddress>
#include <QHttpServer>
#include <QHttpServerRequest>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

namespace {

QString writeReport(const QString &folder, const QString &name, const QDateTime &time)
{
    QDir().mkpath(folder);
    QFile file(folder + QLatin1Char('/') + name);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("Velmorin closed unexpectedly.\nSignal: 11\n");
    file.close();
    file.open(QIODevice::Append);
    file.setFileTime(time, QFileDevice::FileModificationTime);
    return file.fileName();
}

} // namespace

class TestCrashReports : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theUserIsToldOnce();
    void reportsAreSentOnlyWhereAndWhenAllowed();

private:
    TestProfile m_profile;
};

void TestCrashReports::initTestCase()
{
    m_profile.useInThisProcess();
    QSettings settings;
    Settings::writeDefaults(settings);
}

void TestCrashReports::theUserIsToldOnce()
{
    const QString folder = m_profile.path(QStringLiteral("crashes-told"));
    CrashReports reports(folder, QUrl());
    QVERIFY(reports.unseen().isEmpty());
    QString newest;
    QVERIFY(reports.takeUnseenQuestion(&newest).isEmpty()); // nothing to tell
    const QString report =
        writeReport(folder, QStringLiteral("crash-42.txt"), QDateTime::currentDateTime());
    writeReport(folder, QStringLiteral("notes.txt"), QDateTime::currentDateTime());
    QCOMPARE(reports.unseen(), QStringList{report});
    QVERIFY(reports.takeUnseenQuestion(&newest).contains(QLatin1String("closed unexpectedly")));
    QCOMPARE(newest, report);
    QVERIFY(reports.unseen().isEmpty());
    QVERIFY(reports.takeUnseenQuestion(&newest).isEmpty());

    // A later crash is news again.
    const QString later = writeReport(folder, QStringLiteral("crash-43.txt"),
                                      QDateTime::currentDateTime().addSecs(5));
    QCOMPARE(reports.unseen(), QStringList{later});
}

void TestCrashReports::reportsAreSentOnlyWhereAndWhenAllowed()
{
    QHttpServer server;
    QList<QByteArray> received;
    server.route(QStringLiteral("/reports"), QHttpServerRequest::Method::Post,
                 [&received](const QHttpServerRequest &request) {
                     received.append(request.body());
                     return QHttpServerResponse(QHttpServerResponder::StatusCode::Ok);
                 });
    const quint16 port = server.listen(QHostAddress::LocalHost, 0);
    QVERIFY(port != 0);
    const QString folder = m_profile.path(QStringLiteral("crashes-sent"));
    const QString report = writeReport(folder, QStringLiteral("crash-7.txt"),
                                       QDateTime::currentDateTime().addSecs(60));

    QVERIFY(!CrashReports(folder, QUrl()).upload({report})); // the default build
    QSettings().setValue(QLatin1String(SettingsKey::SendDumps), false);
    const QUrl url(QStringLiteral("http://127.0.0.1:%1/reports").arg(port));
    QVERIFY(!CrashReports(folder, url).upload({report}));

    QSettings().setValue(QLatin1String(SettingsKey::SendDumps), true);
    CrashReports reports(folder, url);
    QSignalSpy uploaded(&reports, &CrashReports::uploaded);
    QVERIFY(reports.upload({report}));
    QVERIFY(uploaded.wait());
    QCOMPARE(uploaded.first().at(1).toBool(), true);
    QCOMPARE(received.size(), 1);
    QVERIFY(received.first().startsWith("Velmorin closed unexpectedly."));
}

QTEST_MAIN(TestCrashReports)
#include "testcrashreports.moc"
