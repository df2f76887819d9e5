#include "base/appmodes.h"
#include "base/settings.h"
#include "history/clipping.h"
#include "history/historyfile.h"
#include "history/historyitemmodel.h"
#include "support/testprofile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

using namespace Clipping;

namespace {

const QDateTime kStart(QDate(2026, 5, 4), QTime(8, 30, 15));

QPixmap filledIcon(const QColor &colour)
{
    QPixmap icon(16, 16);
    icon.fill(colour);
    return icon;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

QByteArray documentWith(const QJsonArray &clippings, const QJsonValue &version = 8,
                        const QJsonValue &magic = -18022398)
{
    QJsonObject root{{QStringLiteral("clippings"), clippings}};
    if (!version.isUndefined())
        root.insert(QStringLiteral("version"), version);
    if (!magic.isUndefined())
        root.insert(QStringLiteral("magic"), magic);
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

QJsonObject textClipping(const QString &text, const QDateTime &time)
{
    return {{QStringLiteral("type"), 0},
            {QStringLiteral("brief"), text},
            {QStringLiteral("text"), text},
            {QStringLiteral("html"), QString()},
            {QStringLiteral("time"), time.toString(Qt::ISODate)},
            {QStringLiteral("id"), QUuid::createUuid().toString()},
            {QStringLiteral("application"), QStringLiteral("editor.exe")}};
}

// The document built through QJsonObject and QJsonDocument::Compact, which sorts the keys.
QByteArray encodedByQt(const HistoryFile::Document &document)
{
    QJsonArray clippings;
    for (const HistoryFile::Record &record : document.records) {
        QJsonObject clipping{{QStringLiteral("type"), record.type},
                             {QStringLiteral("brief"), record.brief},
                             {QStringLiteral("text"), record.text},
                             {QStringLiteral("html"), record.html},
                             {QStringLiteral("time"), record.time.toString(Qt::ISODate)},
                             {QStringLiteral("id"), record.id.toString(QUuid::WithBraces)},
                             {QStringLiteral("removed"), record.removed},
                             {QStringLiteral("pinned"), record.pinned},
                             {QStringLiteral("locked"), record.locked},
                             {QStringLiteral("application"), record.application}};
        if (!record.filename.isEmpty())
            clipping.insert(QStringLiteral("filename"), record.filename);
        clippings.append(clipping);
    }
    QJsonObject icons;
    for (auto icon = document.icons.constBegin(); icon != document.icons.constEnd(); ++icon)
        icons.insert(icon.key(), QString::fromLatin1(icon.value().toBase64()));
    const QJsonObject root{{QStringLiteral("version"), 8},
                           {QStringLiteral("magic"), -18022398},
                           {QStringLiteral("clippings"), clippings},
                           {QStringLiteral("icons"), icons}};
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

} // namespace

class TestHistoryFile final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void roundTripIsByteForByte();
    void encoderWritesWhatQJsonDocumentWrites();
    void refusedDocumentsLeaveTheFileAlone_data();
    void refusedDocumentsLeaveTheFileAlone();
    void hostileClippingsLoadWithoutHarm();
    void anInterruptedSaveIsRecovered();
    void failedSavesSayWhatFailed();
    void syncMergeUnitesTwoHistories();

private:
    HistoryItemModel *newModel();

    TestProfile m_profile;
    QString m_path;
    QList<HistoryItemModel *> m_models;
};

void TestHistoryFile::initTestCase()
{
    QVERIFY(m_profile.isValid());
    m_profile.useInThisProcess();
    m_path = m_profile.path(QStringLiteral("data/Velmorin/History.json"));
}

void TestHistoryFile::init()
{
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
    settings.setValue(SettingsKey::HistoryFilePath, m_path);
    QDir(m_profile.path(QStringLiteral("data"))).removeRecursively();
}

void TestHistoryFile::cleanup()
{
    qDeleteAll(m_models);
    m_models.clear();
}

HistoryItemModel *TestHistoryFile::newModel()
{
    auto *model = new HistoryItemModel(m_path);
    model->setClock([] { return kStart; });
    m_models.append(model);
    return model;
}

void TestHistoryFile::roundTripIsByteForByte()
{
    HistoryItemModel *model = newModel();
    QStandardItem *rich = newTextItem(QStringLiteral("Rich text"), QStringLiteral("<b>Rich</b>"),
                                      filledIcon(Qt::red), QStringLiteral("word.exe"), kStart);
    QVERIFY(model->merge(rich));
    QStandardItem *plain =
        newTextItem(QStringLiteral("Plain: ünïcödé ✓ \"quoted\""), QString(), filledIcon(Qt::blue),
                    QStringLiteral("word.exe"), kStart.addSecs(10));
    plain->setData(true, PinnedRole);
    QVERIFY(model->merge(plain));
    QStandardItem *image =
        newImageItem(QUrl(), QImage(640, 480, QImage::Format_RGB32), filledIcon(Qt::green),
                     QStringLiteral("paint.exe"), kStart.addSecs(20));
    image->setData(true, LockedRole);
    QVERIFY(model->merge(image));
    QStandardItem *removed =
        newTextItem(QStringLiteral("gone"), QString(), QPixmap(), QString(), kStart.addSecs(30));
    removed->setData(true, RemovedRole);
    QVERIFY(model->merge(removed));

    const QByteArray bytes = model->serialize();
    QVERIFY(bytes.startsWith("{\"clippings\":[{"));
    QVERIFY(!bytes.contains('\n'));
    QVERIFY(bytes.endsWith(",\"magic\":-18022398,\"version\":8}"));

    const QJsonObject root = QJsonDocument::fromJson(bytes).object();
    const QJsonArray clippings = root.value(QStringLiteral("clippings")).toArray();
    QCOMPARE(clippings.size(), 4);
    // Each application's icon once; the application without an icon has none.
    QCOMPARE(root.value(QStringLiteral("icons")).toObject().keys(),
             (QStringList{QStringLiteral("paint.exe"), QStringLiteral("word.exe")}));
    const QRegularExpression bracedId(
        QStringLiteral("^\\{[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}\\}$"));
    for (const QJsonValue &value : clippings) {
        const QJsonObject clipping = value.toObject();
        QVERIFY(bracedId.match(clipping.value(QStringLiteral("id")).toString()).hasMatch());
        const bool isImageClipping = clipping.value(QStringLiteral("type")).toInt() == 1;
        QCOMPARE(clipping.contains(QStringLiteral("filename")), isImageClipping);
    }
    QCOMPARE(clippings.at(0).toObject().value(QStringLiteral("time")).toString(),
             QStringLiteral("2026-05-04T08:30:25"));

    HistoryItemModel *reloaded = newModel();
    QCOMPARE(reloaded->deserialize(bytes), 4);
    QCOMPARE(reloaded->serialize(), bytes);
    QCOMPARE(reloaded->item(0)->data(IconRole).value<QPixmap>().toImage().pixelColor(3, 3),
             QColor(Qt::blue));

    // Through the file as well: what load() reads, save() writes back unchanged.
    writeFile(m_path, bytes);
    HistoryItemModel *loaded = newModel();
    loaded->load();
    loaded->save(false);
    loaded->finishSaves();
    QCOMPARE(readFile(m_path), bytes);
    QVERIFY(!QFile::exists(HistoryFile::temporaryPath(m_path)));

    // The next save copies what did not change from the file; when another program wrote the
    // file meanwhile, it is written whole instead.
    QVERIFY(loaded->addText(QStringLiteral("one more"), QString(), QPixmap(), QString()));
    loaded->finishSaves();
    QCOMPARE(readFile(m_path), loaded->serialize());
    writeFile(m_path, "{}");
    QVERIFY(loaded->addText(QStringLiteral("and another"), QString(), QPixmap(), QString()));
    loaded->finishSaves();
    QCOMPARE(readFile(m_path), loaded->serialize());
}

void TestHistoryFile::encoderWritesWhatQJsonDocumentWrites()
{
    // Texts with everything JSON escapes or encodes: quotes, backslashes, every control
    // character, DEL, accents, characters outside the BMP, and broken surrogate pairs.
    QRandomGenerator random(2026);
    const QList<char16_t> alphabet{u'a', u'"',   u'\\',  u'/',   0x7f, u'é',
                                   u'€', 0xd83d, 0xde00, 0xfffd, u' ', 0xfeff};
    auto randomText = [&] {
        QString text;
        const int length = random.bounded(24);
        for (int i = 0; i < length; ++i) {
            const int pick = random.bounded(alphabet.size() + 32);
            text.append(QChar(pick < 32 ? char16_t(pick) : alphabet.at(pick - 32)));
        }
        return text;
    };
    HistoryFile::Document document;
    for (int i = 0; i < 500; ++i) {
        HistoryFile::Record record;
        record.type = random.bounded(4) - 1;
        record.text = randomText();
        record.brief = randomText();
        record.html = i % 3 ? QString() : randomText();
        record.application = randomText();
        record.filename = i % 2 ? QString() : randomText();
        record.time = kStart.addSecs(random.bounded(100000));
        record.id = i % 7 ? QUuid::createUuid() : QUuid();
        record.pinned = random.bounded(2);
        record.locked = random.bounded(2);
        record.removed = random.bounded(2);
        document.records.append(record);
        if (i % 50 == 0)
            document.icons.insert(randomText(), QByteArray::number(i));
    }
    QCOMPARE(HistoryFile::encode(document), encodedByQt(document));
    QCOMPARE(HistoryFile::encode({}), encodedByQt({}));

    // A save copies the records that kept their revision from the file the last save wrote,
    // those named by their revision alone too: each save still writes exactly the document's
    // encoding, whatever changed in it (records of the same revision twice too). When another
    // program wrote the file in between, those cannot be copied and nothing is written; the
    // whole document then is.
    quint64 revision = 0;
    for (HistoryFile::Record &record : document.records)
        record.revision = ++revision;
    HistoryFile::Layout layout;
    quint64 saved = 0;
    const auto save = [&] {
        HistoryFile::Document handed = document;
        handed.records.clear();
        for (const HistoryFile::Record &record : document.records) {
            handed.order.append(record.revision <= saved ? -qint64(record.revision)
                                                         : handed.records.size());
            if (record.revision > saved)
                handed.records.append(record);
        }
        return HistoryFile::save(m_path, handed, &layout);
    };
    const auto savedAsEncoded = [&] {
        if (save() != HistoryFile::WriteResult::Written ||
            readFile(m_path) != encodedByQt(document))
            return false;
        saved = revision;
        return true;
    };
    QVERIFY(savedAsEncoded());
    for (int round = 0; round < 4; ++round) {
        for (qsizetype i = round; i < document.records.size(); i += 10) {
            HistoryFile::Record &record = document.records[i];
            record.revision = ++revision;
            if (i % 3 == 0)
                record.pinned = !record.pinned;
            else if (i % 3 == 1)
                record.text += QLatin1Char('!');
            else
                record.time = record.time.addSecs(1);
        }
        document.records.removeAt(3 + round);
        document.records.insert(1, document.records.last());
        document.records.move(5, 40);
        QByteArray other = readFile(m_path);
        const QDateTime modified = QFileInfo(m_path).lastModified();
        if (round == 1) {
            writeFile(m_path, other.left(other.size() / 2));
        } else if (round == 2 || round == 3) {
            // Of the same size: records that look whole but hold other times, or blanks.
            if (round == 2)
                other.replace("\"time\":\"2", "\"time\":\"1");
            else
                other.fill(' ');
            writeFile(m_path, other);
            QFile file(m_path);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(round == 2 ? modified.addSecs(2) : modified,
                                     QFileDevice::FileModificationTime));
        }
        if (round > 0) {
            const QByteArray before = readFile(m_path);
            QCOMPARE(save(), HistoryFile::WriteResult::NeedsContent);
            QCOMPARE(readFile(m_path), before);
            saved = 0;
        }
        QVERIFY2(savedAsEncoded(), qPrintable(QString::number(round)));
    }
    // Copied, not encoded again: a text changed behind its revision's back stays as written.
    document.records[7].text = QStringLiteral("changed behind the revision");
    saved = 0;
    QCOMPARE(save(), HistoryFile::WriteResult::Written);
    QVERIFY(!readFile(m_path).contains("changed behind the revision"));
}

void TestHistoryFile::refusedDocumentsLeaveTheFileAlone_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("logged");
    const QJsonArray one{textClipping(QStringLiteral("kept text"), kStart)};
    QTest::newRow("not JSON") << QByteArray("{\"clippings\": [") << "Parsing JSON document failed.";
    QTest::newRow("newer version")
        << documentWith(one, 9)
        << "The history file has version 9 but the application expects version 8";
    QTest::newRow("no magic") << documentWith(one, 8, QJsonValue::Undefined)
                              << "The history file has unknown magic number 0";
    QTest::newRow("wrong magic") << documentWith(one, 8, qint64(0xFEED0001))
                                 << "The history file has unknown magic number 4276944897";
}

