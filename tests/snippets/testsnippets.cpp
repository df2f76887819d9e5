// The snippet tree: its file, the merge rules, the example snippets, edits with their saves and
// backups, placeholders and the caret marker.
#include "actions/actionfiles.h"
#include "base/appmodes.h"
#include "base/settings.h"
#include "snippets/snippet.h"
#include "snippets/snippetfile.h"
#include "snippets/snippetitemmodel.h"
#include "snippets/snippetplaceholders.h"
#include "support/actionfixtures.h"
#include "support/testprofile.h"
#include "synclog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardItem>
#include <QTest>

using namespace Snippet;

namespace {

const QDateTime kNoon(QDate(2026, 11, 1), QTime(12, 0));
const QString kGroupId = QStringLiteral("{0b7f4a52-1111-4c1e-9a00-000000000001}");
const QString kSnippetId = QStringLiteral("{0b7f4a52-2222-4c1e-9a00-000000000002}");

QJsonObject snippetJson(const QString &id, const QString &title, const QDateTime &time)
{
    return {{"id", id},
            {"title", title},
            {"text", title + " text"},
            {"time", time.toString(Qt::ISODate)},
            {"hide", false},
            {"hotkey", ""},
            {"expander", ""}};
}

QJsonObject groupJson(const QString &id, const QString &title, const QDateTime &time,
                      const QJsonArray &snippets)
{
    return {
        {"id", id}, {"title", title}, {"time", time.toString(Qt::ISODate)}, {"snippets", snippets}};
}

QByteArray documentJson(const QJsonArray &groups, const QJsonObject &extra = {})
{
    QJsonObject document{{"version", 7}, {"magic", -18022399}, {"groups", groups}};
    for (auto it = extra.begin(); it != extra.end(); ++it)
        document.insert(it.key(), it.value());
    return QJsonDocument(document).toJson();
}

// Snippet titles of the tree, "Group/Snippet", in order.
QStringList titles(const SnippetItemModel &model)
{
    QStringList titles;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QStandardItem *group = model.item(row);
        titles.append(group->text());
        for (int child = 0; child < group->rowCount(); ++child)
            titles.append(group->text() + '/' + group->child(child)->text());
    }
    return titles;
}

bool syncLogHas(const QString &line)
{
    for (const QString &logged : SyncLog::instance().lines()) {
        if (logged.endsWith(line))
            return true;
    }
    return false;
}

// The whole file, or nothing when it cannot be read. It is closed again at once: Windows does not
// replace a file that is open, as the next save would.
QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestSnippets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void versionAndMagic();
    void unreadableFileIsKeptAndNeverEmptied_data();
    void unreadableFileIsKeptAndNeverEmptied();
    void mergeRules();
    void removalsWinAndOldRemovedListIsRewritten();
    void syncMerge();
    void firstStartLoadsExamplesOnce();
    void editsAreTimedSavedTogetherAndBackedUp();
    void movingToAnotherGroupLeavesNoTwin();
    void exportAndImport();
    void backupsAreTrimmed();
    void placeholders_data();
    void placeholders();
    void actionPlaceholders();
    void caretSteps_data();
    void caretSteps();

private:
    // In a folder of its own that each test starts without: the first save creates it.
    QString snippetPath() const { return m_profile.path(QStringLiteral("snippets/Snippets.json")); }

    TestProfile m_profile;
};

void TestSnippets::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorin"));
    QCoreApplication::setApplicationName(QStringLiteral("Velmorin"));
    m_profile.useInThisProcess();
}

void TestSnippets::init()
{
    QDir(m_profile.path(QStringLiteral("snippets"))).removeRecursively();
    QDir(SnippetFile::backupFolder()).removeRecursively();
    SyncLog::instance().clear();
}

void TestSnippets::versionAndMagic()
{
    SnippetItemModel model(snippetPath());
    QTest::ignoreMessage(QtWarningMsg, "The snippet file has version 8 but the application "
                                       "supports only version 7");
    QCOMPARE(model.deserialize(
                 documentJson({groupJson(kGroupId, "G", kNoon, {})}, {{"version", 8}}), false),
             1);
    QTest::ignoreMessage(QtWarningMsg, "The snippet file has unknown magic number -18022398");
    QCOMPARE(
        model.deserialize(
            documentJson({groupJson(kSnippetId, "H", kNoon, {})}, {{"magic", -18022398}}), false),
        -1);
    QCOMPARE(titles(model), QStringList{"G"});
}

