// From a clipboard change to a clipping: the listener over the real (offscreen) clipboard and
// a fake desktop for the foreground application, and the history model's classification.
#include "base/settings.h"
#include "clipboard/clipboardlistener.h"
#include "clipboard/clipboardmarks.h"
#include "clipboard/clipboardops.h"
#include "history/applicationrules.h"
#include "history/clipping.h"
#include "history/historyitemmodel.h"
#include "platform/platform.h"
#include "support/fakedesktop.h"
#include "support/testprofile.h"

#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QPointer>
#include <QRegularExpression>
#include <QSemaphore>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

#include <memory>

using namespace Clipping;

namespace {

QImage testImage(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(10, 20, 30));
    image.setPixel(width / 2, height / 2, qRgb(200, 100, 50));
    return image;
}

QByteArray pngOf(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QMimeData *mime(const QString &text, const QString &html = QString())
{
    auto *data = new QMimeData;
    data->setText(text);
    if (!html.isEmpty())
        data->setHtml(html);
    return data;
}

const QString richHtml = QStringLiteral(
    "<h1 id=\"t\" style=\"color: red; font-weight: bold\">Title</h1>"
    "<p id='p' style='font-family:&quot;Arial&quot;;margin:0;background-color:#fff'>Body</p>");

// What one changed signal carried.
struct Change
{
    std::shared_ptr<QMimeData> data;
    QPixmap icon;
    QString application;
};

} // namespace

class TestClipboardCapture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void signatures();
    void rulesRewriteTheClipboard_data();
    void rulesRewriteTheClipboard();
    void privateContentIsLeftAlone_data();
    void privateContentIsLeftAlone();
    void programsOwnTransientTextIsPrivate();
    void changeDuringReadIsDropped();
    void imagesAreDecodedAndReportedInOrder();
    void aFloodOfImagesKeepsOnlyTheNewestWaiting();
    void classification_data();
    void classification();

private:
    // Copies, and waits for the change to be told: X11 tells at once, Windows from the event
    // loop.
    static void setClipboard(QMimeData *data);
    // Changes reported so far, taken out of the spy.
    QList<Change> takeChanges();

    TestProfile m_profile;
    FakeDesktop *m_desktop = nullptr;
    ClipboardListener *m_listener = nullptr;
    std::unique_ptr<QSignalSpy> m_spy;
};

void TestClipboardCapture::setClipboard(QMimeData *data)
{
    QSignalSpy told(QGuiApplication::clipboard(), &QClipboard::dataChanged);
    QGuiApplication::clipboard()->setMimeData(data);
    if (told.isEmpty())
        told.wait(5000);
}

void TestClipboardCapture::initTestCase()
{
    QVERIFY(m_profile.isValid());
    m_profile.useInThisProcess();
    m_desktop = new FakeDesktop(this);
    Platform::setDesktop(m_desktop);
}

void TestClipboardCapture::init()
{
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
    m_desktop->foregroundName = QStringLiteral("editor.exe");
    m_desktop->foregroundIcon = testImage(16, 16);
    m_desktop->clipboardChangesWhileRead = false;
    QGuiApplication::clipboard()->clear();
    m_listener = new ClipboardListener(this);
    m_spy = std::make_unique<QSignalSpy>(m_listener, &ClipboardListener::changed);
}

void TestClipboardCapture::cleanup()
{
    takeChanges();
    delete m_listener;
}

QList<Change> TestClipboardCapture::takeChanges()
{
    QList<Change> changes;
    while (!m_spy->isEmpty()) {
        const QList<QVariant> arguments = m_spy->takeFirst();
        changes.append({std::shared_ptr<QMimeData>(arguments.at(0).value<QMimeData *>()),
                        arguments.at(1).value<QPixmap>(), arguments.at(2).toString()});
    }
    return changes;
}

void TestClipboardCapture::signatures()
{
    QMimeData text;
    text.setText(QStringLiteral("hello"));
    text.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.png"))});
    QCOMPARE(ClipboardListener::signature(text), QStringLiteral("hello"));

    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.png")), QUrl(),
                   QUrl::fromLocalFile(QStringLiteral("/tmp/b c.txt"))});
    QCOMPARE(ClipboardListener::signature(files), QStringLiteral("/tmp/a.png\n/tmp/b c.txt"));

    QMimeData image;
    image.setImageData(testImage(9, 4));
    QCOMPARE(ClipboardListener::signature(image), QStringLiteral("9x4-%1").arg(qRgb(200, 100, 50)));

    QCOMPARE(ClipboardListener::signature(QMimeData()), QString());
}

