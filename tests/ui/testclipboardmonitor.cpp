// The clipboard monitor follows the clipboard: formats with sizes, previews, the application
// the content came from, and the marks that decide whether it is recorded.
#include "clipboard/clipboardmarks.h"
#include "platform/platform.h"
#include "support/fakedesktop.h"
#include "ui/clipboardmonitor.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QImage>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

class TestClipboardMonitor : public QObject
{
    Q_OBJECT

private slots:
    void showsFormatsPreviewsAndMarks();
};

void TestClipboardMonitor::showsFormatsPreviewsAndMarks()
{
    FakeDesktop desktop;
    Platform::setDesktop(&desktop);
    desktop.foregroundName = QStringLiteral("writer.exe");
    ClipboardMonitor monitor;
    monitor.show();
    auto *formats = monitor.findChild<QTreeWidget *>();
    auto *text = monitor.findChild<QPlainTextEdit *>(QStringLiteral("monitorText"));
    auto *marks = monitor.findChild<QLabel *>(QStringLiteral("monitorMarks"));

    // HTML offered first; the monitor opens on the text. The owner is named, not the window
    // in front.
    desktop.clipboardOwner = QStringLiteral("mailer");
    auto *data = new QMimeData;
    data->setHtml(QStringLiteral("<b>bold</b> words"));
    data->setText(QStringLiteral("plain words"));
    QGuiApplication::clipboard()->setMimeData(data);
    QTRY_COMPARE(formats->topLevelItemCount(), 2);
    QCOMPARE(formats->currentItem()->text(0), QStringLiteral("text/plain"));
    QCOMPARE(text->toPlainText(), QStringLiteral("plain words"));
    QCOMPARE(monitor.findChild<QLabel *>(QStringLiteral("monitorSource"))->text(),
             QStringLiteral("Owned by: mailer"));
    QVERIFY(marks->text().startsWith(QLatin1String("No marks")));
    const auto rows = formats->findItems(QStringLiteral("text/html"), Qt::MatchExactly);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first()->text(1), QStringLiteral("17"));
    formats->setCurrentItem(rows.first());
    QCOMPARE(text->toPlainText(), QStringLiteral("<b>bold</b> words"));

    // A password manager's copy, and one of our own.
    auto *secret = new QMimeData;
    secret->setText(QStringLiteral("hunter2"));
    ClipboardMarks::markPrivate(secret);
    ClipboardMarks::setOwner(secret, QStringLiteral("vault.exe"));
    QGuiApplication::clipboard()->setMimeData(secret);
    QTRY_VERIFY(marks->text().contains(QLatin1String("Marked private")));
    QVERIFY(marks->text().contains(QLatin1String("Put there by Velmorin (for vault.exe)")));
    // Hidden until asked for.
    QVERIFY(!text->isVisible());
    auto *reveal = monitor.findChild<QPushButton *>(QStringLiteral("revealButton"));
    QVERIFY(reveal->isVisible());
    reveal->click();
    QVERIFY(text->isVisible());
    QCOMPARE(text->toPlainText(), QStringLiteral("hunter2"));

    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    auto *picture = new QMimeData;
    picture->setData(QStringLiteral("image/png"), png);
    QGuiApplication::clipboard()->setMimeData(picture);
    QTRY_VERIFY(!formats->findItems(QStringLiteral("image/png"), Qt::MatchExactly).isEmpty());
    formats->setCurrentItem(
        formats->findItems(QStringLiteral("image/png"), Qt::MatchExactly).first());
    QCOMPARE(monitor.findChild<QLabel *>(QStringLiteral("monitorImage"))->pixmap().size(),
             QSize(30, 20));
    Platform::setDesktop(nullptr);
}

QTEST_MAIN(TestClipboardMonitor)
#include "testclipboardmonitor.moc"
