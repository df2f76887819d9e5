// Clipboard placement and pasting over a fake desktop and the real (offscreen) clipboard.
#include "base/settings.h"
#include "clipboard/clipboardmarks.h"
#include "clipboard/clipboardops.h"
#include "clipboard/htmlcleanup.h"
#include "history/clipping.h"
#include "platform/platform.h"
#include "support/fakedesktop.h"
#include "support/testprofile.h"

#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QSettings>
#include <QStandardItemModel>
#include <QTest>

class TestClipboardOps : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void pasteReleasesHeldModifiersAndPressesThemAgain();
    void pasteKeysSuitTheWindow_data();
    void pasteKeysSuitTheWindow();
    void secondDelayedPasteIsRefused();
    void moveCursorSelectsBackwards();
    void pastePlainTextRestoresTheClipboard();
    void clippingImageAsImageOrFile();
    void htmlCleanup_data();
    void htmlCleanup();

private:
    QClipboard *clipboard() const { return QGuiApplication::clipboard(); }

    TestProfile m_profile;
    FakeDesktop *m_desktop = nullptr;
    QStandardItemModel m_model;
};

void TestClipboardOps::initTestCase()
{
    m_profile.useInThisProcess();
    m_desktop = new FakeDesktop(this);
    Platform::setDesktop(m_desktop);
}

void TestClipboardOps::init()
{
    m_desktop->events.clear();
    m_desktop->held = Qt::NoModifier;
    m_desktop->foregroundClass.clear();
    m_model.clear();
}

void TestClipboardOps::pasteReleasesHeldModifiersAndPressesThemAgain()
{
    m_desktop->held = Qt::ControlModifier | Qt::ShiftModifier;
    ClipboardOps::paste();
    QCOMPARE(m_desktop->keyLog(), QStringLiteral("-Shift -Ctrl +Ctrl +V -Ctrl -V"));
    QTest::qWait(50);
    QCOMPARE(m_desktop->events.size(), 6);
    QTRY_COMPARE(m_desktop->keyLog(),
                 QStringLiteral("-Shift -Ctrl +Ctrl +V -Ctrl -V +Shift +Ctrl"));
}

void TestClipboardOps::pasteKeysSuitTheWindow_data()
{
    QTest::addColumn<QString>("windowClass");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("keys");
    const QString controlV = QStringLiteral("+Ctrl +V -Ctrl -V");
    const QString shiftInsert = QStringLiteral("+Shift +Insert -Shift -Insert");
    QTest::newRow("editor") << "Mousepad" << QString() << controlV;
    QTest::newRow("unknown window") << QString() << QString() << controlV;
    QTest::newRow("xterm") << "XTerm" << QString() << shiftInsert;
    QTest::newRow("class in other case") << "xfce4-terminal" << QString() << shiftInsert;
    QTest::newRow("Windows console") << "ConsoleWindowClass" << QString() << shiftInsert;
    QTest::newRow("chosen over the terminal's") << "XTerm"
                                                << "Ctrl+V" << controlV;
    QTest::newRow("chosen for an editor")
        << "Emacs"
        << "Ctrl+Shift+V" << QStringLiteral("+Ctrl +Shift +V -Ctrl -Shift -V");
    QTest::newRow("unknown choice") << "XTerm"
                                    << "Alt+P" << shiftInsert;
}

void TestClipboardOps::pasteKeysSuitTheWindow()
{
    QFETCH(QString, windowClass);
    QFETCH(QString, chosen);
    QFETCH(QString, keys);
    m_desktop->foregroundName = QStringLiteral("program");
    m_desktop->foregroundClass = windowClass;
    QVariantMap choices;
    if (!chosen.isEmpty())
        choices.insert(QStringLiteral("program"), chosen);
    QSettings().setValue(SettingsKey::PasteKeyApplications, choices);
    ClipboardOps::paste();
    QCOMPARE(m_desktop->keyLog(), keys);
}

