#include "base/runguard.h"
#include "support/appprocess.h"
#include "support/testprofile.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

// The single-instance guard between real processes: the program itself and a probe that
// holds, orphans or waits for the guard on a short schedule.
class TestRunGuard final : public QObject
{
    Q_OBJECT

private slots:
    void keysStayTheSameAcrossVersions();
    void secondLaunchReplacesTheFirst();
    void hungInstanceMakesTheNewOneGiveUp();
    void requestLeftByACrashedInstanceDoesNotQuitTheNext();
    void burstOfLaunchesLeavesExactlyOne();
    void waitingLaunchAndItsBoxEndOnSigterm();
};

void TestRunGuard::keysStayTheSameAcrossVersions()
{
    // Old and new versions must find each other's segment, so these never change.
    const QString key = QStringLiteral("VelmorinRunGuard");
    QCOMPARE(RunGuard::deriveKey(key, QStringLiteral("_sharedmemKey")),
             QStringLiteral("b2d86c4706d0515c989a2cb88de4a29328863af4"));
    QCOMPARE(RunGuard::deriveKey(key, QStringLiteral("_memLockKey")),
             QStringLiteral("e4bdd3af9cec35326ba0f56cb0602d74b2a71dd4"));
}

void TestRunGuard::secondLaunchReplacesTheFirst()
{
    TestProfile profile;
    AppProcess first(QStringLiteral(VELMORIN_BINARY), profile);
    first.start();
    QVERIFY2(first.waitForOutput(QStringLiteral("Main thread:")), qPrintable(first.output()));

    AppProcess second(QStringLiteral(VELMORIN_BINARY), profile);
    QElapsedTimer clock;
    clock.start();
    second.start();
    QVERIFY2(first.waitForExit(5000), qPrintable(first.output()));
    QCOMPARE(first.exitCode(), 0);
    QVERIFY(first.output().contains(QStringLiteral("Another instance launched")));
    QVERIFY(first.output().contains(QStringLiteral("Quitting the application")));

    QVERIFY2(second.waitForOutput(QStringLiteral("Launched new instance successfully"), 5000),
             qPrintable(second.output()));
    const int waits = second.outputCount(
        QStringLiteral("Another instance is running. Waiting for it to quit..."));
    QVERIFY2(waits >= 1 && waits <= 2, qPrintable(second.output()));
    QVERIFY(clock.elapsed() < 4000);
    QVERIFY(second.isRunning());
}

void TestRunGuard::hungInstanceMakesTheNewOneGiveUp()
{
    TestProfile profile;
    AppProcess holder(QStringLiteral(RUNGUARD_PROBE), profile);
    holder.start({QStringLiteral("hold")});
    QVERIFY2(holder.waitForOutput(QStringLiteral("holding")), qPrintable(holder.output()));

    AppProcess waiter(QStringLiteral(RUNGUARD_PROBE), profile);
    QElapsedTimer clock;
    clock.start();
    waiter.start({QStringLiteral("wait"), QStringLiteral("3"), QStringLiteral("200")});
    QVERIFY(waiter.waitForExit(10000));
    QVERIFY2(waiter.output().contains(QStringLiteral("gave up")), qPrintable(waiter.output()));
    QCOMPARE(waiter.exitCode(), 1);
    QCOMPARE(waiter.outputCount(
                 QStringLiteral("Another instance is running. Waiting for it to quit...")),
             3);
    QVERIFY(clock.elapsed() >= 600);
    QVERIFY(holder.isRunning());
    holder.closeInput();
    QVERIFY(holder.waitForExit());
}

void TestRunGuard::requestLeftByACrashedInstanceDoesNotQuitTheNext()
{
    TestProfile profile;
    AppProcess orphan(QStringLiteral(RUNGUARD_PROBE), profile);
    orphan.start({QStringLiteral("orphan")});
    QVERIFY(orphan.waitForExit());
    QVERIFY2(orphan.output().contains(QStringLiteral("orphaned")),
             qPrintable(orphan.output() + QString::number(orphan.exitCode())));

    AppProcess app(QStringLiteral(VELMORIN_BINARY), profile);
    app.start();
    QVERIFY2(app.waitForOutput(QStringLiteral("Main thread:")), qPrintable(app.output()));
    QCOMPARE(app.outputCount(QStringLiteral("Another instance is running")), 0);
    // Two checks of the request word go by without a quit.
    QTest::qWait(2500);
    QVERIFY2(app.isRunning(), qPrintable(app.output()));
    QVERIFY(!app.output().contains(QStringLiteral("Another instance launched")));
}

void TestRunGuard::burstOfLaunchesLeavesExactlyOne()
{
    TestProfile profile;
    for (int burst = 0; burst < 3; ++burst) {
        std::vector<std::unique_ptr<AppProcess>> launches;
        for (int i = 0; i < 20; ++i) {
            launches.push_back(
                std::make_unique<AppProcess>(QStringLiteral(VELMORIN_BINARY), profile));
            launches.back()->start();
        }
        const auto running = [&launches] {
            return std::count_if(launches.begin(), launches.end(),
                                 [](const auto &launch) { return launch->isRunning(); });
        };
        // Generous: twenty programs start at once on what may be a busy machine.
        QDeadlineTimer deadline(90000);
        while (running() > 1 && !deadline.hasExpired())
            QTest::qWait(100);
        QString outputs;
        for (const auto &launch : launches)
            outputs += launch->output();
        QVERIFY2(running() == 1, qPrintable(outputs.right(4000)));
        const auto survivor = std::find_if(launches.begin(), launches.end(),
                                           [](const auto &launch) { return launch->isRunning(); });
        QVERIFY2((*survivor)->waitForOutput(QStringLiteral("Main thread:")),
                 qPrintable((*survivor)->output()));
        QVERIFY(!outputs.contains(QStringLiteral("did not quit")));
        // It stays: no request is left behind for it.
        QTest::qWait(2500);
        QVERIFY2((*survivor)->isRunning(), qPrintable((*survivor)->output()));
        (*survivor)->terminate();
        QVERIFY((*survivor)->waitForExit());
    }
}

void TestRunGuard::waitingLaunchAndItsBoxEndOnSigterm()
{
    TestProfile profile;
    AppProcess holder(QStringLiteral(RUNGUARD_PROBE), profile);
    holder.start({QStringLiteral("hold")});
    QVERIFY2(holder.waitForOutput(QStringLiteral("holding")), qPrintable(holder.output()));

    // While it waits for the holder to quit, and once it has given up and shows its box.
    for (const QString &stage : {QStringLiteral("Waiting for it to quit"),
                                 QStringLiteral("Another instance did not quit")}) {
        AppProcess launch(QStringLiteral(VELMORIN_BINARY), profile);
        launch.start();
        QVERIFY2(launch.waitForOutput(stage, 30000), qPrintable(launch.output()));
        QElapsedTimer clock;
        clock.start();
        launch.terminate();
        QVERIFY2(launch.waitForExit(5000), qPrintable(stage));
        QVERIFY2(clock.elapsed() < 2000, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(launch.exitStatus(), QProcess::NormalExit);
    }
    QVERIFY(holder.isRunning());
    holder.closeInput();
    QVERIFY(holder.waitForExit());
}

QTEST_GUILESS_MAIN(TestRunGuard)
#include "testrunguard.moc"