void TestSnippets::unreadableFileIsKeptAndNeverEmptied_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole =
        documentJson({groupJson(kGroupId, "Mine", kNoon, {snippetJson(kSnippetId, "S", kNoon)})});
    QTest::newRow("last brace missing") << whole.left(whole.lastIndexOf('}'));
    QTest::newRow("not ours") << QByteArray("{\"magic\": 1, \"groups\": []}");
}

void TestSnippets::unreadableFileIsKeptAndNeverEmptied()
{
    QFETCH(QByteArray, bytes);
    const auto writeAll = [](const QString &path, const QByteArray &content) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    writeAll(snippetPath(), bytes);
    // Today's backup from an earlier save must survive as well.
    const QString backup = SnippetFile::backupFolder() + "/Snippets-2026-11-01.json";
    writeAll(backup, "earlier today");

    SnippetItemModel model(snippetPath());
    model.setClock([] { return kNoon; });
    QSignalSpy warning(&model, &SnippetItemModel::warning);
    QCOMPARE(model.load(false), SnippetItemModel::LoadResult::Rejected);
    const QStringList copies =
        QFileInfo(snippetPath()).dir().entryList({QStringLiteral("Snippets.json.unreadable-*")});
    QCOMPARE(copies.size(), 1);
    const QString copy = QFileInfo(snippetPath()).dir().filePath(copies.first());
    QCOMPARE(readAll(copy), bytes);
    QCOMPARE(warning.size(), 1);
    const QString message = warning.first().first().toString();
    QVERIFY(message.startsWith("Failed to parse the snippets file: " + snippetPath()));
    QVERIFY2(message.contains(copy), qPrintable(message));

    // Neither a save nor an upload puts the empty tree in the file's place.
    QVERIFY(!model.save());
    QByteArray output;
    QVERIFY(!model.merge(QByteArray(), output, SyncDirection::Both));
    QVERIFY(output.isEmpty());
    QCOMPARE(readAll(snippetPath()), bytes);
    QCOMPARE(readAll(backup), QByteArray("earlier today"));

    // Snippets that arrive through sync are saved; the copy stays.
    const QString remote = QStringLiteral("{0b7f4a52-6666-4c1e-9a00-000000000006}");
    QVERIFY(model.merge(documentJson({groupJson(remote, "Remote", kNoon, {})}), output,
                        SyncDirection::Both));
    SnippetItemModel reread(snippetPath());
    QCOMPARE(reread.load(false), SnippetItemModel::LoadResult::Loaded);
    QCOMPARE(titles(reread), QStringList{"Remote"});
    QCOMPARE(readAll(copy), bytes);
}

void TestSnippets::mergeRules()
{
    SnippetItemModel model(snippetPath());
    const QString other = QStringLiteral("{0b7f4a52-3333-4c1e-9a00-000000000003}");
    model.deserialize(documentJson({groupJson(kGroupId, "Group", kNoon,
                                              {snippetJson(kSnippetId, "Local", kNoon),
                                               snippetJson(other, "Second", kNoon)})}),
                      false);

    // Older incoming: local stays. Newer: replaced in its row. Missing: kept. Twice: once.
    const QString added = QStringLiteral("{0b7f4a52-4444-4c1e-9a00-000000000004}");
    model.deserialize(
        documentJson({groupJson(kGroupId, "Renamed", kNoon.addSecs(60),
                                {snippetJson(kSnippetId, "Older", kNoon.addSecs(-60)),
                                 snippetJson(added, "Added", kNoon),
                                 snippetJson(added, "Added twice", kNoon)}),
                      groupJson(kGroupId, "Same group again", kNoon.addSecs(120), {})}),
        false);
    QCOMPARE(titles(model),
             (QStringList{"Renamed", "Renamed/Local", "Renamed/Second", "Renamed/Added"}));
    QVERIFY(syncLogHas("Merge snippets: Updating parent group 'Renamed'"));
    QVERIFY(syncLogHas("Merge snippets: Child 'Older' already exists under parent 'Renamed'."));
    QVERIFY(syncLogHas("Merge snippets: Added child 'Added' under parent 'Renamed'."));

    model.deserialize(
        documentJson({groupJson(kGroupId, "Older group", kNoon,
                                {snippetJson(kSnippetId, "Newer", kNoon.addSecs(5))})}),
        false);
    QCOMPARE(titles(model),
             (QStringList{"Renamed", "Renamed/Newer", "Renamed/Second", "Renamed/Added"}));
    QVERIFY(syncLogHas("Merge snippets: Updating child 'Newer' under parent 'Renamed'."));
}

