#include "base/appmodes.h"
#include "support/appprocess.h"
#include "support/testprofile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// Start-up as the user meets it: the real program in a private profile, its log read back.
class TestStartup final : public QObject
{
    Q_OBJECT

private slots:
    void modeSwitches_data();
    void modeSwitches();
    void twoRunsShareTheLogAndTheSettings();
    void germanUsersGetQtsOwnTextsInGermanToo();
    void testModesKeepTheirOwnHistory();
    void clearHistoryOnQuitKeepsLockedClippings();

private:
    static void startAndWait(AppProcess &app, const QStringList &arguments = {});
};

void TestStartup::startAndWait(AppProcess &app, const QStringList &arguments)
{
    app.start(arguments);
    QVERIFY2(app.waitForOutput(QStringLiteral("Main thread:")), qPrintable(app.output()));
}

void TestStartup::modeSwitches_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("writeDebugLog");
    QTest::addColumn<bool>("debug");
    QTest::addColumn<bool>("perfTest");
    QTest::addColumn<bool>("demo");

    const QString app = QStringLiteral("velmorin");
    QTest::newRow("none") << QStringList{app} << false << false << false << false;
    QTest::newRow("none, setting on") << QStringList{app} << true << true << false << false;
    QTest::newRow("--debug") << QStringList{app, "--debug"} << false << true << false << false;
    QTest::newRow("--perf-test") << QStringList{app, "--perf-test"} << false << false << true
                                 << false;
    QTest::newRow("--demo, setting on")
        << QStringList{app, "--demo"} << true << true << false << true;
    QTest::newRow("--demo --debug")
        << QStringList{app, "--demo", "--debug"} << false << false << false << true;
    QTest::newRow("--debug --demo")
        << QStringList{app, "--debug", "--demo"} << false << true << false << false;
    QTest::newRow("--DEBUG") << QStringList{app, "--DEBUG"} << false << false << false << false;
    QTest::newRow("--Demo") << QStringList{app, "--Demo"} << false << false << false << false;
    QTest::newRow("unknown, setting on")
        << QStringList{app, "--updater"} << true << true << false << false;
}

void TestStartup::modeSwitches()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, writeDebugLog);
    const AppModes modes = AppModes::fromArguments(arguments, writeDebugLog);
    QTEST(modes.debug, "debug");
    QTEST(modes.perfTest, "perfTest");
    QTEST(modes.demo, "demo");
}

namespace {

QString historyFile(const TestProfile &profile, const QString &name)
{
    return profile.path(QStringLiteral("data/Velmorin/Velmorin/") + name);
}

QJsonArray clippingsIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll())
        .object()
        .value(QStringLiteral("clippings"))
        .toArray();
}

} // namespace

void TestStartup::testModesKeepTheirOwnHistory()
{
    TestProfile profile;
    const QString userHistory = historyFile(profile, QStringLiteral("History.json"));
    QVERIFY(QDir().mkpath(QFileInfo(userHistory).path()));
    QFile user(userHistory);
    QVERIFY(user.open(QIODevice::WriteOnly));
    const QByteArray userBytes = R"({"clippings":[],"icons":{},"magic":-18022398,"version":8})";
    user.write(userBytes);
    user.close();

    AppProcess perf(QStringLiteral(VELMORIN_BINARY), profile);
    startAndWait(perf, {QStringLiteral("--perf-test")});
    perf.terminate();
    QVERIFY(perf.waitForExit());
    QCOMPARE(clippingsIn(historyFile(profile, QStringLiteral("History-perftest.json"))).size(),
             1000);
    // The larger limit held for that run only.
    QCOMPARE(profile.setting(QStringLiteral("KeepItems")).toString(), QStringLiteral("20"));

    AppProcess demo(QStringLiteral(VELMORIN_BINARY), profile);
    startAndWait(demo, {QStringLiteral("--demo")});
    demo.terminate();
    QVERIFY(demo.waitForExit());
    const QJsonArray samples =
        clippingsIn(historyFile(profile, QStringLiteral("History-demo.json")));
    QVERIFY(samples.size() >= 10);

    QFile untouched(userHistory);
    QVERIFY(untouched.open(QIODevice::ReadOnly));
    QCOMPARE(untouched.readAll(), userBytes);
}

