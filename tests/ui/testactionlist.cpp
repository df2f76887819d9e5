// The actions page and what uses it: the list with its rows and row menus, the editor with its
// live test and parameter boxes, running an action on a clipping, and action shortcuts.
#include "actions/actionapi.h"
#include "actions/actionfiles.h"
#include "actions/actionshortcuts.h"
#include "base/settings.h"
#include "history/clipping.h"
#include "platform/platform.h"
#include "qhotkey.h"
#include "support/actionfixtures.h"
#include "support/fakedesktop.h"
#include "support/fakehotkeyservice.h"
#include "support/modalanswer.h"
#include "support/testprofile.h"
#include "ui/actions/actioneditor.h"
#include "ui/actions/actionlist.h"
#include "ui/actions/actionlistrow.h"
#include "ui/actions/runactionmenu.h"
#include "ui/history/historyitemview.h"

#include <Qsci/qsciscintilla.h>

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>

using ActionFixtures::builtIn;
using ActionFixtures::writeUserAction;

namespace {

QStringList menuTexts(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts.append(action->isSeparator() ? QStringLiteral("--") : action->text());
    return texts;
}

QListWidgetItem *rowOf(const ActionList &list, const QString &path)
{
    for (int i = 0; i < list.count(); ++i) {
        if (list.item(i)->data(ActionList::PathRole).toString() == path)
            return list.item(i);
    }
    return nullptr;
}

} // namespace

class TestActionList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void rowsShowStatusAndOfferTheirCommands();
    void deleteAsksAndLeavesATombstone();
    void editorSavesANewAction();
    void builtInOpensReadOnly();
    void runningOnAClipping();
    void shortcutRunsOnTheClipboardAndPastes();

private:
    TestProfile m_profile;
    FakeDesktop *m_desktop = nullptr;
    FakeHotkeyService *m_hotkeys = nullptr;
};

void TestActionList::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorin"));
    QCoreApplication::setApplicationName(QStringLiteral("Velmorin"));
    m_profile.useInThisProcess();
    m_desktop = new FakeDesktop(this);
    Platform::setDesktop(m_desktop);
    m_hotkeys = new FakeHotkeyService;
    QHotkeyPrivate::setInstance(m_hotkeys);
}

void TestActionList::cleanupTestCase()
{
    delete m_hotkeys;
}

void TestActionList::init()
{
    QDir(ActionFiles::userFolder()).removeRecursively();
    QSettings().clear();
    m_desktop->events.clear();
}

void TestActionList::rowsShowStatusAndOfferTheirCommands()
{
    const QString broken = writeUserAction(
        QStringLiteral("Broken.json"),
        {{"title", "Broken"}, {"description", "Mine"}, {"script", "(("}, {"failed", true}});
    QSettings().setValue(SettingsKey::ActionShortcuts,
                         QVariantMap{{broken, "Ctrl+Alt+B"}, {builtIn("02-toupper.json"), ""}});
    // A file that is no action at all: named in the log and listed as such.
    const QString garbled = ActionFiles::userFolder() + QStringLiteral("/Garbled.json");
    {
        QFile file(garbled);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\"title\": \"cut off");
    }
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^The action file .*Garbled.json cannot "
                                                           "be read: ")));
    ActionList list;
    list.load();
    QCOMPARE(list.count(), 14);
    auto *garbledRow = qobject_cast<ActionListRow *>(list.itemWidget(rowOf(list, garbled)));
    QVERIFY(garbledRow);
    QCOMPARE(garbledRow->statusIcon()->toolTip(),
             QStringLiteral("This action file cannot be read."));
    QCOMPARE(rowOf(list, garbled)->data(ActionList::TitleRole).toString(),
             QStringLiteral("Garbled.json"));

    auto *userRow = qobject_cast<ActionListRow *>(list.itemWidget(rowOf(list, broken)));
    QVERIFY(userRow);
    QCOMPARE(userRow->statusIcon()->objectName(), QStringLiteral("ic_error"));
    QCOMPARE(userRow->statusIcon()->toolTip(), QStringLiteral("There are errors in the action "
                                                              "script."));
    QVERIFY(!userRow->shortcutIcon()->isHidden());
    QCOMPARE(userRow->shortcutIcon()->toolTip(), QStringLiteral("Ctrl+Alt+B"));
    std::unique_ptr<QMenu> menu(list.createRowMenu(rowOf(list, broken), nullptr));
    QCOMPARE(menuTexts(menu.get()),
             (QStringList{"Edit", "Remove shortcut", "Hide from menu", "--", "Delete"}));

    // The shield wins over the error icon on a built-in.
    QListWidgetItem *upper = rowOf(list, builtIn("02-toupper.json"));
    upper->setData(ActionList::FailedRole, true);
    list.setHidden(upper, false); // rebuilds the row
    auto *builtInRow = qobject_cast<ActionListRow *>(list.itemWidget(upper));
    QCOMPARE(builtInRow->statusIcon()->objectName(), QStringLiteral("ic_shield"));
    QCOMPARE(builtInRow->statusIcon()->toolTip(),
             QStringLiteral("Built-in actions cannot be edited."));
    QVERIFY(builtInRow->shortcutIcon()->isHidden());
    menu.reset(list.createRowMenu(upper, nullptr));
    QCOMPARE(menuTexts(menu.get()), (QStringList{"View", "Set shortcut", "Hide from menu"}));
}