void TestHistoryFile::refusedDocumentsLeaveTheFileAlone()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, logged);
    writeFile(m_path, bytes);
    HistoryItemModel *model = newModel();
    QSignalSpy warnings(model, &HistoryItemModel::warning);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(logged));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Kept a copy")));
    model->load();

    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(readFile(m_path), bytes);
    // The next save replaces the file, so a copy keeps what the user had, and the user is
    // told where.
    const QStringList copies =
        QDir(QFileInfo(m_path).path()).entryList({QStringLiteral("History.json.unreadable-*")});
    QCOMPARE(copies.size(), 1);
    const QString copy = QFileInfo(m_path).path() + QLatin1Char('/') + copies.at(0);
    QCOMPARE(readFile(copy), bytes);
    QCOMPARE(warnings.size(), 1);
    const QString warning = warnings.at(0).at(0).toString();
    QVERIFY(warning.startsWith(QStringLiteral("Failed to parse the clippings file: ") + m_path));
    QVERIFY2(warning.contains(copy), qPrintable(warning));
}

void TestHistoryFile::hostileClippingsLoadWithoutHarm()
{
    QJsonObject wrongTypes{{QStringLiteral("type"), QStringLiteral("zero")},
                           {QStringLiteral("text"), 42},
                           {QStringLiteral("brief"), QJsonArray{1, 2}},
                           {QStringLiteral("time"), true},
                           {QStringLiteral("pinned"), QStringLiteral("yes")}};
    const QString huge(3 * 1024 * 1024, QLatin1Char('h'));
    QJsonObject hugeText = textClipping(huge, kStart);
    QJsonObject unknownType = textClipping(QStringLiteral("from the future"), kStart);
    unknownType.insert(QStringLiteral("type"), 77);
    QJsonObject noId1{{QStringLiteral("type"), 1},
                      {QStringLiteral("text"), QStringLiteral("first.png")},
                      {QStringLiteral("brief"), QStringLiteral("first.png")},
                      {QStringLiteral("time"), kStart.toString(Qt::ISODate)}};
    QJsonObject noId2 = noId1;
    noId2.insert(QStringLiteral("time"), kStart.addSecs(5).toString(Qt::ISODate));
    noId2.insert(QStringLiteral("brief"), QStringLiteral("second.png"));
    const QJsonArray clippings{wrongTypes,  hugeText, unknownType,
                               noId1,       noId2,    QJsonValue(QStringLiteral("not an object")),
                               QJsonValue()};

    HistoryItemModel *model = newModel();
    QSettings().setValue(SettingsKey::IgnoreSize, QStringLiteral("2048"));
    model->reloadSettings();
    writeFile(m_path, documentWith(clippings));
    QSignalSpy notices(model, &HistoryItemModel::notice);
    QTest::ignoreMessage(QtWarningMsg, "Left out 3 clippings with fields of the wrong type");
    QTest::ignoreMessage(QtWarningMsg, "Left out 4 clippings at load");
    model->load();
    QStringList briefs;
    for (int row = 0; row < model->rowCount(); ++row)
        briefs.append(model->item(row)->data(BriefRole).toString().left(20));
    // Two image clippings without an id are one clipping: the newer one stays.
    QCOMPARE(briefs,
             QStringList({QStringLiteral("second.png"), QStringLiteral("from the future")}));
    QVERIFY(model->indexIsConsistent());
    // The wrong types, the text over the size limit and the two that are no clippings at all:
    // told once, with their count.
    QCOMPARE(notices.size(), 1);
    QVERIFY2(notices.at(0).at(0).toString().startsWith(QStringLiteral("4 clipping")),
             qPrintable(notices.at(0).at(0).toString()));
    QCOMPARE(model->deserialize(documentWith(QJsonArray(), 8, 0)), -1);
}

