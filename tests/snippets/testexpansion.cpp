// Keyword expansion end to end on a real X server: keys typed into a real editor are seen by
// the hook, the keyword is erased with real Backspaces and the snippet pasted in its place.
#include "base/settings.h"
#include "history/historyitemmodel.h"
#include "input/inputmanager.h"
#include "platform/idesktop.h"
#include "platform/platform.h"
#include "snippets/snippetpaster.h"
#include "support/targetwindow.h"
#include "support/terminalwindow.h"
#include "support/testprofile.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QProcess>
#include <QSettings>
#include <QTest>

class TestExpansion : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void expandsWithExactlyItsBackspaces();
    void neverInsideItsOwnWindows();
    void expandsInTerminals_data();
    void expandsInTerminals();

private:
    void useSettings(bool requireSpace, const QStringList &noExpand = {},
                     const QVariantMap &delayed = {});

    TestProfile m_profile;
    TargetWindow m_target;
    InputManager *m_input = nullptr;
    HistoryItemModel *m_history = nullptr;
    SnippetPaster *m_paster = nullptr;
};

void TestExpansion::initTestCase()
{
    m_profile.useInThisProcess();
    QSettings settings;
    Settings::writeDefaults(settings);
    if (!m_target.start())
        QSKIP(qPrintable(m_target.error()));
    m_history = new HistoryItemModel(m_profile.path(QStringLiteral("History.json")), this);
    m_paster = new SnippetPaster(m_history, this);
    m_input = new InputManager(Platform::desktop(), this);
    m_input->setResolver([this](const QString &text, const QString &application) {
        return m_paster->resolve(text, application);
    });
    m_input->setKeywords({{"::brb", "Be right back."},
                          {"sig", "Best, Ann"},
                          {"dear", "Dear ⁞name⁞,"},
                          {"::second", "[{CLIP:2}]"}});
    m_input->installHooks();
    QVERIFY(Platform::desktop()->isHookInstalled(IDesktop::KeyboardHook));
}

void TestExpansion::init()
{
    useSettings(false);
    QVERIFY(m_target.activate());
    QVERIFY(m_target.clear());
    emit m_input->keywordBreakerTyped();
    QTest::qWait(50);
}

void TestExpansion::useSettings(bool requireSpace, const QStringList &noExpand,
                                const QVariantMap &delayed)
{
    QSettings settings;
    settings.setValue(SettingsKey::RequireSpace, requireSpace);
    settings.setValue(SettingsKey::NoExpandApplications, noExpand);
    settings.setValue(SettingsKey::DelayedApplications, delayed);
    m_input->loadSettings();
}

void TestExpansion::expandsWithExactlyItsBackspaces()
{
    // One Backspace too many would take the space, one too few would leave a colon.
    QVERIFY(TargetWindow::type(QStringLiteral("ab ::brb")));
    QTRY_COMPARE_WITH_TIMEOUT(m_target.text(), QStringLiteral("ab Be right back."), 5000);
    QTest::qWait(600); // the clipboard's return, before the next test
    // Typed after other letters of the same word, a keyword is no keyword.
    QVERIFY(TargetWindow::type(QStringLiteral(" xsig")));
    QTest::qWait(300);
    QCOMPARE(m_target.text(), QStringLiteral("ab Be right back. xsig"));
}

void TestExpansion::neverInsideItsOwnWindows()
{
    // A window of this process, found as the foreground by the desktop's own lookup.
    QLineEdit keywordField;
    keywordField.setWindowTitle(QStringLiteral("Keyword"));
    keywordField.show();
    keywordField.activateWindow();
    QVERIFY(TargetWindow::xdotool({QStringLiteral("search"), QStringLiteral("--sync"),
                                   QStringLiteral("--name"), QStringLiteral("^Keyword$"),
                                   QStringLiteral("windowactivate"), QStringLiteral("--sync")}));
    QTRY_VERIFY(keywordField.hasFocus());
    QTRY_COMPARE(Platform::foregroundApplicationName(),
                 QFileInfo(QCoreApplication::applicationFilePath()).fileName());
    QVERIFY(TargetWindow::type(QStringLiteral("::brb")));
    QTest::qWait(400);
    QCOMPARE(keywordField.text(), QStringLiteral("::brb"));
}

void TestExpansion::expandsInTerminals_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("xterm") << QStringLiteral("xterm");
    QTest::newRow("VTE") << QStringLiteral("xfce4-terminal");
}

void TestExpansion::expandsInTerminals()
{
    // Ctrl+V reaches a terminal's shell as a control character, and the snippet is lost.
    QFETCH(QString, program);
    if (!TerminalWindow::isInstalled(program))
        QSKIP(qPrintable(program + QStringLiteral(" is not installed")));
    TerminalWindow terminal;
    QVERIFY2(terminal.start(program), qPrintable(terminal.error()));
    emit m_input->keywordBreakerTyped();
    QGuiApplication::clipboard()->setText(QStringLiteral("the user's own"));
    // 25 ms a key, as a quick typist goes: the words after a keyword come before the typing
    // rests, and a terminal reads a paste later than the keys that follow it.
    // Typed from another process while this one goes on: the expansions run as the keys come.
    QProcess typing;
    typing.start(QStringLiteral("xdotool"),
                 {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("25"),
                  QStringLiteral("go ::brb then sig and on")});
    QVERIFY(QTest::qWaitFor([&] { return typing.state() == QProcess::NotRunning; }, 15000));
    QTRY_COMPARE_WITH_TIMEOUT(QGuiApplication::clipboard()->text(),
                              QStringLiteral("the user's own"), 5000);
    QTest::qWait(600); // the primary selection's return
    QVERIFY(TargetWindow::press({QStringLiteral("Return")}));
    QTRY_COMPARE_WITH_TIMEOUT(terminal.received(),
                              QStringLiteral("go Be right back. then Best, Ann and on\n"), 5000);
}

QTEST_MAIN(TestExpansion)
#include "testexpansion.moc"