void TestSnippets::removalsWinAndOldRemovedListIsRewritten()
{
    SnippetItemModel model(snippetPath());
    const QJsonArray groups{
        groupJson(kGroupId, "Group", kNoon, {snippetJson(kSnippetId, "Snippet", kNoon)})};
    model.deserialize(documentJson(groups), false);

    // Listed as removed and sent again in the same document: the removal wins.
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    QCOMPARE(model.deserialize(documentJson(groups, {{"removed", QJsonArray{kGroupId}}}), false),
             2);
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(syncLogHas("Merge snippets: Parent group 'Group' is in removed list -> Ignoring "
                       "children"));
    QVERIFY(model.removedItems().value(QUuid::fromString(kGroupId)) >= before);
    const QJsonObject written = QJsonDocument::fromJson(model.serialize()).object();
    QVERIFY(written.value("removedItems").toObject().contains(kGroupId));
    QVERIFY(!written.contains("removed"));

    SnippetItemModel other(snippetPath());
    other.deserialize(documentJson({groupJson(kGroupId, "Group", kNoon,
                                              {snippetJson(kSnippetId, "Snippet", kNoon)})}),
                      false);
    other.deserialize(documentJson({}, {{"removedItems",
                                         QJsonObject{{kSnippetId, kNoon.toString(Qt::ISODate)}}}}),
                      false);
    QCOMPARE(titles(other), QStringList{"Group"});
}

void TestSnippets::syncMerge()
{
    SnippetItemModel model(snippetPath());
    model.deserialize(documentJson({groupJson(kGroupId, "Local", kNoon, {})}), false);
    const QByteArray local = model.serialize();
    QByteArray output;

    // Nothing downloaded: nothing cleared, even from the server's side.
    QVERIFY(!model.merge(QByteArray(), output, SyncDirection::FromServer));
    QCOMPARE(output, local);
    // A document that is not ours costs nothing either.
    QTest::ignoreMessage(QtWarningMsg, "The snippet file has unknown magic number 0");
    QVERIFY(!model.merge("garbage", output, SyncDirection::FromServer));
    QVERIFY(output.isEmpty());
    QVERIFY(syncLogHas("Deserializing the snippet data failed."));
    QCOMPARE(titles(model), QStringList{"Local"});

    const QString remote = QStringLiteral("{0b7f4a52-6666-4c1e-9a00-000000000006}");
    const QByteArray server = documentJson({groupJson(remote, "Remote", kNoon, {})});
    QVERIFY(model.merge(server, output, SyncDirection::Both));
    QCOMPARE(titles(model), (QStringList{"Local", "Remote"}));
    QCOMPARE(output, model.serialize());
    QVERIFY(QFile::exists(snippetPath()));
    QVERIFY(!model.merge(server, output, SyncDirection::Both)); // nothing new

    QVERIFY(model.merge(server, output, SyncDirection::FromServer));
    QVERIFY(syncLogHas("FromServer sync -> clearing the local content."));
    QCOMPARE(titles(model), QStringList{"Remote"});
}

