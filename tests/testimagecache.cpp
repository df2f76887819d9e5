#include "cleancache.h"
#include "clipping.h"
#include "copytocache.h"
#include "historyitemmodel.h"
#include "makethumbnail.h"
#include "settings.h"
#include "support/testprofile.h"

#include <QBuffer>
#include <QDir>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

using namespace Clipping;

namespace {

// Three bands along the long side, so the crop shows in the thumbnail's colours.
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

bool allGreen(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != QColor(Qt::green))
                return false;
        }
    }
    return true;
}

QByteArray png(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG", 0); // an unusual compression level, to see the bytes are kept
    return bytes;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
    void thumbnailsShowTheCentreInFourToThree();
    void copyToCacheWritesWhatItIsGiven();
    void thumbnailsComeFromTheCacheOrNotAtAll();
    void cleaningDeletesOnlyFoldersNobodyOwns();
    void anAddedImageGetsItsFileAndThumbnail();

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

void TestImageCache::thumbnailsShowTheCentreInFourToThree()
{
    QCOMPARE(MakeThumbnail::cropRect(1000, 500), QRect(167, 0, 666, 500));
    QCOMPARE(MakeThumbnail::cropRect(300, 400), QRect(0, 87, 300, 225));
    QCOMPARE(MakeThumbnail::cropRect(160, 120), QRect(0, 0, 160, 120));

    const QImage wide = MakeThumbnail::thumbnailOf(bands(1000, 500, 167, 833));
    QCOMPARE(wide.size(), QSize(160, 120));
    QVERIFY(allGreen(wide));
    const QImage tall = MakeThumbnail::thumbnailOf(bands(300, 400, 87, 312));
    QCOMPARE(tall.size(), QSize(160, 120));
    QVERIFY(allGreen(tall));
}

void TestImageCache::copyToCacheWritesWhatItIsGiven()
{
    const QImage image = bands(64, 48, 10, 40);
    const QByteArray bytes = png(image);
    const QUuid id = QUuid::createUuid();
    auto *fromClipboard = new CopyToCache(QImage(), bytes, id, QStringLiteral("a.png"), QUrl());
    QSignalSpy done(fromClipboard, &CopyToCache::done);
    runTask(fromClipboard);
    QTRY_COMPARE(done.size(), 1);
    QCOMPARE(readFile(imageFolder(id) + QStringLiteral("/a.png")), bytes);

    // Encoded by the suffix; a null id puts the file straight into the cache folder.
    runTask(new CopyToCache(image, QByteArray(), QUuid(), QStringLiteral("b.jpg"), QUrl()));
    QVERIFY(readFile(imagesRoot() + QStringLiteral("/b.jpg")).startsWith("\xFF\xD8"));

    // A copied file is copied, and an existing target is not overwritten.
    const QString source = m_profile.path(QStringLiteral("PHOTO.JPG"));
    QFile sourceFile(source);
    QVERIFY(sourceFile.open(QIODevice::WriteOnly));
    sourceFile.write("new photo");
    sourceFile.close();
    const QUuid fileId = QUuid::createUuid();
    runTask(new CopyToCache(QImage(), QByteArray(), fileId, QStringLiteral("PHOTO.JPG"),
                            QUrl::fromLocalFile(source)));
    QCOMPARE(readFile(imageFolder(fileId) + QStringLiteral("/PHOTO.JPG")), QByteArray("new photo"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Failed to copy")));
    runTask(new CopyToCache(QImage(), QByteArray(), fileId, QStringLiteral("PHOTO.JPG"),
                            QUrl::fromLocalFile(m_profile.path(QStringLiteral("missing.png")))));
}

void TestImageCache::thumbnailsComeFromTheCacheOrNotAtAll()
{
    const QUuid id = QUuid::createUuid();
    QVERIFY(QDir().mkpath(imageFolder(id)));
    QVERIFY(bands(1000, 500, 167, 833).save(imageFolder(id) + QStringLiteral("/wide.png")));
    auto *task = new MakeThumbnail(id, QStringLiteral("wide.png"));
    QSignalSpy thumbnails(task, &MakeThumbnail::thumbnail);
    runTask(task);
    QTRY_COMPARE(thumbnails.size(), 1);
    QVERIFY(allGreen(thumbnails.at(0).at(0).value<QImage>()));
    QCOMPARE(thumbnails.at(0).at(1).toUuid(), id);

    auto *missing = new MakeThumbnail(id, QStringLiteral("gone.png"));
    QSignalSpy none(missing, &MakeThumbnail::thumbnail);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Failed to load image")));
    runTask(missing);
    QCoreApplication::processEvents();
    QCOMPARE(none.size(), 0);
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

void TestImageCache::anAddedImageGetsItsFileAndThumbnail()
{
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
    HistoryItemModel model(m_profile.path(QStringLiteral("data/History.json")));
    const QImage image = bands(400, 300, 0, 400);
    const QByteArray bytes = png(image);
    QVERIFY(model.addImage(QUrl(), image, QPixmap(), QStringLiteral("app.exe"),
                           QDateTime::currentDateTime(), bytes));
    const QStandardItem *clipping = model.item(0);
    QCOMPARE(clipping->data(FilenameRole).toString(), QStringLiteral("app.exe-400x300.png"));
    QTRY_VERIFY(!clipping->data(ThumbnailRole).value<QImage>().isNull());
    QVERIFY(allGreen(clipping->data(ThumbnailRole).value<QImage>()));
    const QString file =
        imageFolder(clipping->data(IdRole).toUuid()) + QStringLiteral("/app.exe-400x300.png");
    QCOMPARE(readFile(file), bytes);
    model.finishSaves();
}

QTEST_MAIN(TestImageCache)
#include "testimagecache.moc"
