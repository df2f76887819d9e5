#include "base/settings.h"
#include "history/clipping.h"
#include "history/clippingitem.h"
#include "history/historyfile.h"
#include "history/historyitemmodel.h"
#include "support/testprofile.h"
#include "synclog.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QRandomGenerator>
#include <QSettings>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTest>

using namespace Clipping;

namespace {

const QDateTime kStart(QDate(2026, 3, 1), QTime(9, 0));

// The merge rules written down the plain way: linear searches over a list. The model must
// give the same answers with its index, whatever happens to the rows.
class ReferenceHistory
{
public:
    // A clipping as the history file holds it has every field the rules look at.
    using Row = HistoryFile::Record;

    QList<Row> rows;
    int keepItems = 20;
    int ignoreLength = 3;
    int ignoreSize = 4;

    bool merge(Row row)
    {
        for (;;) {
            if (row.type == TextType &&
                (row.text.size() < ignoreLength || row.text.size() > ignoreSize * 1024))
                return false;
            int match = -1;
            for (int i = 0; i < rows.size() && match < 0; ++i) {
                if (row.type == TextType ? rows[i].brief == row.brief : rows[i].id == row.id)
                    match = i;
            }
            if (match < 0)
                break;
            if (!(rows[match].time < row.time))
                return false;
            row.html = rows[match].html;
            row.application = rows[match].application;
            if (!row.pinned)
                row.pinned = rows[match].pinned;
            row.locked = row.locked || rows[match].locked;
            rows.removeAt(match);
        }
        trim();
        int at = int(rows.size());
        for (int i = 0; i < rows.size(); ++i) {
            if ((row.pinned && !rows[i].pinned) ||
                (rows[i].pinned == row.pinned && rows[i].time < row.time)) {
                at = i;
                break;
            }
        }
        rows.insert(at, row);
        return true;
    }

    void trim()
    {
        int keep = qMax(keepItems, 0);
        if (keep == 0)
            return;
        while (rows.size() >= keep) {
            if (rows[keep - 1].locked)
                ++keep;
            else
                rows.removeAt(keep - 1);
        }
    }
};

QStandardItem *textItem(const QString &text, const QDateTime &time, bool pinned = false,
                        const QString &application = QStringLiteral("editor.exe"),
                        const QString &html = QString())
{
    QStandardItem *item = newTextItem(text, html, QPixmap(), application, time);
    item->setData(pinned, PinnedRole);
    return item;
}

QStandardItem *imageItem(const QUuid &id, const QString &label, const QDateTime &time)
{
    QStandardItem *item =
        newImageItem(QUrl(), QImage(), QPixmap(), QStringLiteral("paint.exe"), time);
    item->setData(id, IdRole);
    item->setData(label, BriefRole);
    item->setData(label, TextRole);
    return item;
}

QStringList briefs(const QAbstractItemModel &model)
{
    QStringList list;
    for (int row = 0; row < model.rowCount(); ++row)
        list.append(model.index(row, 0).data(BriefRole).toString());
    return list;
}

} // namespace

class TestHistoryItemModel final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void newerCopyMovesUpAndKeepsWhatTheOldRowHad();
    void lengthLimitsAreInclusive();
    void excludedApplicationsAndDisabledImages();
    void clearingMarksRowsAndTheProxyHidesThem();
    void thumbnailForAGoneClipping();
    void indexAgreesWithTheReferenceAfterRandomEdits_data();
    void indexAgreesWithTheReferenceAfterRandomEdits();

private:
    QStringList mergeLines();
    void setLimits(int keepItems, int ignoreLength = 3, int ignoreSize = 4);

    TestProfile m_profile;
    HistoryItemModel *m_model = nullptr;
    QDateTime m_now;
    qint64 m_logCursor = 0;
};

void TestHistoryItemModel::initTestCase()
{
    QVERIFY(m_profile.isValid());
    m_profile.useInThisProcess();
}

void TestHistoryItemModel::init()
{
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
    m_now = kStart;
    m_model = new HistoryItemModel(m_profile.path(QStringLiteral("data/History.json")));
    m_model->setClock([this] { return m_now; });
    m_logCursor = SyncLog::instance().totalAppended();
}

void TestHistoryItemModel::cleanup()
{
    delete m_model;
    m_model = nullptr;
}

QStringList TestHistoryItemModel::mergeLines()
{
    // Without the time stamp the sync log puts in front.
    QStringList lines = SyncLog::instance().linesSince(&m_logCursor);
    for (QString &line : lines)
        line = line.section(QLatin1Char(' '), 2);
    return lines;
}