void TestClipboardCapture::rulesRewriteTheClipboard_data()
{
    QTest::addColumn<QStringList>("rules");
    QTest::addColumn<bool>("withImage");
    QTest::addColumn<QString>("html");

    QTest::newRow("text only") << QStringList{QStringLiteral("TextOnlyApplications")} << false
                               << QString();
    QTest::newRow("formatting only")
        << QStringList{QStringLiteral("FormattingOnlyApplications")} << false
        << QStringLiteral("Title<p style=\"margin:0\">Body</p>");
    QTest::newRow("both: cleaned, then dropped")
        << QStringList{QStringLiteral("FormattingOnlyApplications"),
                       QStringLiteral("TextOnlyApplications")}
        << false << QString();
    QTest::newRow("no images") << QStringList{QStringLiteral("NoImagesApplications")} << true
                               << richHtml;
}

void TestClipboardCapture::rulesRewriteTheClipboard()
{
    QFETCH(QStringList, rules);
    QFETCH(bool, withImage);
    QFETCH(QString, html);
    for (const QString &rule : rules)
        QSettings().setValue(rule, QStringList{QStringLiteral("editor.exe")});
    m_listener->reloadSettings();

    QMimeData *copy = mime(QStringLiteral("Title\nBody"), richHtml);
    if (withImage)
        copy->setImageData(testImage(4, 4));
    setClipboard(copy);
    // Recorded once, as rewritten; the clipboard is rewritten from the event loop, never from
    // inside the change notification.
    QCOMPARE(m_spy->size(), 1);
    QTRY_COMPARE(ClipboardMarks::owner(*QGuiApplication::clipboard()->mimeData()),
                 QStringLiteral("editor.exe"));
    QTest::qWait(50);
    QCOMPARE(m_spy->size(), 1);

    const QMimeData *now = QGuiApplication::clipboard()->mimeData();
    QCOMPARE(ClipboardMarks::owner(*now), QStringLiteral("editor.exe"));
    QVERIFY(!now->hasImage());
    QCOMPARE(now->hasHtml(), !html.isEmpty());
    const QList<Change> changes = takeChanges();
    QCOMPARE(changes.first().application, QStringLiteral("editor.exe"));
    QCOMPARE(changes.first().data->text(), QStringLiteral("Title\nBody"));
    QCOMPARE(changes.first().data->html(), html);
}

void TestClipboardCapture::privateContentIsLeftAlone_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("isPrivate");

    const QString windows = QStringLiteral("application/x-qt-windows-mime;value=\"%1\"");
    QTest::newRow("password manager")
        << QStringLiteral("x-kde-passwordManagerHint") << QByteArray("secret") << true;
    QTest::newRow("hint other than secret")
        << QStringLiteral("x-kde-passwordManagerHint") << QByteArray("public") << false;
    QTest::newRow("excluded from monitoring")
        << windows.arg(QStringLiteral("ExcludeClipboardContentFromMonitorProcessing"))
        << QByteArray() << true;
    QTest::newRow("viewer ignore")
        << windows.arg(QStringLiteral("Clipboard Viewer Ignore")) << QByteArray("x") << true;
    QTest::newRow("not for history") << windows.arg(QStringLiteral("CanIncludeInClipboardHistory"))
                                     << QByteArray("\0\0\0\0", 4) << true;
    QTest::newRow("allowed in history")
        << windows.arg(QStringLiteral("CanIncludeInClipboardHistory")) << QByteArray("\1\0\0\0", 4)
        << false;
    QTest::newRow("truncated history flag")
        << windows.arg(QStringLiteral("CanIncludeInClipboardHistory")) << QByteArray("\0", 1)
        << false;
}

