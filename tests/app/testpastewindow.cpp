// The paste window end to end on a real X server with a window manager: opened by its shortcut
// over a real editor, driven by the keyboard, pasting back into the editor.
#include "history/historyfile.h"
#include "snippets/snippetitemmodel.h"
#include "support/appprocess.h"
#include "support/targetwindow.h"
#include "support/terminalwindow.h"
#include "support/testprofile.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QJsonObject>
#include <QMimeData>
#include <QTest>
#include <QUuid>

class TestPasteWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void opensAtTheMouseAndPastesTheSecondClipping();
    void snippetLandsWithItsCaret();
    void typeTextTypesIntoTheEditor();
    void pastedImageIsNotRecordedAgain();
    void terminalsKeepTheirKeysAndGetThePaste_data();
    void terminalsKeepTheirKeysAndGetThePaste();

private:
    // (Re)starts the program when its paste window shortcut is to change.
    void startVelmorin(const QString &shortcut);
    // Opens the window over the editor with its shortcut; the visible window's id.
    QString open(const QString &shortcut = QStringLiteral("ctrl+shift+v"));
    bool isOpen();
    QList<HistoryFile::Record> history() const;
    QString newestText() const;
    void copy(const QString &text);

    TestProfile m_profile;
    TargetWindow m_editor;
    AppProcess *m_velmorin = nullptr;
    QString m_historyPath;
    QString m_shortcut;
};

void TestPasteWindow::initTestCase()
{
    QVERIFY(m_profile.isValid());
    m_profile.setSetting(QStringLiteral("ReleaseNotesVersion"), QStringLiteral("1.9"));
    const QString snippets = m_profile.path(QStringLiteral("snippets/Snippets.json"));
    m_profile.setSetting(QStringLiteral("SnippetFilePath"), snippets);
    {
        SnippetItemModel model(snippets);
        model.addSnippet(model.addGroup(QStringLiteral("Letters")), QStringLiteral("Greeting"),
                         QStringLiteral("Dear \u205E, thanks"));
        QVERIFY(model.save());
    }
    m_historyPath = m_profile.path(QStringLiteral("data/Velmorin/Velmorin/History.json"));
    if (!m_editor.start())
        QSKIP(qPrintable(m_editor.error()));
    startVelmorin(QStringLiteral("Ctrl+Shift+V"));
    for (const QString &text : {QStringLiteral("alpha first"), QStringLiteral("foo bar baz"),
                                QStringLiteral("second newest"), QStringLiteral("newest item")})
        copy(text);
}