void TestSnippets::firstStartLoadsExamplesOnce()
{
    {
        SnippetItemModel model(snippetPath());
        QCOMPARE(model.load(false), SnippetItemModel::LoadResult::Examples);
        // The five of the program, and one CR LF file from this test's resources; a file
        // that does not end in "txt" is not read.
        QCOMPARE(model.rowCount(), 6);
        QCOMPARE(model.item(0)->text(), QStringLiteral("Info"));
        QCOMPARE(model.item(4)->text(), QStringLiteral("Emoji"));
        // The same ids on every computer, so that synchronised examples merge.
        for (int group = 0; group < 5; ++group)
            QCOMPARE(model.item(group)->data(IdRole).toString(),
                     QStringLiteral("{12345678-0000-0000-%1-000000000000}")
                         .arg(group + 1, 4, 10, QLatin1Char('0')));
        QCOMPARE(model.item(1)->child(0)->data(IdRole).toString(),
                 QStringLiteral("{12345678-0000-0000-0002-000000000001}"));
        QCOMPARE(model.item(4)->child(2)->data(IdRole).toString(),
                 QStringLiteral("{12345678-0000-0000-0005-000000000003}"));
        QCOMPARE(model.keywords().value(QStringLiteral("::brb")), QStringLiteral("Be right back."));
        QCOMPARE(model.keywords().value(QStringLiteral("::heart")), QStringLiteral("❤️"));
        // Only the piece is trimmed: the header's last field keeps the carriage return.
        const QStandardItem *crlf = model.item(5)->child(0);
        QCOMPARE(crlf->data(ExpanderRole).toString(), QStringLiteral("::crlf\r"));
        QCOMPARE(crlf->data(TextRole).toString(), QStringLiteral("First line\r\nSecond line"));
        QVERIFY(QFile::exists(snippetPath()));
    }
    // The next start reads the file; the examples merge by id instead of doubling.
    SnippetItemModel model(snippetPath());
    QCOMPARE(model.load(false), SnippetItemModel::LoadResult::Loaded);
    QCOMPARE(model.rowCount(), 6);
    model.loadExamples();
    QCOMPARE(model.rowCount(), 6);
    QCOMPARE(model.item(3)->rowCount(), 3);

    // Rows but no file: no examples, and the read fails with its warning.
    QFile::remove(snippetPath());
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(snippetPath() + " cannot be opened for reading."));
    QCOMPARE(model.load(false), SnippetItemModel::LoadResult::Unreadable);
    // A demonstration never gets the examples written into its file by a load.
    SnippetItemModel demo(snippetPath());
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(snippetPath() + " cannot be opened for reading."));
    QCOMPARE(demo.load(true), SnippetItemModel::LoadResult::Unreadable);
}

void TestSnippets::editsAreTimedSavedTogetherAndBackedUp()
{
    SnippetItemModel model(snippetPath());
    QDateTime clock = kNoon;
    model.setClock([&clock] { return clock; });
    QSignalSpy saved(&model, &SnippetItemModel::syncRequested);
    QSignalSpy changed(&model, &SnippetItemModel::contentChanged);

    const QModelIndex group = model.addGroup(QStringLiteral("Group"));
    clock = kNoon.addSecs(30);
    const QModelIndex snippet = model.addSnippet(group, QStringLiteral("A"), QStringLiteral("a"));
    model.setTitle(snippet, QStringLiteral("B"));
    model.setSnippetData(snippet, TextRole, QStringLiteral("b"));
    model.setSnippetData(snippet, TextRole, QStringLiteral("b")); // unchanged: nothing to do
    QCOMPARE(changed.size(), 4);
    QCOMPARE(model.itemFromIndex(group)->data(TimeRole).toDateTime(), kNoon);
    QCOMPARE(model.itemFromIndex(snippet)->data(TimeRole).toDateTime(), kNoon.addSecs(30));

    // A burst of edits is written once.
    QVERIFY(!QFile::exists(snippetPath()));
    QTRY_COMPARE(saved.size(), 1);
    QTest::qWait(400);
    QCOMPARE(saved.size(), 1);
    SnippetItemModel reread(snippetPath());
    QCOMPARE(reread.load(false), SnippetItemModel::LoadResult::Loaded);
    QCOMPARE(titles(reread), (QStringList{"Group", "Group/B"}));
    const QByteArray written = readAll(snippetPath());
    QVERIFY(!written.isEmpty());
    QCOMPARE(readAll(SnippetFile::backupFolder() + "/Snippets-2026-11-01.json"), written);

    // Removing a group records it and its snippets, with the time.
    clock = kNoon.addSecs(90);
    QVERIFY(model.moveItem(model.addGroup(QStringLiteral("Second")), -1));
    QCOMPARE(model.item(0)->text(), QStringLiteral("Second"));
    QVERIFY(!model.moveItem(model.index(0, 0), -1));
    model.removeItem(model.index(1, 0));
    QCOMPARE(model.removedItems().size(), 2);
    QCOMPARE(model.removedItems().values(),
             (QList<QDateTime>{kNoon.addSecs(90), kNoon.addSecs(90)}));
    model.finishSaves();
    QCOMPARE(saved.size(), 2);
}