void TestHistoryItemModel::setLimits(int keepItems, int ignoreLength, int ignoreSize)
{
    QSettings settings;
    settings.setValue(SettingsKey::KeepItems, QString::number(keepItems));
    settings.setValue(SettingsKey::IgnoreLength, QString::number(ignoreLength));
    settings.setValue(SettingsKey::IgnoreSize, QString::number(ignoreSize));
    m_model->reloadSettings();
}

void TestHistoryItemModel::newerCopyMovesUpAndKeepsWhatTheOldRowHad()
{
    QVERIFY(m_model->merge(textItem(QStringLiteral("hello world"), kStart, false,
                                    QStringLiteral("mail.exe"), QStringLiteral("<i>hello</i>"))));
    m_model->item(0)->setData(true, PinnedRole);
    QVERIFY(m_model->merge(textItem(QStringLiteral("pinned newer"), kStart.addSecs(5), true)));
    QVERIFY(m_model->merge(textItem(QStringLiteral("other text"), kStart.addSecs(10))));
    QCOMPARE(briefs(*m_model),
             (QStringList{QStringLiteral("pinned newer"), QStringLiteral("hello world"),
                          QStringLiteral("other text")}));
    mergeLines();

    // Equal briefs: the second copy differs only in blank lines and surrounding blanks.
    QVERIFY(m_model->merge(textItem(QStringLiteral("\n  hello\n\n  world  \n"), kStart.addSecs(20),
                                    false, QStringLiteral("editor.exe"))));
    QCOMPARE(m_model->rowCount(), 3);
    const QStandardItem *moved = m_model->item(0);
    QCOMPARE(moved->data(BriefRole).toString(), QStringLiteral("hello world"));
    QCOMPARE(moved->data(TextRole).toString(), QStringLiteral("\n  hello\n\n  world  \n"));
    QCOMPARE(moved->data(HtmlRole).toString(), QStringLiteral("<i>hello</i>"));
    QCOMPARE(moved->data(ApplicationRole).toString(), QStringLiteral("mail.exe"));
    QVERIFY(moved->data(PinnedRole).toBool());
    QCOMPARE(mergeLines().value(1),
             QStringLiteral("Merge clippings: The added item '  hello  world  ' "
                            "is newer so adding it again to the model (%1 vs %2)")
                 .arg(kStart.addSecs(20).toString(), kStart.toString()));

    // A locked clipping copied again (as pasting it does) stays locked, so no trim takes it.
    m_model->setLocked(m_model->rowCount() - 1, true);
    QVERIFY(m_model->merge(textItem(QStringLiteral("other text"), kStart.addSecs(30))));
    QCOMPARE(m_model->item(2)->data(BriefRole).toString(), QStringLiteral("other text"));
    QVERIFY(m_model->item(2)->data(LockedRole).toBool());
    setLimits(1);
    QVERIFY(m_model->merge(textItem(QStringLiteral("newest"), kStart.addSecs(40))));
    QVERIFY(briefs(*m_model).contains(QStringLiteral("other text")));
}

void TestHistoryItemModel::lengthLimitsAreInclusive()
{
    setLimits(20, 3, 4);
    QVERIFY(m_model->merge(textItem(QStringLiteral("abc"), kStart)));
    QStandardItem *small = textItem(QStringLiteral("ab"), kStart);
    QVERIFY(!m_model->merge(small));
    delete small;
    QVERIFY(m_model->merge(textItem(QString(4096, QLatin1Char('x')), kStart)));
    QStandardItem *large = textItem(QString(4097, QLatin1Char('y')), kStart);
    QVERIFY(!m_model->merge(large));
    delete large;
    QCOMPARE(m_model->rowCount(), 2);

    const QStringList lines = mergeLines();
    QVERIFY(
        lines.contains(QStringLiteral("Merge clippings: Text 'ab' too small (2 vs 3). Ignored.")));
    QVERIFY(lines.contains(QStringLiteral("Merge clippings: Text '%1' too large (4097 vs 4096). "
                                          "Ignored.")
                               .arg(QString(50, QLatin1Char('y')))));
}

