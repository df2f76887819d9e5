// Text in image clippings read by Tesseract: a rendered line of text comes back as a new
// clipping, and a missing or slow Tesseract is reported instead of hanging.
#include "base/settings.h"
#include "history/clipping.h"
#include "history/historyitemmodel.h"
#include "maintenance/textextractor.h"
#include "support/testprofile.h"
#include "ui/history/historyitemview.h"

#include <QApplication>
#include <QFileInfo>
#include <QPainter>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

namespace {

QImage renderedText(const QString &text)
{
    QImage image(900, 160, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(64);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(image.rect(), Qt::AlignCenter, text);
    return image;
}

} // namespace

class TestTextExtractor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void imageClippingTextBecomesANewClipping();
    void missingOrSlowTesseractIsReported();

private:
    TestProfile m_profile;
};

void TestTextExtractor::initTestCase()
{
    m_profile.useInThisProcess();
    QSettings settings;
    Settings::writeDefaults(settings);
}

void TestTextExtractor::imageClippingTextBecomesANewClipping()
{
    if (TextExtractor::program().isEmpty())
        QSKIP("tesseract is not installed (scripts/install-deps.sh installs it)");
    HistoryItemModel history(m_profile.path(QStringLiteral("data/History.json")));
    QVERIFY(history.addImage(QUrl(), renderedText(QStringLiteral("VELMORIN 2026")), QPixmap(),
                             QStringLiteral("paint.exe"), QDateTime::currentDateTime()));
    const QStandardItem *clipping = history.item(0);
    QTRY_VERIFY(QFileInfo::exists(Clipping::imageFolder(clipping->data(Clipping::IdRole).toUuid()) +
                                  QLatin1Char('/') +
                                  clipping->data(Clipping::FilenameRole).toString()));

    HistoryItemView view;
    view.setModels(&history, nullptr);
    QSignalSpy added(&view, &HistoryItemView::addItem);
    view.extractText(view.model()->index(0, 0));
    QVERIFY(added.wait(30000));
    QCOMPARE(added.first().first().toString(), QStringLiteral("VELMORIN 2026"));
    history.finishSaves();
}

void TestTextExtractor::missingOrSlowTesseractIsReported()
{
    TextExtractor extractor;
    QSignalSpy failed(&extractor, &TextExtractor::failed);
    if (!TextExtractor::program().isEmpty()) {
        extractor.setTimeoutMs(1);
        extractor.extract(QStringLiteral("/no/such/image.png"));
        QVERIFY(failed.wait(10000));
        QVERIFY(failed.takeFirst().first().toString().contains(QLatin1String("too long")));
        extractor.setTimeoutMs(TextExtractor::DefaultTimeoutMs);
        extractor.extract(QStringLiteral("/no/such/image.png"));
        QVERIFY(failed.wait(10000));
        QVERIFY(failed.takeFirst().first().toString().startsWith(QLatin1String("Tesseract")));
    }
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    QVERIFY(TextExtractor::program().isEmpty());
    extractor.extract(QStringLiteral("/no/such/image.png"));
    qputenv("PATH", path);
    QVERIFY(failed.wait());
    QCOMPARE(failed.first().first().toString(), TextExtractor::installHint());
    QVERIFY(TextExtractor::installHint().contains(QLatin1String("apt install tesseract-ocr")));
}

QTEST_MAIN(TestTextExtractor)
#include "testtextextractor.moc"
