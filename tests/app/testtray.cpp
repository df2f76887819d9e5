#include "support/appprocess.h"
#include "support/targetwindow.h"
#include "support/testprofile.h"

#include <QDir>
#include <QGuiApplication>
#include <QPixmap>
#include <QRect>
#include <QScreen>
#include <QStandardPaths>
#include <QTest>

// The program on a real X server with a window manager tray: it puts its icon in the tray, and
// the tray menu's Quit ends it the orderly way. Screenshots go to the build's artifacts folder.
class TestTray final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void trayIconAppearsAndItsMenuQuits();

private:
    static QRect trayIconGeometry();
    static void saveScreenshot(const QString &name, const QRect &area = QRect());
};

void TestTray::initTestCase()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        QSKIP("needs an X server (run through run-under-xvfb.sh)");
    if (QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
        QSKIP("xdotool is not installed");
}

QRect TestTray::trayIconGeometry()
{
    // The tray icon is the program's small window; its other windows are dialog sized.
    QString windows;
    TargetWindow::xdotool(
        {QStringLiteral("search"), QStringLiteral("--class"), QStringLiteral("velmorin")},
        &windows);
    for (const QString &window : windows.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QRect geometry = TargetWindow::geometry(window);
        if (geometry.width() > 0 && geometry.width() <= 64 && geometry.height() <= 64)
            return geometry;
    }
    return {};
}

void TestTray::saveScreenshot(const QString &name, const QRect &area)
{
    const QString folder = QStringLiteral(VELMORIN_ARTIFACTS_DIR);
    QDir().mkpath(folder);
    QPixmap shot = QGuiApplication::primaryScreen()->grabWindow(0);
    if (area.isValid())
        shot = shot.copy(area.intersected(shot.rect()));
    shot.save(folder + QLatin1Char('/') + name);
}

void TestTray::trayIconAppearsAndItsMenuQuits()
{
    TestProfile profile;
    profile.setSetting(QStringLiteral("ReleaseNotesVersion"), QStringLiteral("1.9"));
    AppProcess app(QStringLiteral(VELMORIN_BINARY), profile);
    app.start({QStringLiteral("--debug")});
    QVERIFY2(app.waitForOutput(QStringLiteral("Main thread:")), qPrintable(app.output()));
    QVERIFY2(!app.output().contains(QStringLiteral("No system tray")), qPrintable(app.output()));

    QRect icon;
    QTRY_VERIFY_WITH_TIMEOUT((icon = trayIconGeometry()).isValid(), 10000);
    QVERIFY2(icon.bottom() > 900, "the icon should sit in the tray at the bottom of the screen");
    saveScreenshot(QStringLiteral("tray.png"));

    const QPoint centre = icon.center();
    TargetWindow::xdotool({QStringLiteral("mousemove"), QString::number(centre.x()),
                           QString::number(centre.y()), QStringLiteral("click"),
                           QStringLiteral("3")});
    QTest::qWait(700);
    saveScreenshot(QStringLiteral("tray-menu.png"),
                   QRect(icon.right() - 360, icon.bottom() - 200, 420, 220));
    QVERIFY2(app.isRunning(), qPrintable(app.output()));

    // Up from an open menu lands on its last entry, Quit.
    TargetWindow::xdotool({QStringLiteral("key"), QStringLiteral("Up"), QStringLiteral("Return")});
    QVERIFY2(app.waitForExit(10000), qPrintable(app.output()));
    QCOMPARE(app.exitStatus(), QProcess::NormalExit);
    QCOMPARE(app.exitCode(), 0);
    QVERIFY(app.output().contains(QStringLiteral("Quitting the application")));
    QVERIFY(!app.output().contains(QStringLiteral("Received signal")));
}

QTEST_MAIN(TestTray)
#include "testtray.moc"