void TestSnippets::movingToAnotherGroupLeavesNoTwin()
{
    SnippetItemModel model(snippetPath());
    const QModelIndex from = model.addGroup(QStringLiteral("From"));
    const QModelIndex to = model.addGroup(QStringLiteral("To"));
    const QModelIndex snippet = model.addSnippet(from, QStringLiteral("S"), QStringLiteral("s"));
    const QString oldId = model.itemFromIndex(snippet)->data(IdRole).toString();
    const QByteArray before = model.serialize();

    const QModelIndex moved = model.moveToGroup(snippet, to);
    QCOMPARE(titles(model), (QStringList{"From", "To", "To/S"}));
    QVERIFY(model.itemFromIndex(moved)->data(IdRole).toString() != oldId);

    // Another computer that still has it in the first group drops it there.
    SnippetItemModel other(snippetPath());
    other.deserialize(before, false);
    other.deserialize(model.serialize(), false);
    QCOMPARE(titles(other), (QStringList{"From", "To", "To/S"}));
    model.finishSaves();
}

void TestSnippets::exportAndImport()
{
    SnippetItemModel model(snippetPath());
    const QModelIndex group = model.addGroup(QStringLiteral("Shared"));
    model.addSnippet(group, QStringLiteral("One"), QStringLiteral("1"));
    const QString exported = m_profile.path(QStringLiteral("Exported.json"));
    QVERIFY(model.exportTo(exported));

    // Added to what the other tree holds, which keeps its own removals.
    SnippetItemModel other(m_profile.path(QStringLiteral("other/Snippets.json")));
    const QModelIndex mine = other.addGroup(QStringLiteral("Mine"));
    other.removeItem(other.addGroup(QStringLiteral("Removed here")));
    QSignalSpy changed(&other, &SnippetItemModel::contentChanged);
    QCOMPARE(other.importFrom(exported), 2);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(titles(other), (QStringList{"Mine", "Shared", "Shared/One"}));
    QVERIFY(mine.isValid());
    QCOMPARE(other.removedItems().size(), 1);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(m_profile.path("missing.json") +
                                                  " cannot be opened for reading."));
    QCOMPARE(other.importFrom(m_profile.path(QStringLiteral("missing.json"))), -1);
    other.finishSaves();
    model.finishSaves();
}

void TestSnippets::backupsAreTrimmed()
{
    QDir folder(SnippetFile::backupFolder());
    QVERIFY(folder.mkpath("."));
    for (int day = 1; day <= 22; ++day) {
        QFile file(folder.filePath(
            QStringLiteral("Snippets-2026-10-%1.json").arg(day, 2, 10, QChar('0'))));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{}");
        file.flush();
        file.setFileTime(QDateTime(QDate(2026, 10, day), QTime(9, 0)),
                         QFileDevice::FileModificationTime);
    }
    QVERIFY(SnippetFile::writeBackup("today", QDate(2026, 11, 1)));
    QStringList left = folder.entryList(QDir::Files, QDir::Name);
    QCOMPARE(left.size(), 21);
    QCOMPARE(left.first(), QStringLiteral("Snippets-2026-10-03.json"));
    QCOMPARE(left.last(), QStringLiteral("Snippets-2026-11-01.json"));

    // The last save of the day wins.
    QVERIFY(SnippetFile::writeBackup("later", QDate(2026, 11, 1)));
    QFile today(folder.filePath(QStringLiteral("Snippets-2026-11-01.json")));
    QVERIFY(today.open(QIODevice::ReadOnly));
    QCOMPARE(today.readAll(), QByteArray("later"));
    QCOMPARE(folder.entryList(QDir::Files).size(), 20);
}