void TestStartup::clearHistoryOnQuitKeepsLockedClippings()
{
    TestProfile profile;
    profile.setSetting(QStringLiteral("ClearHistory"), true);
    const QString path = historyFile(profile, QStringLiteral("History.json"));
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(R"({"clippings":[)"
               R"({"brief":"kept","text":"kept","time":"2026-01-02T10:00:00","locked":true,)"
               R"("id":"{11111111-1111-1111-1111-111111111111}"},)"
               R"({"brief":"passing","text":"passing","time":"2026-01-01T10:00:00",)"
               R"("id":"{22222222-2222-2222-2222-222222222222}"}],"magic":-18022398,"version":8})");
    file.close();

    AppProcess app(QStringLiteral(VELMORIN_BINARY), profile);
    startAndWait(app);
    app.terminate();
    QVERIFY(app.waitForExit());
    const QJsonArray clippings = clippingsIn(path);
    QCOMPARE(clippings.size(), 2);
    for (const QJsonValue &value : clippings) {
        const QJsonObject clipping = value.toObject();
        const bool locked = clipping.value(QStringLiteral("locked")).toBool();
        QCOMPARE(clipping.value(QStringLiteral("removed")).toBool(), !locked);
    }
}

// Two runs in one profile: the file log the setting starts, an orderly end on SIGTERM that
// keeps the settings, and release notes shown on the first run of a new version only.
void TestStartup::twoRunsShareTheLogAndTheSettings()
{
    TestProfile profile;
    profile.setSetting(QStringLiteral("WriteDebugLog"), true);
    profile.setSetting(QStringLiteral("ReleaseNotesVersion"), QStringLiteral("1.8"));
    AppProcess app(QStringLiteral(VELMORIN_BINARY), profile);
    startAndWait(app);
    const QString log = app.output();
    QVERIFY2(log.contains(QStringLiteral("Logging to ") + profile.debugLogFile()), qPrintable(log));
    QVERIFY(log.contains(QStringLiteral("Logging engines: file, std\n")));
    QVERIFY(!log.contains(QStringLiteral("Crash reports go to")));
    QVERIFY(app.waitForOutput(QStringLiteral("Showing the release notes")));
    app.terminate();
    QVERIFY(app.waitForExit());
    QCOMPARE(app.exitStatus(), QProcess::NormalExit);
    QCOMPARE(app.exitCode(), 0);
    QCOMPARE(profile.setting(QStringLiteral("ReleaseNotesVersion")).toString(),
             QStringLiteral("1.9"));
    QCOMPARE(profile.setting(QStringLiteral("KeepItems")).toString(), QStringLiteral("20"));
    // "Start with the system" is ticked from the first start: the entry is there.
    QFile autostart(profile.path(QStringLiteral("config/autostart/velmorin.desktop")));
    QVERIFY(autostart.open(QIODevice::ReadOnly));
    QVERIFY(autostart.readAll().contains(VELMORIN_BINARY));

    AppProcess again(QStringLiteral(VELMORIN_BINARY), profile);
    startAndWait(again);
    QTest::qWait(300);
    QVERIFY(!again.output().contains(QStringLiteral("Showing the release notes")));
    again.terminate();
    QVERIFY(again.waitForExit());
    QFile file(profile.debugLogFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString written = QString::fromUtf8(file.readAll());
    QCOMPARE(written.count(QStringLiteral("] [INFO] Started new log at ")), 2);
    QCOMPARE(written.count(QStringLiteral("] [DEBUG] Quitting the application\n")), 2);
}

void TestStartup::germanUsersGetQtsOwnTextsInGermanToo()
{
    TestProfile profile;
    AppProcess app(QStringLiteral(VELMORIN_BINARY), profile);
    for (const char *variable : {"LANG", "LC_ALL", "LC_MESSAGES"})
        app.setEnvironmentValue(QLatin1String(variable), QStringLiteral("de_DE.UTF-8"));
    startAndWait(app);
    QVERIFY2(app.output().contains(QStringLiteral("loaded: qtbase_de, velmorin_de")),
             qPrintable(app.output().left(3000)));
}

QTEST_GUILESS_MAIN(TestStartup)
#include "teststartup.moc"
