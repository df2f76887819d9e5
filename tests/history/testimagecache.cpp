#include "base/settings.h"
#include "history/cleancache.h"
#include "history/clipping.h"
#include "history/copytocache.h"
#include "history/historyitemmodel.h"
#include "history/makethumbnail.h"
#include "support/testprofile.h"

#include <QBuffer>
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

QByteArray encoded(const QImage &image, const char *format = "PNG")
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, 0); // an unusual quality, to see the bytes are kept
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
    void previewsShowTheWholeImage_data();
    void previewsShowTheWholeImage();
    void copyToCacheWritesWhatItIsGiven();
    void cleaningDeletesOnlyFoldersNobodyOwns();
    void anAddedImageGetsItsFileAndThumbnail_data();
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

void TestImageCache::copyToCacheWritesWhatItIsGiven()
{
    const QImage image = bands(64, 48, 10, 40);
    const QByteArray bytes = encoded(image);
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

void TestImageCache::anAddedImageGetsItsFileAndThumbnail_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QString>("fileName");
    QTest::newRow("PNG kept") << QByteArray("PNG") << QStringLiteral("app.exe-400x300.png");
    QTest::newRow("JPEG kept") << QByteArray("JPEG") << QStringLiteral("app.exe-400x300.jpg");
    QTest::newRow("other encoded") << QByteArray("BMP") << QStringLiteral("app.exe-400x300.png");
}

void TestImageCache::anAddedImageGetsItsFileAndThumbnail()
{
    QFETCH(QByteArray, format);
    QFETCH(QString, fileName);
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
    HistoryItemModel model(m_profile.path(QStringLiteral("data/History.json")));
    const QImage image = bands(400, 300, 100, 300);
    const QByteArray bytes = encoded(image, format);
    QVERIFY(model.addImage(QUrl(), image, QPixmap(), QStringLiteral("app.exe"),
                           QDateTime::currentDateTime(), bytes));
    const QStandardItem *clipping = model.item(0);
    QCOMPARE(clipping->data(FilenameRole).toString(), fileName);
    QVERIFY(showsAllBands(clipping->data(ThumbnailRole).value<QImage>(), QSize(160, 120)));
    const QString file = imageFolder(clipping->data(IdRole).toUuid()) + u'/' + fileName;
    if (format == "BMP")
        QTRY_VERIFY(readFile(file).startsWith("\x89PNG"));
    else
        QTRY_COMPARE(readFile(file), bytes);
    model.finishSaves();
}

QTEST_MAIN(TestImageCache)
#include "testimagecache.moc"