void TestClipboardCapture::privateContentIsLeftAlone()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, value);
    QFETCH(bool, isPrivate);
    // A rule that would rewrite it, to show that private content is not rewritten either.
    QSettings().setValue(QStringLiteral("TextOnlyApplications"),
                         QStringList{QStringLiteral("editor.exe")});
    m_listener->reloadSettings();

    QMimeData *copy = mime(QStringLiteral("hunter2"), QStringLiteral("<b>hunter2</b>"));
    copy->setData(format, value);
    QCOMPARE(ClipboardMarks::isPrivate(*copy), isPrivate);
    if (isPrivate) {
        QTest::ignoreMessage(QtDebugMsg,
                             "Skipped clipboard content that its owner marked as private");
    }
    setClipboard(copy);
    QTest::qWait(50);
    QCOMPARE(QGuiApplication::clipboard()->mimeData()->hasHtml(), isPrivate);
    QCOMPARE(m_spy->size(), isPrivate ? 0 : 1);
}

void TestClipboardCapture::programsOwnTransientTextIsPrivate()
{
    for (auto system : {ClipboardMarks::System::Windows, ClipboardMarks::System::X11}) {
        QMimeData data;
        ClipboardMarks::markPrivate(&data, system);
        QVERIFY(ClipboardMarks::isPrivate(data));
    }
    QTest::ignoreMessage(QtDebugMsg, "Skipped clipboard content that its owner marked as private");
    QSignalSpy told(QGuiApplication::clipboard(), &QClipboard::dataChanged);
    ClipboardOps::setClipboardText(QStringLiteral("expanded snippet"));
    QTRY_VERIFY(!told.isEmpty());
    const QMimeData *now = QGuiApplication::clipboard()->mimeData();
    QVERIFY(!ClipboardMarks::owner(*now).isEmpty());
    QCOMPARE(now->text(), QStringLiteral("expanded snippet"));
    QCOMPARE(m_spy->size(), 0);
}

void TestClipboardCapture::changeDuringReadIsDropped()
{
    m_desktop->clipboardChangesWhileRead = true;
    QTest::ignoreMessage(QtDebugMsg,
                         "The clipboard changed while it was read; waiting for its next change");
    setClipboard(mime(QStringLiteral("half read")));
    QCOMPARE(m_spy->size(), 0);
    m_desktop->clipboardChangesWhileRead = false;
    setClipboard(mime(QStringLiteral("read whole")));
    QCOMPARE(m_spy->size(), 1);
}

void TestClipboardCapture::imagesAreDecodedAndReportedInOrder()
{
    auto *image = new QMimeData;
    image->setData(QStringLiteral("image/png"), pngOf(testImage(640, 480)));
    setClipboard(image);
    // Copied while the image is still being decoded: it waits its turn.
    setClipboard(mime(QStringLiteral("after the image")));
    auto *broken = new QMimeData;
    broken->setData(QStringLiteral("image/png"), QByteArray("not a png at all"));
    broken->setText(QStringLiteral("broken image"));
    setClipboard(broken);
    QTRY_COMPARE(m_spy->size(), 3);

    const QList<Change> changes = takeChanges();
    const QImage decoded = qvariant_cast<QImage>(changes.at(0).data->imageData());
    QCOMPARE(decoded.size(), QSize(640, 480));
    QCOMPARE(decoded.pixel(320, 240), qRgb(200, 100, 50));
    QCOMPARE(changes.at(1).data->text(), QStringLiteral("after the image"));
    QVERIFY(!changes.at(2).data->hasImage());
    QCOMPARE(changes.at(2).data->text(), QStringLiteral("broken image"));
}

void TestClipboardCapture::aFloodOfImagesKeepsOnlyTheNewestWaiting()
{
    // The pool's threads are kept busy, so the first image is still being decoded while the
    // others come.
    QThreadPool *pool = QThreadPool::globalInstance();
    QSemaphore release;
    for (int i = 0; i < pool->maxThreadCount(); ++i)
        pool->start([&release] { release.acquire(); });
    for (int i = 1; i <= 5; ++i) {
        auto *image = new QMimeData;
        image->setData(QStringLiteral("image/png"), pngOf(testImage(100 + i, 50)));
        setClipboard(image);
        if (i == 3)
            setClipboard(mime(QStringLiteral("between the images")));
    }
    release.release(pool->maxThreadCount());
    QTRY_COMPARE(m_spy->size(), 3);
    QTest::qWait(100);
    QCOMPARE(m_spy->size(), 3);

    // The one being decoded, the text, and the newest; the others waited and were dropped.
    const QList<Change> changes = takeChanges();
    QCOMPARE(qvariant_cast<QImage>(changes.at(0).data->imageData()).width(), 101);
    QCOMPARE(changes.at(1).data->text(), QStringLiteral("between the images"));
    QCOMPARE(qvariant_cast<QImage>(changes.at(2).data->imageData()).width(), 105);
}