void TestPasteWindow::startVelmorin(const QString &shortcut)
{
    if (m_shortcut == shortcut)
        return;
    m_shortcut = shortcut;
    if (m_velmorin) {
        m_velmorin->terminate();
        delete m_velmorin;
    }
    m_profile.setSetting(QStringLiteral("Shortcut"), shortcut);
    m_velmorin = new AppProcess(QStringLiteral(VELMORIN_BINARY), m_profile, this);
    m_velmorin->setEnvironmentValue(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    m_velmorin->start();
    QVERIFY(m_velmorin->waitForOutput(QStringLiteral("Registered hotkey ") + shortcut));
}

void TestPasteWindow::cleanupTestCase()
{
    if (m_velmorin)
        m_velmorin->terminate();
}

void TestPasteWindow::init()
{
    QVERIFY(m_editor.activate());
    QVERIFY(m_editor.clear());
}

QList<HistoryFile::Record> TestPasteWindow::history() const
{
    QFile file(m_historyPath);
    HistoryFile::Document document;
    if (file.open(QIODevice::ReadOnly))
        HistoryFile::decode(file.readAll(), &document);
    return document.records;
}

QString TestPasteWindow::newestText() const
{
    return history().value(0).text;
}

void TestPasteWindow::copy(const QString &text)
{
    QVERIFY(m_editor.copy("copy-rich " + text.toUtf8()));
    QVERIFY2(QTest::qWaitFor([&] { return newestText() == text; }, 10000),
             qPrintable(newestText()));
}

bool TestPasteWindow::isOpen()
{
    // By its title: a tool tip of the list is another visible window of the program.
    return TargetWindow::xdotool({QStringLiteral("search"), QStringLiteral("--all"),
                                  QStringLiteral("--onlyvisible"), QStringLiteral("--pid"),
                                  QString::number(m_velmorin->processId()),
                                  QStringLiteral("--name"), QStringLiteral("^Velmorin$")});
}

QString TestPasteWindow::open(const QString &shortcut)
{
    if (!TargetWindow::press({shortcut}) || !QTest::qWaitFor([&] { return isOpen(); }, 10000))
        return {};
    QString active;
    // Shown is not yet focused: keys must reach the paste window, not the editor.
    const bool focused = QTest::qWaitFor(
        [&] {
            QString pid;
            TargetWindow::xdotool(
                {QStringLiteral("getactivewindow"), QStringLiteral("getwindowpid")}, &pid);
            return pid.trimmed() == QString::number(m_velmorin->processId());
        },
        10000);
    TargetWindow::xdotool({QStringLiteral("getactivewindow")}, &active);
    return focused ? active.trimmed() : QString();
}

void TestPasteWindow::opensAtTheMouseAndPastesTheSecondClipping()
{
    QVERIFY(TargetWindow::xdotool(
        {QStringLiteral("mousemove"), QStringLiteral("300"), QStringLiteral("260")}));
    const QString window = open();
    QVERIFY2(!window.isEmpty(), qPrintable(m_velmorin->output()));
    const QRect geometry = TargetWindow::geometry(window);
    // At the mouse, give or take what the window manager adds around it.
    QVERIFY2((geometry.topLeft() - QPoint(300, 260)).manhattanLength() < 60,
             qPrintable(QStringLiteral("%1,%2").arg(geometry.x()).arg(geometry.y())));
    QVERIFY(TargetWindow::press({QStringLiteral("Down"), QStringLiteral("Return")}));
    QTRY_COMPARE_WITH_TIMEOUT(m_editor.text(), QStringLiteral("second newest"), 10000);
    QVERIFY(!isOpen());
}

void TestPasteWindow::snippetLandsWithItsCaret()
{
    QVERIFY(!open().isEmpty());
    QVERIFY(TargetWindow::press({QStringLiteral("ctrl+Tab"), QStringLiteral("Return")}));
    QTRY_COMPARE_WITH_TIMEOUT(m_editor.text(), QStringLiteral("Dear , thanks"), 10000);
    QTRY_COMPARE(m_editor.state().value(QLatin1String("position")).toInt(), 5);
    // Back on the history page for the next opening.
    QVERIFY(!open().isEmpty());
    QVERIFY(TargetWindow::press({QStringLiteral("ctrl+Tab"), QStringLiteral("Escape")}));
    QTRY_VERIFY(!isOpen());
}

void TestPasteWindow::typeTextTypesIntoTheEditor()
{
    copy(QStringLiteral("typed by keys"));
    QVERIFY(m_editor.activate());
    QVERIFY(!open().isEmpty());
    QVERIFY(TargetWindow::press({QStringLiteral("Right"), QStringLiteral("t")}));
    QTRY_COMPARE_WITH_TIMEOUT(m_editor.text(), QStringLiteral("typed by keys"), 10000);
}

void TestPasteWindow::pastedImageIsNotRecordedAgain()
{
    QVERIFY(m_editor.copy("copy-image 40 30"));
    QVERIFY(QTest::qWaitFor([&] { return newestText() == "40 x 30"; }, 10000));
    const QUuid image = history().value(0).id;
    const QDir images(m_profile.path(QStringLiteral("data/Velmorin/Velmorin/images")));
    QTRY_COMPARE(images.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1);
    // Pasted after other copies: no new id, no new image folder, nothing pushed out.
    for (const QString &text : {QStringLiteral("copied after it"), QStringLiteral("and again")}) {
        copy(text);
        const int count = int(history().size());
        QVERIFY(m_editor.activate());
        QVERIFY(!open().isEmpty());
        QVERIFY(TargetWindow::press({QStringLiteral("Down"), QStringLiteral("Return")}));
        QTRY_VERIFY(!isOpen());
        // Moved to the top as it is; a new copy would have been recorded by now.
        QTRY_COMPARE(history().value(0).id, image);
        QTest::qWait(1500);
        QCOMPARE(history().size(), count);
        QCOMPARE(history().value(0).id, image);
    }
    QCOMPARE(images.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1);
}

void TestPasteWindow::terminalsKeepTheirKeysAndGetThePaste_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("pastesWithControlShiftV");
    QTest::newRow("VTE") << QStringLiteral("xfce4-terminal") << true;
    QTest::newRow("xterm") << QStringLiteral("xterm") << false;
}

void TestPasteWindow::terminalsKeepTheirKeysAndGetThePaste()
{
    QFETCH(QString, program);
    QFETCH(bool, pastesWithControlShiftV);
    if (!TerminalWindow::isInstalled(program))
        QSKIP(qPrintable(program + QStringLiteral(" is not installed")));
    TerminalWindow terminal;
    QVERIFY2(terminal.start(program), qPrintable(terminal.error()));
    QString expected;
    if (pastesWithControlShiftV) {
        // The program's Ctrl+Shift+V is left to the terminal while it is in front.
        startVelmorin(QStringLiteral("Ctrl+Shift+V"));
        QVERIFY(terminal.activate());
        QGuiApplication::clipboard()->setText(QStringLiteral("pasted by the terminal"));
        QVERIFY(TargetWindow::press({QStringLiteral("ctrl+shift+v")}));
        QTest::qWait(500); // the terminal asks this process for the clipboard
        QVERIFY(!isOpen());
        QVERIFY(TargetWindow::press({QStringLiteral("Return")}));
        expected = QStringLiteral("pasted by the terminal\n");
        QTRY_COMPARE_WITH_TIMEOUT(terminal.received(), expected, 5000);
    }
    // With other keys the window opens over the terminal and pastes into it.
    startVelmorin(QStringLiteral("Ctrl+Alt+V"));
    QVERIFY(terminal.activate());
    QVERIFY(!open(QStringLiteral("ctrl+alt+v")).isEmpty());
    QVERIFY(TargetWindow::xdotool({QStringLiteral("type"), QStringLiteral("--delay"),
                                   QStringLiteral("40"), QStringLiteral("foo")}));
    QVERIFY(TargetWindow::press({QStringLiteral("Return")}));
    QTRY_VERIFY(!isOpen());
    QTest::qWait(600);
    QVERIFY(TargetWindow::press({QStringLiteral("Return")}));
    expected += QStringLiteral("foo bar baz\n");
    QTRY_COMPARE_WITH_TIMEOUT(terminal.received(), expected, 5000);
}

QTEST_MAIN(TestPasteWindow)
#include "testpastewindow.moc"