void TestHistoryFile::anInterruptedSaveIsRecovered()
{
    // The old file was removed and the new one not yet renamed when the computer went down.
    const QByteArray bytes =
        documentWith(QJsonArray{textClipping(QStringLiteral("survivor"), kStart)});
    writeFile(HistoryFile::temporaryPath(m_path), bytes);
    HistoryItemModel *model = newModel();
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(QStringLiteral("recovered it from .*History.json-tmp")));
    model->load();
    QCOMPARE(model->rowCount(), 1);
    QCOMPARE(readFile(m_path), bytes);
    QVERIFY(!QFile::exists(HistoryFile::temporaryPath(m_path)));

    // A stale "-tmp" beside a good file is not read.
    writeFile(HistoryFile::temporaryPath(m_path), "{broken");
    HistoryItemModel *again = newModel();
    again->load();
    QCOMPARE(again->rowCount(), 1);

    // Saving replaces both: the file holds the new content and no "-tmp" is left.
    QVERIFY(again->addText(QStringLiteral("after the crash"), QString(), QPixmap(), QString()));
    again->finishSaves();
    QVERIFY(readFile(m_path).contains("after the crash"));
    QVERIFY(!QFile::exists(HistoryFile::temporaryPath(m_path)));
}

void TestHistoryFile::failedSavesSayWhatFailed()
{
    HistoryItemModel *model = newModel();
    QVERIFY(model->merge(
        newTextItem(QStringLiteral("precious"), QString(), QPixmap(), QString(), kStart)));
    QSignalSpy problems(model, &HistoryItemModel::saveProblemChanged);
    QSignalSpy finished(model, &HistoryItemModel::saveFinished);

    // The "-tmp" name is taken by a folder: the old file untouched, the reason told once.
    writeFile(m_path, "old content");
    QVERIFY(QDir().mkpath(HistoryFile::temporaryPath(m_path)));
    QTest::ignoreMessage(QtWarningMsg, qPrintable(HistoryFile::temporaryPath(m_path) +
                                                  " cannot be opened for writing."));
    model->save(true);
    model->finishSaves();
    QCOMPARE(finished.takeFirst().at(0).toBool(), false);
    QCOMPARE(readFile(m_path), QByteArray("old content"));
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems.at(0).at(0).toString().contains(QStringLiteral("directory")),
             qPrintable(problems.at(0).at(0).toString()));
    QVERIFY(QDir(HistoryFile::temporaryPath(m_path)).removeRecursively());

    // The history file's name is taken by a folder with something in it: the rename fails,
    // and the problem, already told, is not told again.
    QFile::remove(m_path);
    writeFile(m_path + QStringLiteral("/keep.txt"), "x");
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^Writing to file .* failed.")));
    model->save(true);
    model->finishSaves();
    QCOMPARE(problems.size(), 1);
    // Nothing is lost: the complete new content waits in "-tmp" for the next start.
    QVERIFY(readFile(HistoryFile::temporaryPath(m_path)).contains("precious"));
    QVERIFY(QDir(m_path).removeRecursively());
    model->save(true);
    model->finishSaves();
    QCOMPARE(problems.size(), 2);
    QCOMPARE(problems.at(1).at(0).toString(), QString());

    // The folder cannot be created.
    const QString blocked = m_profile.path(QStringLiteral("data/blocker"));
    writeFile(blocked, "a file where a folder should be");
    HistoryItemModel *elsewhere = new HistoryItemModel(blocked + QStringLiteral("/History.json"));
    m_models.append(elsewhere);
    QSignalSpy elsewhereProblems(elsewhere, &HistoryItemModel::saveProblemChanged);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("Failed to create ") + blocked));
    elsewhere->save(false);
    elsewhere->finishSaves();
    QCOMPARE(elsewhereProblems.size(), 1);
}

