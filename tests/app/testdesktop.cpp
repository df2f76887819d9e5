// The desktop integration end to end on a real X server with a window manager: keys typed
// into a real application reach the input logic, synthetic keys and pastes land in it, and
// global shortcuts fire while it has the focus.
#include "clipboard/clipboardops.h"
#include "history/clipping.h"
#include "input/inputmanager.h"
#include "platform/idesktop.h"
#include "platform/keysender.h"
#include "platform/platform.h"
#include "qhotkey.h"
#include "support/appprocess.h"
#include "support/targetwindow.h"
#include "support/testprofile.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStandardPaths>
#include <QTest>

#include <X11/Xlib.h>
#include <X11/keysym.h>

namespace {

bool setLayout(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("setxkbmap"), arguments);
    return process.waitForFinished(10000) && process.exitCode() == 0;
}

} // namespace

class TestDesktop : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void foregroundApplication();
    void deadKeyGivesOneAccentedCharacter();
    void globalShortcutFiresInTheTarget();
    void shortcutHeldByAnotherProgramIsRefused();
    void actionShortcutPastesItsResult();
    void autostartEntryAndTheme();

private:
    TestProfile m_profile;
    TargetWindow m_target;
    InputManager *m_input = nullptr;
};

void TestDesktop::initTestCase()
{
    m_profile.useInThisProcess();
    if (!m_target.start())
        QSKIP(qPrintable(m_target.error()));
    m_input = new InputManager(Platform::desktop(), this);
    m_input->installHooks();
    QVERIFY(Platform::desktop()->isHookInstalled(IDesktop::KeyboardHook));
}