void TestHistoryItemModel::excludedApplicationsAndDisabledImages()
{
    QSettings().setValue(SettingsKey::ExcludedApplications,
                         QStringList{QStringLiteral("keepass.exe")});
    QSettings().setValue(SettingsKey::IncludeImages, false);
    m_model->reloadSettings();

    QStandardItem *secret =
        textItem(QStringLiteral("hunter2 password"), kStart, false, QStringLiteral("keepass.exe"));
    QVERIFY(!m_model->merge(secret));
    delete secret;
    // Names are compared exactly.
    QVERIFY(m_model->merge(
        textItem(QStringLiteral("not secret"), kStart, false, QStringLiteral("KEEPASS.EXE"))));
    const QStringList lines = mergeLines();
    QCOMPARE(lines.constFirst(),
             QStringLiteral("Merge clippings: Clipping 'hunter2 password' comes from "
                            "excluded application: 'keepass.exe' -> ignored"));
    QCOMPARE(m_model->rowCount(), 1);

    QStandardItem *image = imageItem(QUuid::createUuid(), QStringLiteral("shot.png"), kStart);
    QVERIFY(!m_model->merge(image));
    delete image;
    QCOMPARE(mergeLines(),
             QStringList(QStringLiteral(
                 "Merge clippings: Adding images 'shot.png' to history is disabled.")));
}

void TestHistoryItemModel::clearingMarksRowsAndTheProxyHidesThem()
{
    QAbstractItemModelTester tester(m_model->proxy());
    const QUuid imageId = QUuid::createUuid();
    QVERIFY(QDir().mkpath(imageFolder(imageId)));
    QVERIFY(m_model->merge(imageItem(imageId, QStringLiteral("shot.png"), kStart.addSecs(-1))));
    for (int i = 0; i < 4; ++i)
        QVERIFY(m_model->merge(textItem(QStringLiteral("text %1").arg(i), kStart.addSecs(i), false,
                                        QStringLiteral("editor.exe"),
                                        QStringLiteral("<b>text %1</b>").arg(i))));
    m_model->item(0)->setData(true, PinnedRole);
    m_model->setLocked(2, true);
    m_model->finishSaves();
    // Another computer that has these clippings through sync.
    HistoryItemModel other(m_profile.path(QStringLiteral("other/History.json")));
    QVERIFY(other.deserialize(m_model->serialize()) == 5);
    const QDateTime lockTime = m_now;
    m_now = kStart.addSecs(3600);
    m_model->clearHistory();
    m_model->save(false);
    m_model->finishSaves();

    QCOMPARE(m_model->rowCount(), 5);
    QCOMPARE(m_model->proxy()->rowCount(), 1);
    const QModelIndex kept = m_model->proxy()->index(0, 0);
    QCOMPARE(kept.data(BriefRole).toString(), QStringLiteral("text 1"));
    QCOMPARE(kept.data(TimeRole).toDateTime(), lockTime);
    for (int row : {0, 1, 3, 4}) {
        const QStandardItem *cleared = m_model->item(row);
        QVERIFY(cleared->data(RemovedRole).toBool());
        QVERIFY(!cleared->data(PinnedRole).toBool());
        QCOMPARE(cleared->data(TimeRole).toDateTime(), m_now);
        QVERIFY(!cleared->data(IdRole).toUuid().isNull());
        for (int role : {int(BriefRole), int(TextRole), int(HtmlRole), int(FilenameRole)})
            QVERIFY2(cleared->data(role).toString().isEmpty(), qPrintable(QString::number(role)));
    }
    QVERIFY(m_model->indexIsConsistent());
    // Nothing of the cleared clippings is left on disk.
    QVERIFY(!QDir(imageFolder(imageId)).exists());
    QFile file(m_model->filePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray saved = file.readAll();
    for (const char *gone : {"text 0", "text 2", "text 3", "shot.png"})
        QVERIFY2(!saved.contains(gone), gone);
    QVERIFY(saved.contains("text 1"));

    // The clearing reaches the other computer, and reads back as it was written. A load tells
    // its decisions in one line, not one per clipping.
    mergeLines();
    QVERIFY(other.deserialize(saved) >= 0);
    QCOMPARE(mergeLines(), QStringList(QStringLiteral("Merge clippings: Loaded 4 of 5 clippings "
                                                      "from the file: 4 added, 4 of them "
                                                      "replacing an older copy, 1 already "
                                                      "there")));
    QCOMPARE(briefs(*other.proxy()), QStringList{QStringLiteral("text 1")});
    HistoryItemModel reread(m_profile.path(QStringLiteral("reread/History.json")));
    QCOMPARE(reread.deserialize(saved), 5);
    QCOMPARE(briefs(*reread.proxy()), QStringList{QStringLiteral("text 1")});
}

void TestHistoryItemModel::thumbnailForAGoneClipping()
{
    QTest::ignoreMessage(QtWarningMsg, "Unable to find the item for thumbnail");
    m_model->setThumbnail(QImage(160, 120, QImage::Format_RGB32), QUuid::createUuid());
}

void TestHistoryItemModel::indexAgreesWithTheReferenceAfterRandomEdits_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("keepItems");
    QTest::newRow("short history") << 7u << 12;
    QTest::newRow("long history") << 11u << 400;
    QTest::newRow("no limit") << 23u << 0;
}