void TestHistoryFile::syncMergeUnitesTwoHistories()
{
    HistoryItemModel *here = newModel();
    QVERIFY(here->merge(
        newTextItem(QStringLiteral("only here"), QString(), QPixmap(), QString(), kStart)));
    QVERIFY(here->merge(newTextItem(QStringLiteral("on both"), QString(), QPixmap(), QString(),
                                    kStart.addSecs(1))));
    HistoryItemModel *there = newModel();
    QVERIFY(there->merge(newTextItem(QStringLiteral("on both"), QString(), QPixmap(), QString(),
                                     kStart.addSecs(60))));
    QVERIFY(there->merge(newTextItem(QStringLiteral("only there"), QString(), QPixmap(), QString(),
                                     kStart.addSecs(30))));

    QByteArray output;
    QVERIFY(here->merge(there->serialize(), output, SyncDirection::Both));
    QCOMPARE(output, here->serialize());
    QCOMPARE(here->hash().size(), 64);
    QStringList rows;
    for (int row = 0; row < here->rowCount(); ++row)
        rows.append(here->item(row)->data(BriefRole).toString());
    QCOMPARE(rows, (QStringList{QStringLiteral("on both"), QStringLiteral("only there"),
                                QStringLiteral("only here")}));
    // The same content again changes nothing; a broken download gives an empty output.
    QVERIFY(!here->merge(there->serialize(), output, SyncDirection::Both));
    QTest::ignoreMessage(QtWarningMsg, "Parsing JSON document failed.");
    QVERIFY(!here->merge("garbage", output, SyncDirection::FromServer));
    QVERIFY(output.isEmpty());
    here->finishSaves();
}

QTEST_MAIN(TestHistoryFile)
#include "testhistoryfile.moc"