void TestDesktop::foregroundApplication()
{
    QCOMPARE(Platform::foregroundApplicationName(), QStringLiteral("targeteditor"));
    // The clipboard's owner is told apart from the window in front, also when its window has
    // no process id on it (xclip's has none).
    if (!QStandardPaths::findExecutable(QStringLiteral("xclip")).isEmpty()) {
        QProcess xclip; // in the foreground (-quiet): the process that connected owns it
        xclip.start(
            QStringLiteral("xclip"),
            {QStringLiteral("-quiet"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
        xclip.write("owned by xclip");
        xclip.closeWriteChannel();
        QTRY_COMPARE(Platform::desktop()->clipboardOwnerName(), QStringLiteral("xclip"));
        xclip.kill();
        xclip.waitForFinished();
    }
    // The editor's 256 x 256 window icon comes back at the size the history keeps.
    QCOMPARE(Platform::foregroundApplicationIcon().size(), QSize(64, 64));
}

void TestDesktop::deadKeyGivesOneAccentedCharacter()
{
    if (!setLayout({QStringLiteral("-layout"), QStringLiteral("us"), QStringLiteral("-variant"),
                    QStringLiteral("intl")}))
        QSKIP("setxkbmap cannot load a layout with dead keys here");
    QTest::qWait(300); // both programs read the new layout
    QVERIFY(m_target.clear());
    emit m_input->keywordBreakerTyped();
    QSignalSpy characters(m_input, &InputManager::characterTyped);
    QVERIFY(TargetWindow::press({QStringLiteral("dead_acute"), QStringLiteral("e")}));
    QTRY_COMPARE(m_input->typedWord(), QStringLiteral("\u00e9"));
    QCOMPARE(characters.count(), 1);
    // The observer's own translation did not eat the accent from the application.
    QTRY_COMPARE(m_target.text(), QStringLiteral("\u00e9"));
    QVERIFY(setLayout({QStringLiteral("-layout"), QStringLiteral("us")}));
    QTest::qWait(300);
}

void TestDesktop::globalShortcutFiresInTheTarget()
{
    QHotkey hotkey(QKeySequence(QStringLiteral("Ctrl+Shift+V")), true);
    QVERIFY(hotkey.isRegistered());
    QSignalSpy activated(&hotkey, &QHotkey::activated);
    QVERIFY(TargetWindow::press({QStringLiteral("ctrl+shift+v")}));
    QTRY_COMPARE(activated.count(), 1);
    // Num Lock counts as a modifier to X, not to the user.
    QVERIFY(TargetWindow::press(
        {QStringLiteral("Num_Lock"), QStringLiteral("ctrl+shift+v"), QStringLiteral("Num_Lock")}));
    QTRY_COMPARE(activated.count(), 2);
    QVERIFY(hotkey.setRegistered(false));
    QVERIFY(TargetWindow::press({QStringLiteral("ctrl+shift+v")}));
    QTest::qWait(200);
    QCOMPARE(activated.count(), 2);
}

void TestDesktop::shortcutHeldByAnotherProgramIsRefused()
{
    Display *other = XOpenDisplay(nullptr);
    QVERIFY(other);
    const KeyCode key = XKeysymToKeycode(other, XK_j);
    XGrabKey(other, key, ControlMask | Mod1Mask, DefaultRootWindow(other), True, GrabModeAsync,
             GrabModeAsync);
    XSync(other, False);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(
                                           "^Failed to register hotkey. Error: BadAccess")));
    QHotkey hotkey(QKeySequence(QStringLiteral("Ctrl+Alt+J")), true);
    QVERIFY(!hotkey.isRegistered());
    XCloseDisplay(other);
}

void TestDesktop::actionShortcutPastesItsResult()
{
    m_input->removeHooks();
    TestProfile profile;
    profile.setSetting(QStringLiteral("ReleaseNotesVersion"), QStringLiteral("1.9"));
    profile.setSetting(QStringLiteral("ActionShortcuts"),
                       QVariantMap{{QStringLiteral(":/data/actions/02-toupper.json"),
                                    QStringLiteral("Ctrl+Alt+U")}});
    AppProcess velmorin(QStringLiteral(VELMORIN_BINARY), profile);
    velmorin.setEnvironmentValue(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    velmorin.start({QStringLiteral("--demo")});
    QVERIFY(velmorin.waitForOutput(QStringLiteral("Registered hotkey Ctrl+Alt+U for action")));

    QGuiApplication::clipboard()->setText(QStringLiteral("quiet words"));
    QVERIFY(m_target.activate());
    QVERIFY(m_target.clear());
    QVERIFY(TargetWindow::press({QStringLiteral("ctrl+alt+u")}));
    QTRY_COMPARE_WITH_TIMEOUT(m_target.text(), QStringLiteral("QUIET WORDS"), 10000);
    // The clipboard is the user's again once the paste is done.
    QTRY_COMPARE_WITH_TIMEOUT(QGuiApplication::clipboard()->text(), QStringLiteral("quiet words"),
                              5000);
    velmorin.terminate();
}

void TestDesktop::autostartEntryAndTheme()
{
    const QString entry = m_profile.path(QStringLiteral("config/autostart/velmorin.desktop"));
    Platform::applyStartWithSystem(true);
    QFile file(entry);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(entry));
    const QString text = QString::fromUtf8(file.readAll());
    QVERIFY(text.startsWith(QLatin1String("[Desktop Entry]\n")));
    QVERIFY(text.contains(
        QStringLiteral("Exec=\"%1\"\n").arg(QCoreApplication::applicationFilePath())));
    file.close();
    Platform::applyStartWithSystem(false);
    QVERIFY(!QFile::exists(entry));

    // No desktop portal on the test server: the GTK theme name decides.
    qputenv("GTK_THEME", "Adwaita:dark");
    QVERIFY(Platform::isDarkTheme());
    qputenv("GTK_THEME", "Adwaita");
    QVERIFY(!Platform::isDarkTheme());
    QCOMPARE(Platform::name(), QStringLiteral("X11"));
}

QTEST_MAIN(TestDesktop)
#include "testdesktop.moc"