void TestActionList::deleteAsksAndLeavesATombstone()
{
    const QString doomed = writeUserAction(QStringLiteral("Doomed.json"),
                                           {{"title", "Doomed"}, {"script", "(() => 1)"}});
    ActionList list;
    list.load();
    list.setShortcut(rowOf(list, doomed), QStringLiteral("Ctrl+Alt+D"));

    QString question;
    ModalAnswer::whenOpens([&question](QWidget *box) {
        question = qobject_cast<QMessageBox *>(box)->text();
        qobject_cast<QMessageBox *>(box)->button(QMessageBox::No)->click();
    });
    list.deleteAction(rowOf(list, doomed));
    QCOMPARE(question, QStringLiteral("Are you sure you want to delete the action 'Doomed'?"));
    QVERIFY(rowOf(list, doomed));

    ModalAnswer::whenOpens(
        [](QWidget *box) { qobject_cast<QMessageBox *>(box)->button(QMessageBox::Yes)->click(); });
    list.deleteAction(rowOf(list, doomed));
    QVERIFY(!rowOf(list, doomed));
    QVERIFY(QFile::exists(doomed));
    QFile file(doomed);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QJsonDocument::fromJson(file.readAll()).object().value("deleted").toBool(), true);
    QSettings settings;
    QVERIFY(!settings.value(SettingsKey::Actions).toMap().contains(doomed));
    QCOMPARE(settings.value(SettingsKey::ActionShortcuts).toMap(), QVariantMap());

    // Built-ins offer no delete, and refuse one.
    list.deleteAction(list.item(0));
    QCOMPARE(list.count(), 12);
}