void TestClipboardOps::secondDelayedPasteIsRefused()
{
    ClipboardOps::delayedPaste();
    QTest::ignoreMessage(QtWarningMsg, "Delayed paste operation is already ongoing. Ignoring "
                                       "the second paste command.");
    ClipboardOps::delayedPaste();
    QTest::qWait(100);
    QVERIFY(m_desktop->events.isEmpty()); // nothing before the 200 ms are up
    QTRY_COMPARE(m_desktop->keyLog(), QStringLiteral("+Ctrl +V -Ctrl -V"));
    QTest::qWait(250);
    QCOMPARE(m_desktop->events.size(), 4);
    // Once the first has pasted, the next request is taken again.
    ClipboardOps::delayedPaste();
    QTRY_COMPARE(m_desktop->events.size(), 8);
}

void TestClipboardOps::moveCursorSelectsBackwards()
{
    ClipboardOps::moveCursor({-1, 4});
    QVERIFY(m_desktop->events.isEmpty());
    ClipboardOps::moveCursor({3, 2});
    QCOMPARE(m_desktop->keyLog(), QStringLiteral("+Left -Left +Left -Left +Left -Left "
                                                 "+Shift +Left -Shift -Left "
                                                 "+Shift +Left -Shift -Left"));
}

void TestClipboardOps::pastePlainTextRestoresTheClipboard()
{
    auto *rich = new QMimeData;
    rich->setText(QStringLiteral("bold words"));
    rich->setHtml(QStringLiteral("<b>bold</b> words"));
    clipboard()->setMimeData(rich);

    ClipboardOps::pastePlainText();
    QVERIFY(!clipboard()->mimeData()->hasHtml());
    QCOMPARE(clipboard()->text(), QStringLiteral("bold words"));
    QCOMPARE(m_desktop->keyLog(), QStringLiteral("+Ctrl +V -Ctrl -V"));
    QTRY_VERIFY(clipboard()->mimeData()->hasHtml());
    QCOMPARE(clipboard()->mimeData()->html(), QStringLiteral("<b>bold</b> words"));
    QVERIFY(!ClipboardMarks::owner(*clipboard()->mimeData()).isNull());
}

void TestClipboardOps::clippingImageAsImageOrFile()
{
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(Qt::blue);
    auto *item = Clipping::newImageItem(QUrl(), image, {}, QStringLiteral("app"),
                                        QDateTime::currentDateTime());
    m_model.appendRow(item);
    const QString folder = Clipping::imageFolder(item->data(Clipping::IdRole).toUuid());
    const QString path = folder + QLatin1Char('/') + item->data(Clipping::FilenameRole).toString();

    QTest::ignoreMessage(
        QtWarningMsg,
        qPrintable(QStringLiteral("Unable to add file as image to clipboard ") + path));
    ClipboardOps::putClippingImage(item->index(), false);
    QVERIFY(!clipboard()->mimeData()->hasImage());

    QVERIFY(QDir().mkpath(folder));
    QVERIFY(image.save(path));
    ClipboardOps::putClippingImage(item->index(), false);
    QCOMPARE(clipboard()->image().size(), QSize(20, 10));
    ClipboardOps::putClippingImage(item->index(), true);
    QCOMPARE(clipboard()->mimeData()->urls(), QList<QUrl>{QUrl::fromLocalFile(path)});
}

void TestClipboardOps::htmlCleanup_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("cleaned");
    QTest::newRow("ids and styles") << "<p id='a' style=\"color: red\" class=\"k\">x</p>"
                                    << "<p class=\"k\">x</p>";
    QTest::newRow("headings keep their words") << "<H2 class=\"t\">Head</H2><p>x</p>"
                                               << "Head<p>x</p>";
    QTest::newRow("words that look like attributes stay") << "<p>id=3 style=bold</p>"
                                                          << "<p>id=3 style=bold</p>";
    QTest::newRow("other tags starting with h") << "<hr><header>x</header>"
                                                << "<hr><header>x</header>";
}

void TestClipboardOps::htmlCleanup()
{
    QFETCH(QString, html);
    QFETCH(QString, cleaned);
    QCOMPARE(HtmlCleanup::clean(html), cleaned);
}

QTEST_MAIN(TestClipboardOps)
#include "testclipboardops.moc"