void TestClipboardCapture::classification_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("log");
    QTest::addColumn<int>("type"); // -1: nothing added
    QTest::addColumn<QString>("text");

    QTest::newRow("two files, with text")
        << "two files"
        << "Too many files copied to clipboard 2" << -1 << QString();
    QTest::newRow("image file, upper case")
        << "PHOTO.JPG" << QString() << int(ImageType) << "PHOTO.JPG";
    QTest::newRow("other file") << "picture.bmp"
                                << "The copied file is not supported image file" << -1 << QString();
    QTest::newRow("web address with text")
        << "web"
        << "There's an url but it's not a local file \"/page\"" << int(TextType) << "Read the page";
    QTest::newRow("image with its address") << "image" << QString() << int(ImageType) << "cat.png";
    QTest::newRow("rich text") << "rich" << QString() << int(TextType) << "Bold words";
    QTest::newRow("HTML alone") << "html" << QString() << int(TextType) << "Bold words";
    QTest::newRow("unknown") << "unknown"
                             << "Unknown clipboard content:" << -1 << QString();
}

void TestClipboardCapture::classification()
{
    QFETCH(QString, kind);
    QFETCH(QString, log);
    QFETCH(int, type);
    QFETCH(QString, text);
    HistoryItemModel model(m_profile.path(QStringLiteral("data/capture.json")));
    const QString folder = m_profile.path(QStringLiteral("files"));
    QDir().mkpath(folder);
    const QString photo = folder + QStringLiteral("/PHOTO.JPG");
    QVERIFY(testImage(8, 6).save(photo, "PNG"));

    auto *data = new QMimeData;
    if (kind == QLatin1String("two files")) {
        data->setUrls({QUrl::fromLocalFile(photo), QUrl::fromLocalFile(folder + "/b.png")});
        data->setText(QStringLiteral("two files as text"));
    } else if (kind.contains(QLatin1Char('.'))) {
        data->setUrls({QUrl::fromLocalFile(folder + QLatin1Char('/') + kind)});
    } else if (kind == QLatin1String("web")) {
        data->setUrls({QUrl(QStringLiteral("https://example.com/page"))});
        data->setText(QStringLiteral("Read the page"));
    } else if (kind == QLatin1String("image")) {
        data->setUrls({QUrl(QStringLiteral("https://example.com/cat.png"))});
        data->setImageData(testImage(32, 24));
    } else if (kind == QLatin1String("rich") || kind == QLatin1String("html")) {
        if (kind == QLatin1String("rich"))
            data->setText(QStringLiteral("Bold words"));
        data->setHtml(QStringLiteral("<b>Bold</b> words"));
    } else {
        data->setData(QStringLiteral("x-custom/thing"), "?");
    }
    if (!log.isEmpty())
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QRegularExpression::escape(log)));
    QPointer<QMimeData> watched(data);
    model.addMimeData(data, QPixmap::fromImage(testImage(16, 16)), QStringLiteral("app.exe"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(watched.isNull());
    // The application is remembered with its icon even when nothing is added.
    QVERIFY(ApplicationRules::load().size() == 1);

    QCOMPARE(model.rowCount(), type < 0 ? 0 : 1);
    if (type < 0)
        return;
    const QStandardItem *clipping = model.item(0);
    QCOMPARE(clipping->data(TypeRole).toInt(), type);
    QCOMPARE(clipping->data(TextRole).toString(), text);
    QCOMPARE(clipping->data(ApplicationRole).toString(), QStringLiteral("app.exe"));
    if (kind == QLatin1String("rich") || kind == QLatin1String("html"))
        QCOMPARE(clipping->data(HtmlRole).toString(), QStringLiteral("<b>Bold</b> words"));
    if (type == ImageType) {
        // The cache gets the file or the image, also when the address is not a local file.
        const QString cached = imageFolder(clipping->data(IdRole).toUuid()) + QLatin1Char('/') +
                               clipping->data(FilenameRole).toString();
        QTRY_VERIFY(!QImage(cached).isNull());
    }
    model.finishSaves();
}

QTEST_MAIN(TestClipboardCapture)
#include "testclipboardcapture.moc"