void TestHistoryItemModel::indexAgreesWithTheReferenceAfterRandomEdits()
{
    QFETCH(quint32, seed);
    QFETCH(int, keepItems);
    QAbstractItemModelTester tester(m_model);
    QRandomGenerator random(seed);
    ReferenceHistory reference;
    reference.keepItems = keepItems;
    setLimits(keepItems);
    QList<QUuid> imageIds{QUuid()};
    for (int i = 0; i < 8; ++i)
        imageIds.append(QUuid::createUuid());

    auto mergeBoth = [&](QStandardItem *item) {
        ReferenceHistory::Row row;
        row.type = item->data(TypeRole).toInt();
        row.brief = item->data(BriefRole).toString();
        row.text = item->data(TextRole).toString();
        row.id = item->data(IdRole).toUuid();
        row.time = item->data(TimeRole).toDateTime();
        row.pinned = item->data(PinnedRole).toBool();
        row.application = item->data(ApplicationRole).toString();
        const bool expected = reference.merge(row);
        const bool accepted = m_model->merge(item);
        if (!accepted)
            delete item;
        return expected == accepted;
    };

    for (int step = 0; step < 3000; ++step) {
        m_now = m_now.addSecs(random.bounded(3)); // ties happen
        const int rows = m_model->rowCount();
        const int pick = rows > 0 ? random.bounded(rows) : 0;
        const int what = random.bounded(100);
        QString text = QStringLiteral("word %1").arg(random.bounded(keepItems > 100 ? 600 : 40));
        if (random.bounded(4) == 0)
            text = QStringLiteral("\n  ") + text + QStringLiteral("  \n\n"); // same brief
        if (what < 45) {
            QVERIFY2(mergeBoth(textItem(text, m_now, random.bounded(8) == 0)), "copy");
        } else if (what < 55) {
            // A copy from another computer, possibly older than what is here.
            const QDateTime past = m_now.addSecs(-random.bounded(200));
            QVERIFY2(mergeBoth(textItem(text, past, random.bounded(5) == 0)), "synced copy");
        } else if (what < 65) {
            const QUuid id = imageIds.at(random.bounded(imageIds.size()));
            QVERIFY2(mergeBoth(imageItem(id, QStringLiteral("word 3"), m_now)), "image");
        } else if (what < 75 && rows > 0) {
            const bool pinned = !reference.rows[pick].pinned;
            reference.rows[pick].pinned = pinned;
            m_model->item(pick)->setData(pinned, PinnedRole);
        } else if (what < 83 && rows > 0) {
            const bool locked = !reference.rows[pick].locked;
            reference.rows[pick].locked = locked;
            reference.rows[pick].time = m_now;
            m_model->setLocked(pick, locked);
        } else if (what < 92 && rows > 0) {
            reference.rows.removeAt(pick);
            m_model->removeClipping(pick);
        } else if (what < 94) {
            for (ReferenceHistory::Row &row : reference.rows) {
                if (!row.locked) {
                    // Newer than the copy it ends; nothing of the content is left.
                    row.time = m_now > row.time ? m_now : row.time.addSecs(1);
                    row.pinned = row.locked = false;
                    row.removed = true;
                    row.brief = row.text = row.html = row.filename = QString();
                }
            }
            m_model->clearHistory();
        } else if (what < 96) {
            reference.trim();
            m_model->trim();
        } else if (what < 98 && rows > 0) {
            // Nothing in the program changes an id in place, but the index must follow anyone.
            const QUuid id = imageIds.at(random.bounded(imageIds.size()));
            reference.rows[pick].id = id;
            m_model->item(pick)->setData(id, IdRole);
        }

        QCOMPARE(m_model->rowCount(), reference.rows.size());
        for (int row = 0; row < m_model->rowCount(); ++row) {
            const QStandardItem *item = m_model->item(row);
            const ReferenceHistory::Row &expected = reference.rows.at(row);
            QCOMPARE(item->data(BriefRole).toString(), expected.brief);
            QCOMPARE(item->data(IdRole).toUuid(), expected.id);
            QCOMPARE(item->data(TimeRole).toDateTime(), expected.time);
            QCOMPARE(item->data(PinnedRole).toBool(), expected.pinned);
            QCOMPARE(item->data(ApplicationRole).toString(), expected.application);
        }
        QVERIFY2(m_model->indexIsConsistent(), qPrintable(QString::number(step)));
    }
    m_model->finishSaves();
}

QTEST_MAIN(TestHistoryItemModel)
#include "testhistoryitemmodel.moc"
