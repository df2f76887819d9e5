#include "base/settings.h"
#include "history/cleancache.h"
#include "history/clipping.h"
#include "history/copytocache.h"
#include "history/historyitemmodel.h"
#include "history/makethumbnail.h"
#include "support/testprofile.h"

#include <QDir>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

using namespace Clipping;

namespace {

// Three bands along the long side, so that what the thumbnail shows is seen in its colours.
QImage bands(int width, int height, int firstEnd, int middleEnd)
{
    QImage image(width, height, QImage::Format_RGB32);
    const bool across = width > height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int at = across ? x : y;
            image.setPixelColor(x, y,
                                at < firstEnd    ? Qt::red
                                : at < middleEnd ? Qt::green
                                                 : Qt::blue);
        }
    }
    return image;
}

// The whole image, scaled: red at the start of the long side, blue at its end.
bool showsAllBands(const QImage &thumbnail, const QSize &size)
{
    const bool across = thumbnail.width() > thumbnail.height();
    const QPoint end = across ? QPoint(thumbnail.width() - 1, thumbnail.height() / 2)
                              : QPoint(thumbnail.width() / 2, thumbnail.height() - 1);
    return thumbnail.size() == size && thumbnail.pixelColor(0, 0) == QColor(Qt::red) &&
           thumbnail.pixelColor(end) == QColor(Qt::blue) &&
           thumbnail.pixelColor(thumbnail.rect().center()) == QColor(Qt::green);
}

void runTask(QRunnable *task)
{
    QThreadPool::globalInstance()->start(task);
    QThreadPool::globalInstance()->waitForDone();
}

} // namespace

class TestImageCache final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void previewsShowTheWholeImage_data();
    void previewsShowTheWholeImage();
    void cleaningDeletesOnlyFoldersNobodyOwns();

private:
    TestProfile m_profile;
};

void TestImageCache::initTestCase()
{
    QVERIFY(m_profile.isValid());
    m_profile.useInThisProcess();
}

void TestImageCache::init()
{
    QDir(imagesRoot()).removeRecursively();
}

void TestImageCache::previewsShowTheWholeImage_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("wide") << bands(1000, 500, 167, 833) << QSize(160, 80)
                          << R"(width="400" height="200"><br>wide<br>1000 × 500 pixels)";
    QTest::newRow("tall") << bands(300, 400, 87, 312) << QSize(90, 120)
                          << R"(width="225" height="300"><br>tall<br>300 × 400 pixels)";
    // Neither is enlarged.
    QTest::newRow("small") << bands(40, 30, 10, 30) << QSize(160, 120)
                           << R"(width="40" height="30"><br>small<br>40 × 30 pixels)";
}

void TestImageCache::previewsShowTheWholeImage()
{
    QFETCH(QImage, image);
    QFETCH(QSize, size);
    QFETCH(QString, toolTip);
    QVERIFY(showsAllBands(MakeThumbnail::thumbnailOf(image), size));

    const QString file = imageFile(QUuid(), QStringLiteral("tip.png"));
    QDir().mkpath(imageFolder(QUuid()));
    QVERIFY(image.save(file));
    const QString shown = imageToolTip(file, QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY2(shown.contains(toolTip), qPrintable(shown));
    QVERIFY(shown.startsWith(QStringLiteral("<img src=\"file://")));
}

void TestImageCache::cleaningDeletesOnlyFoldersNobodyOwns()
{
    const QString kept = idFolderName(QUuid::createUuid());
    const QString orphan = idFolderName(QUuid::createUuid());
    QDir root(imagesRoot());
    QVERIFY(root.mkpath(kept) && root.mkpath(orphan + QStringLiteral("/deep")));
    QFile stray(root.filePath(QStringLiteral("stray.txt")));
    QVERIFY(stray.open(QIODevice::WriteOnly));
    stray.close();

    runTask(new CleanCache({kept, idFolderName(QUuid::createUuid())}));
    QVERIFY(root.exists(kept));
    QVERIFY(!root.exists(orphan));
    QVERIFY(root.exists(QStringLiteral("stray.txt")));
}

QTEST_MAIN(TestImageCache)
#include "testimagecache.moc"