void TestSnippets::placeholders_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("clippings");
    QTest::addColumn<QString>("expected");
    const QStringList three{"newest", "12345", "oldest"};

    QTest::newRow("{CLIP} without history") << "Hello {CLIP}!" << QStringList() << "Hello {CLIP}!";
    QTest::newRow("{CLIP}") << "Hello {CLIP}!" << three << "Hello newest!";
    QTest::newRow("{CLIP:2}") << "[{CLIP:2}]" << three << "[12345]";
    QTest::newRow("{CLIP:2} with one clipping") << "{CLIP:2}" << QStringList{"one"} << "{CLIP:2}";
    QTest::newRow("regular expression") << "{CLIP:^\\d+$}" << three << "12345";
    QTest::newRow("no match") << "{CLIP:^x}" << three << "{CLIP:^x}";
    QTest::newRow("invalid regular expression") << "a{CLIP:(}b" << three << "a{CLIP:(}b";
    QTest::newRow("{CLIP:0} is an expression") << "{CLIP:0}" << QStringList{"a", "10"} << "10";
    QTest::newRow("{CLIPBOARD} reads OARD")
        << "{CLIPBOARD}" << QStringList{"x", "BOARD"} << "BOARD";
    QTest::newRow("{} is not a placeholder") << "a {} b" << three << "a {} b";
    // The shortest braced run of at least one character spans "}{CLIP": no such action.
    QTest::newRow("{}{CLIP} is one run") << "{}{CLIP}" << three << "{}{CLIP}";
    QTest::newRow("unknown names stay, in order") << "{a}-{b}" << three << "{a}-{b}";
    QTest::newRow("caret markers pass through")
        << "⁞{CLIP}⁞ and {CLIP:3}⁞" << three << "⁞newest⁞ and oldest⁞";
}

void TestSnippets::placeholders()
{
    QFETCH(QString, text);
    QFETCH(QStringList, clippings);
    QFETCH(QString, expected);
    QCOMPARE(SnippetPlaceholders::resolve(text, QStringLiteral("editor"), clippings), expected);
}

void TestSnippets::actionPlaceholders()
{
    QSettings().clear();
    const QString failing = ActionFixtures::writeUserAction(
        QStringLiteral("Failing.json"),
        {{"title", "Failing"}, {"script", "(() => { throw new Error('no'); })"}});
    QVERIFY(!failing.isEmpty());
    ActionFiles::writeListing(ActionFiles::listedActions());
    QSettings().setValue("HiddenActions", QStringList{ActionFixtures::builtIn("02-toupper.json")});

    QStringList failures;
    // A hidden action still resolves: hiding only keeps it out of the menus.
    QCOMPARE(SnippetPlaceholders::resolve(QStringLiteral("{To uppercase}|{Failing}|{Nope}"),
                                          QString(), {"quiet", "older"}, &failures),
             QStringLiteral("QUIET||{Nope}"));
    QCOMPARE(failures, QStringList{"Failed to run action 'Failing'\nFailure at line 1: no"});
}

void TestSnippets::caretSteps_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("back");
    QTest::addColumn<int>("select");
    QTest::newRow("no marker") << "Plain" << -1 << 0;
    QTest::newRow("selection") << "Dear ⁞name⁞," << 1 << 4;
    QTest::newRow("caret at the end") << "Done⁞" << 0 << 0;
    QTest::newRow("caret at the start") << "⁞abc" << 3 << 0;
    QTest::newRow("a third marker is not used") << "a⁞b⁞c⁞d" << 3 << 1;
}

void TestSnippets::caretSteps()
{
    QFETCH(QString, text);
    QFETCH(int, back);
    QFETCH(int, select);
    QCOMPARE(Snippet::caretSteps(text), qMakePair(back, select));
}

QTEST_GUILESS_MAIN(TestSnippets)
#include "testsnippets.moc"