void TestActionList::editorSavesANewAction()
{
    ActionEditor editor;
    auto *buttons = editor.findChild<QDialogButtonBox *>();
    QPushButton *save = buttons->button(QDialogButtonBox::Save);
    QVERIFY(!save->isEnabled());
    editor.findChild<QLineEdit *>(QStringLiteral("title"))->setText(QStringLiteral("My action!"));
    QVERIFY(save->isEnabled());
    editor.findChild<QLineEdit *>(QStringLiteral("description"))->setText(QStringLiteral("Twice"));
    editor.findChild<QsciScintilla *>(QStringLiteral("script"))
        ->setText(QStringLiteral("((clipping, times) => clipping.plainText.repeat(times))"));
    QTRY_VERIFY(editor.findChild<QLineEdit *>(QStringLiteral("times")));
    editor.findChild<QLineEdit *>(QStringLiteral("times"))->setText(QStringLiteral("2"));
    editor.findChild<QPlainTextEdit *>(QStringLiteral("testInput"))
        ->setPlainText(QStringLiteral("ab"));
    QTRY_COMPARE(editor.findChild<QPlainTextEdit *>(QStringLiteral("testOutput"))->toPlainText(),
                 QStringLiteral("abab"));

    save->click();
    QCOMPARE(editor.result(), int(QDialog::Accepted));
    const QString path = ActionFiles::userFolder() + QStringLiteral("/MyAction.json");
    QCOMPARE(editor.filePath(), path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray written = file.readAll();
    QVERIFY(!written.contains('\n')); // compact
    const QJsonObject action = QJsonDocument::fromJson(written).object();
    QCOMPARE(action.value("title").toString(), QStringLiteral("My action!"));
    QCOMPARE(action.value("description").toString(), QStringLiteral("Twice"));
    QCOMPARE(action.value("input").toString(), QStringLiteral("ab"));
    QCOMPARE(action.value("params").toArray(), QJsonArray{"times"});
    QCOMPARE(action.value("failed").toBool(), false);
    QVERIFY(action.contains("created"));

    // What runs from a menu is what was tested.
    QString error;
    QCOMPARE(ActionAPI::runActionFile(path, QStringLiteral("xy"), QString(), error),
             QStringList{"xyxy"});

    // A second one with the same title gets a name of its own.
    ActionEditor second;
    second.findChild<QLineEdit *>(QStringLiteral("title"))->setText(QStringLiteral("My action!"));
    second.onAccepted();
    QCOMPARE(second.filePath(), ActionFiles::userFolder() + QStringLiteral("/MyAction-1.json"));
}

void TestActionList::builtInOpensReadOnly()
{
    ActionList list;
    list.load();
    const QString wrap = builtIn("11-wordwrap.json");
    ActionEditor editor(list.indexFromItem(rowOf(list, wrap)));
    QCOMPARE(editor.windowTitle(), wrap);
    QVERIFY(editor.findChild<QsciScintilla *>(QStringLiteral("script"))->isReadOnly());
    QVERIFY(!editor.findChild<QLineEdit *>(QStringLiteral("title"))->isEnabled());
    auto *buttons = editor.findChild<QDialogButtonBox *>();
    QVERIFY(buttons->button(QDialogButtonBox::Save)->isHidden());
    QCOMPARE(buttons->button(QDialogButtonBox::Cancel)->text(), QStringLiteral("Close"));
    QTRY_VERIFY(editor.findChild<QLineEdit *>(QStringLiteral("length")));

    // The values typed for a built-in's parameters are what its runs use; the file stays.
    editor.findChild<QLineEdit *>(QStringLiteral("length"))->setText(QStringLiteral("3"));
    editor.reject();
    QVERIFY(QFileInfo(wrap).isReadable());
    QString error;
    QCOMPARE(ActionAPI::runActionFile(wrap, QStringLiteral("ab cd"), QString(), error),
             QStringList{"ab\ncd"});
}

void TestActionList::runningOnAClipping()
{
    ActionFiles::writeListing(ActionFiles::listedActions());
    QStandardItemModel model;
    auto *item = new QStandardItem;
    item->setData(QStringLiteral("b,a;c,d"), Clipping::TextRole);
    item->setData(QStringLiteral("Editor"), Clipping::ApplicationRole);
    model.appendRow(item);
    HistoryItemView view;
    view.setModel(&model);
    QSignalSpy replaced(&view, &HistoryItemView::textAction);
    QSignalSpy added(&view, &HistoryItemView::addItem);
    const QModelIndex clipping = model.index(0, 0);

    view.runAction(clipping, builtIn("02-toupper.json"), QStringLiteral("To uppercase"));
    QCOMPARE(replaced.size(), 1);
    QCOMPARE(replaced.first().at(1).toString(), QStringLiteral("B,A;C,D"));
    QCOMPARE(added.size(), 0);

    // Several results: the first ends up on top, so it is added last.
    view.runAction(clipping, builtIn("12-splitlines.json"), QStringLiteral("Split lines"));
    QCOMPARE(added.size(), 3);
    QCOMPARE(added.at(0).first().toString(), QStringLiteral("d"));
    QCOMPARE(added.at(1).first().toString(), QStringLiteral("a;c"));
    QCOMPARE(added.at(2).first().toString(), QStringLiteral("b"));

    QString warning;
    ModalAnswer::whenOpens([&warning](QWidget *box) {
        warning = qobject_cast<QMessageBox *>(box)->text();
        qobject_cast<QMessageBox *>(box)->accept();
    });
    const QString broken = writeUserAction(QStringLiteral("Broken.json"), {{"script", "7"}});
    view.runAction(clipping, broken, QStringLiteral("Broken"));
    QCOMPARE(warning,
             QStringLiteral("Failed to run action 'Broken'\nThe action script is not a function."));
    QCOMPARE(replaced.size() + added.size(), 4);
}

void TestActionList::shortcutRunsOnTheClipboardAndPastes()
{
    const QString gone =
        writeUserAction(QStringLiteral("Gone.json"), {{"title", "Gone"}, {"script", "(() => 1)"}});
    ActionFiles::markDeleted(gone);
    ActionFiles::writeListing(ActionFiles::listedActions());
    QSettings().setValue(SettingsKey::ActionShortcuts,
                         QVariantMap{{builtIn("02-toupper.json"), "Ctrl+Alt+U"},
                                     {builtIn("01-tolower.json"), "Ctrl+Alt+L"},
                                     {gone, "Ctrl+Alt+G"}});
    m_hotkeys->refusedKeys = {quint32(Qt::Key_L)};
    QTest::ignoreMessage(QtWarningMsg, "Unable to register hotkey Ctrl+Alt+L for action "
                                       ":/data/actions/01-tolower.json");
    ActionShortcuts shortcuts;
    // The deleted action's shortcut is not even tried.
    QCOMPARE(shortcuts.hotkeys().size(), 1);
    QCOMPARE(m_hotkeys->registered.size(), 1);

    QGuiApplication::clipboard()->setText(QStringLiteral("quiet words"));
    m_hotkeys->press(Qt::Key_U, WinKeyMap::modifiers(Qt::ControlModifier | Qt::AltModifier));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("QUIET WORDS"));
    QVERIFY2(m_desktop->keyLog().startsWith(QLatin1String("-Ctrl -Alt ")) ||
                 m_desktop->keyLog().startsWith(QLatin1String("-Alt -Ctrl ")),
             qPrintable(m_desktop->keyLog()));
    QVERIFY(m_desktop->keyLog().contains(QLatin1String("+Ctrl +V -Ctrl -V")));
    QTRY_COMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("quiet words"));

    // Removing the shortcut in the list takes it off the system at once.
    QSettings().setValue(SettingsKey::ActionShortcuts, QVariantMap());
    shortcuts.apply();
    QCOMPARE(m_hotkeys->registered.size(), 0);

    QGuiApplication::clipboard()->clear();
    m_desktop->events.clear();
    QTest::ignoreMessage(QtWarningMsg,
                         "Current clipboard content is not text. Unable to run the action.");
    ActionShortcuts::runOnClipboard(builtIn("02-toupper.json"), QStringLiteral("Ctrl+Alt+U"));
    QVERIFY(m_desktop->events.isEmpty());
}

QTEST_MAIN(TestActionList)
#include "testactionlist.moc"
