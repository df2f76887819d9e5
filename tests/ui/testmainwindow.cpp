// The paste window as a user drives it with the keyboard: pages, search, the commands on
// clippings, pasting back into the application it was opened from. The desktop is a fake that
// records the keys the window sends; the clipboard is the real one of the test process.
#include "base/settings.h"
#include "base/settingsevents.h"
#include "clipboard/clipboardops.h"
#include "history/clipping.h"
#include "history/historyfile.h"
#include "history/historyitemmodel.h"
#include "input/globalshortcuts.h"
#include "input/texttyper.h"
#include "platform/platform.h"
#include "qhotkey.h"
#include "services/appservices.h"
#include "snippets/snippet.h"
#include "snippets/snippetitemmodel.h"
#include "support/fakedesktop.h"
#include "support/fakehotkeyservice.h"
#include "support/testprofile.h"
#include "ui/clippingeditor.h"
#include "ui/history/historyitemdelegate.h"
#include "ui/history/historyitemview.h"
#include "ui/mainwindow.h"
#include "ui/releasenotesdialog.h"
#include "ui/search/searchedit.h"
#include "ui/search/searchmodel.h"
#include "ui/search/searchview.h"
#include "ui/settings/settingsdialog.h"
#include "ui/snippets/snippettreeview.h"
#include "ui/theme.h"
#include <QApplication>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QMimeData>
#include <QSettings>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QTabWidget>
#include <QTest>

using namespace Clipping;
using namespace Qt::StringLiterals;

class TestMainWindow final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void searchMatchesClippingsBeforeSnippets();
    void searchViewActivatesSources();
    void quickPasteNumbersPlainTextAndSeveralJoined();
    void typingSearchesAndEnterPastesTheFirstResult();
    void pasteNextWalksToOlderClippings();
    void snippetPastesResolvedWithItsCaret();
    void commandsChangeTheHistory();
    void editedTextBecomesTheNewestCopy();
    void thumbnailsStayWithinTheirBudget();
    void failingSavesShowOneNoticeUntilASaveWorks();
    void removalsCanBeUndoneWhileTheWindowIsOpen();
    void aTakenShortcutIsToldWithAWayToChooseAnother();
    void settingsDialogWritesWhatItShows();
    void screenshots();

private:
    void addTexts(const QStringList &texts);
    QModelIndex row(int row) const { return m_history->proxy()->index(row, 0); }
    QString rowText(int row) const { return this->row(row).data(TextRole).toString(); }
    void press(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void openFrom(quint64 window);
    static QString clipboardText() { return QGuiApplication::clipboard()->text(); }

    TestProfile m_profile;
    FakeDesktop *m_desktop = nullptr;
    FakeHotkeyService *m_hotkeys = nullptr;
    AppServices *m_services = nullptr;
    MainWindow *m_window = nullptr;
    HistoryItemModel *m_history = nullptr;
    QDateTime m_time;
};

void TestMainWindow::initTestCase()
{
    m_desktop = new FakeDesktop(this);
    Platform::setDesktop(m_desktop);
    m_hotkeys = new FakeHotkeyService;
    QHotkeyPrivate::setInstance(m_hotkeys);
}

void TestMainWindow::cleanupTestCase()
{
    delete m_hotkeys;
}

void TestMainWindow::init()
{
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
    QFile::remove(Settings::historyFilePath());
    QFile::remove(settings.value(u"SnippetFilePath"_s).toString());
    m_services = new AppServices(AppModes());
    m_window = new MainWindow(m_services);
    m_services->start();
    m_history = m_window->historyModel();
    m_time = QDateTime(QDate(2026, 11, 20), QTime(9, 0));
    m_history->setClock([this] { return m_time; });
    m_desktop->events.clear();
    m_desktop->activatedWindows.clear();
}

void TestMainWindow::cleanup()
{
    m_services->prepareToQuit();
    delete m_window;
    m_window = nullptr;
    delete m_services;
    m_services = nullptr;
    // Timers of pastes still under way fire into the next test otherwise.
    QTest::qWait(700);
}

void TestMainWindow::addTexts(const QStringList &texts)
{
    for (const QString &text : texts) {
        m_time = m_time.addSecs(60);
        QVERIFY(m_history->addText(text, QString(), {}, u"editor"_s));
    }
}

void TestMainWindow::press(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(widget, key, modifiers);
}

void TestMainWindow::openFrom(quint64 window)
{
    m_desktop->focusedWindow = window;
    m_desktop->foregroundName = u"editor"_s;
    m_window->toggleAtMouse();
    QVERIFY(m_window->isVisible());
}

void TestMainWindow::searchMatchesClippingsBeforeSnippets()
{
    addTexts({u"FOOBAR in capitals"_s, u"nothing here"_s, u"a food order"_s});
    SnippetItemModel *snippets = m_window->snippetModel();
    const QModelIndex group = snippets->addGroup(u"Mail"_s);
    snippets->addSnippet(group, u"my foo"_s, u"text"_s);
    snippets->addSnippet(group, u"Greeting"_s, u"Hello Foo fighters"_s);
    snippets->addSnippet(group, u"Other"_s, u"unrelated"_s);

    SearchModel *search = m_window->searchModel();
    search->setSearchText(u"  Foo "_s);
    QCOMPARE(search->searchText(), u"foo"_s);
    search->update();
    QStringList found;
    for (int i = 0; i < search->rowCount(); ++i)
        found << search->index(i, 0).data().toString();
    QCOMPARE(found,
             (QStringList{u"a food order"_s, u"FOOBAR in capitals"_s, u"my foo"_s, u"Greeting"_s}));
    const QModelIndex first = SearchModel::sourceIndex(search->index(0, 0));
    QVERIFY(search->isHistoryIndex(first));
    QCOMPARE(first, row(0));
    QVERIFY(!search->isHistoryIndex(SearchModel::sourceIndex(search->index(3, 0))));

    // A clipping copied between two searches is found by the second; case is ignored beyond
    // ASCII too.
    addTexts({u"ÄRGER mit FOO"_s});
    search->setSearchText(u"är"_s);
    search->update();
    QCOMPARE(search->rowCount(), 1);
    QCOMPARE(search->index(0, 0).data().toString(), u"ÄRGER mit FOO"_s);

    search->setSearchText(QString());
    search->update();
    QCOMPARE(search->rowCount(), 0);

    // Every match in a row is marked.
    const auto ranges =
        HistoryItemDelegate::matches(u"FooBar and foo"_s, u"foo"_s, QTextCharFormat());
    QCOMPARE(ranges.size(), 2);
    QCOMPARE(qMakePair(ranges.at(0).start, ranges.at(1).start), qMakePair(0, 11));
}

void TestMainWindow::searchViewActivatesSources()
{
    addTexts({u"history foo"_s});
    SnippetItemModel *snippets = m_window->snippetModel();
    snippets->addSnippet(snippets->addGroup(u"G"_s), u"snippet foo"_s, u"x"_s);
    m_window->show();
    m_window->searchEdit()->setText(u"foo"_s);
    QCOMPARE(m_window->currentPage(), MainWindow::SearchPage);
    SearchView *view = m_window->searchView();
    m_window->searchModel()->update();
    QCOMPARE(view->model()->rowCount(), 2);
    QSignalSpy activated(view, &QAbstractItemView::activated);
    QSignalSpy menu(view, &SearchView::historyMenuRequested);
    // The window's own handlers would paste: only the view is under test here.
    disconnect(view, &QAbstractItemView::activated, m_window, nullptr);
    disconnect(view, &SearchView::historyMenuRequested, m_window, nullptr);

    view->selectFirst();
    QTest::keyRelease(view, Qt::Key_Return);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(activated.last().first().value<QModelIndex>(), row(0));
    QTest::keyRelease(view, Qt::Key_Right);
    QCOMPARE(menu.count(), 1);

    view->setCurrentIndex(view->model()->index(1, 0));
    QTest::keyRelease(view, Qt::Key_Right);
    QCOMPARE(menu.count(), 1);
    QTest::keyRelease(view, Qt::Key_Space);
    QCOMPARE(activated.last().first().value<QModelIndex>().data().toString(), u"snippet foo"_s);

    const QRect first = view->visualRect(view->model()->index(0, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      QPoint(first.right() - first.height() / 2, first.center().y()));
    QCOMPARE(menu.count(), 2);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, first.center() - QPoint(40, 0));
    QCOMPARE(activated.count(), 3);

    m_window->searchEdit()->clear();
    QCOMPARE(m_window->currentPage(), MainWindow::HistoryPage);
}

void TestMainWindow::quickPasteNumbersPlainTextAndSeveralJoined()
{
    addTexts({u"third"_s, u"second"_s});
    m_time = m_time.addSecs(60);
    m_history->addText(u"first"_s, u"<b>first</b>"_s, {}, u"editor"_s);
    openFrom(7);
    press(m_window->historyView(), Qt::Key_Return, Qt::ShiftModifier);
    QTRY_COMPARE(clipboardText(), u"first"_s);
    QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasHtml());
    QTest::qWait(300);
    openFrom(7);
    press(m_window->historyView(), Qt::Key_Return);
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasHtml());

    QSettings().setValue(u"PastePlainText"_s, true);
    QTest::qWait(300);
    openFrom(7);
    press(m_window->historyView(), Qt::Key_Return);
    QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasHtml());

    QTest::qWait(300);
    openFrom(7);
    press(m_window->historyView(), Qt::Key_3, Qt::AltModifier);
    QCOMPARE(clipboardText(), u"third"_s);

    // A pasted clipping comes back as the newest copy.
    QTRY_COMPARE(rowText(0), u"third"_s);

    QTest::qWait(300);
    openFrom(7);
    HistoryItemView *view = m_window->historyView();
    view->selectionModel()->select(row(1), QItemSelectionModel::Select);
    view->selectionModel()->select(row(2), QItemSelectionModel::Select);
    view->selectionModel()->select(row(0), QItemSelectionModel::Deselect);
    // Pasted clippings came back as copies and moved up; the selection is read top down.
    const QString joined = rowText(1) + QLatin1Char('\n') + rowText(2);
    press(view, Qt::Key_Return);
    QCOMPARE(clipboardText(), joined);
    // Only for the paste: the clipboard comes back, and the history gains nothing.
    QTRY_COMPARE(clipboardText(), u"third"_s);
    QCOMPARE(m_history->proxy()->rowCount(), 3);
}

void TestMainWindow::typingSearchesAndEnterPastesTheFirstResult()
{
    addTexts({u"foo one"_s, u"bar"_s, u"foo two"_s});
    openFrom(9);
    QTest::keyClicks(m_window->historyView(), u"fo"_s);
    QTest::keyClicks(m_window->searchEdit(), u"o"_s);
    QCOMPARE(m_window->searchEdit()->text(), u"foo"_s);
    QCOMPARE(m_window->currentPage(), MainWindow::SearchPage);
    press(m_window->searchEdit(), Qt::Key_Return);
    QCOMPARE(clipboardText(), u"foo two"_s);
    QVERIFY(!m_window->isVisible());

    // Opening again starts from the history, and Down moves from the field into the results.
    QTest::qWait(300);
    openFrom(9);
    QCOMPARE(m_window->currentPage(), MainWindow::HistoryPage);
    QVERIFY(m_window->searchEdit()->text().isEmpty());
    QTest::keyClicks(m_window->searchEdit(), u"foo"_s);
    press(m_window->searchEdit(), Qt::Key_Down);
    QCOMPARE(m_window->searchView()->currentIndex().row(), 0);
    press(m_window->searchView(), Qt::Key_Down);
    QTest::keyRelease(m_window->searchView(), Qt::Key_Return);
    QCOMPARE(clipboardText(), u"foo one"_s);
}

void TestMainWindow::pasteNextWalksToOlderClippings()
{
    addTexts({u"oldest"_s, u"middle"_s, u"newest"_s});
    QStringList pasted;
    for (int press = 0; press < 3; ++press) {
        emit m_window->shortcuts()->pasteNextActivated();
        pasted << clipboardText();
        QTest::qWait(150);
    }
    QCOMPARE(pasted, (QStringList{u"middle"_s, u"oldest"_s, u"middle"_s}));
    QCOMPARE(rowText(0), u"newest"_s);
    QCOMPARE(m_desktop->keyLog().count(QLatin1String("+Ctrl +V")), 3);
}

void TestMainWindow::snippetPastesResolvedWithItsCaret()
{
    // Copied before the clipping that {CLIP} takes, which is the newest one.
    QGuiApplication::clipboard()->setText(u"the user's"_s);
    QTRY_COMPARE(rowText(0), u"the user's"_s);
    addTexts({u"Ticket 4711"_s});
    SnippetItemModel *snippets = m_window->snippetModel();
    const QModelIndex snippet =
        snippets->addSnippet(snippets->addGroup(u"Work"_s), u"Reply"_s, u"Re {CLIP}: ⁞ thanks"_s);
    openFrom(11);
    press(m_window->historyView(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(m_window->currentPage(), MainWindow::SnippetsPage);
    SnippetTreeView *tree = m_window->snippetView();
    // A snippet is ready for Enter (the examples of a first start come first).
    QVERIFY(tree->currentIndex().parent().isValid());
    tree->setCurrentIndex(snippet);
    press(tree, Qt::Key_Return);
    QCOMPARE(clipboardText(), u"Re Ticket 4711:  thanks"_s);
    QCOMPARE(m_desktop->activatedWindows, QList<quint64>{11});
    // Pasted, then the caret goes back before " thanks".
    QTRY_VERIFY(m_desktop->keyLog().endsWith(u"+Left -Left "_s.repeated(7).trimmed()));
    QTRY_COMPARE(clipboardText(), u"the user's"_s);
}

void TestMainWindow::commandsChangeTheHistory()
{
    addTexts({u"one"_s, u"two"_s, u"three"_s, u"four"_s});
    HistoryItemView *view = m_window->historyView();
    QCOMPARE(rowText(0), u"four"_s);

    view->togglePinned(row(3));
    QCOMPARE(rowText(0), u"one"_s);
    QVERIFY(row(0).data(PinnedRole).toBool());
    view->togglePinned(row(0));
    QCOMPARE(rowText(3), u"one"_s);

    view->reverse({row(0), row(1), row(2)});
    QStringList order;
    for (int i = 0; i < 4; ++i)
        order << rowText(i);
    QCOMPARE(order, (QStringList{u"two"_s, u"three"_s, u"four"_s, u"one"_s}));

    m_time = m_time.addSecs(60);
    view->join({row(0), row(3)});
    QCOMPARE(rowText(0), u"two\none"_s);

    m_time = m_time.addSecs(60);
    view->toggleLocked(row(1));
    QVERIFY(row(1).data(LockedRole).toBool());
    QCOMPARE(row(1).data(TimeRole).toDateTime(), m_time);

    view->setCurrentIndex(row(0));
    view->selectionModel()->select(row(0), QItemSelectionModel::ClearAndSelect);
    QSignalSpy counted(m_window, &MainWindow::clippingCountChanged);
    press(view, Qt::Key_Delete);
    QCOMPARE(m_history->proxy()->rowCount(), 4);
    // The tray's tool tip follows.
    QCOMPARE(counted.last().first().toInt(), 4);
    QCOMPARE(m_history->rowCount(), 5);
    QCOMPARE(view->currentIndex(), row(0));

    SnippetItemModel *snippets = m_window->snippetModel();
    const QModelIndex group = snippets->addGroup(u"Kept"_s);
    view->addToSnippets(row(0), group);
    QCOMPARE(snippets->rowCount(group), 1);
    QCOMPARE(snippets->index(0, 0, group).data(Snippet::TextRole).toString(), rowText(0));

    m_history->finishSaves();
    HistoryItemModel reloaded(Settings::historyFilePath());
    reloaded.load();
    QCOMPARE(reloaded.proxy()->rowCount(), 4);
    QVERIFY(reloaded.proxy()->index(0, 0).data(LockedRole).toBool() ||
            reloaded.proxy()->index(1, 0).data(LockedRole).toBool());
}

void TestMainWindow::removalsCanBeUndoneWhileTheWindowIsOpen()
{
    addTexts({u"first"_s, u"second"_s, u"third"_s});
    m_history->setPinned(m_history->proxy()->mapToSource(row(1)).row(), true); // "second"
    openFrom(7);
    HistoryItemView *view = m_window->historyView();
    const auto texts = [this] {
        QStringList shown;
        for (int i = 0; i < m_history->proxy()->rowCount(); ++i)
            shown << rowText(i);
        return shown;
    };
    QCOMPARE(texts(), (QStringList{"second", "third", "first"}));
    const auto select = [view](const QModelIndex &index) {
        view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    };
    select(row(0));
    press(view, Qt::Key_Delete);
    select(row(1));
    press(view, Qt::Key_Delete);
    QCOMPARE(texts(), QStringList{"third"});

    // Last removed, first back; pinned as it was.
    press(view, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(texts(), (QStringList{"first", "third"}));
    press(view, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(texts(), (QStringList{"second", "first", "third"}));
    QVERIFY(row(0).data(PinnedRole).toBool());

    // Once the window has closed, a removal stays.
    select(row(2));
    press(view, Qt::Key_Delete);
    m_window->hideWindow();
    openFrom(7);
    press(view, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(texts(), (QStringList{"second", "first"}));
}

void TestMainWindow::aTakenShortcutIsToldWithAWayToChooseAnother()
{
    auto *notice = m_window->findChild<QLabel *>(u"notice"_s);
    m_window->showAndPin();
    QVERIFY(notice->isHidden());
    m_hotkeys->refusedKeys = {quint32(Qt::Key_B)};
    const auto useShortcut = [this](const QString &shortcut) {
        QSettings().setValue(u"Shortcut"_s, shortcut);
        m_services->settingsEvents()->notifyChanged();
    };
    useShortcut(u"Ctrl+Shift+B"_s);
    QVERIFY(notice->isVisible());
    QVERIFY2(notice->text().contains(u"Ctrl+Shift+B"_s), qPrintable(notice->text()));

    emit notice->linkActivated(u"shortcuts"_s);
    auto *settings = m_window->findChild<SettingsDialog *>();
    QVERIFY(settings && settings->isVisible());
    QCOMPARE(settings->findChild<QTabWidget *>()->tabText(
                 settings->findChild<QTabWidget *>()->currentIndex()),
             u"Shortcuts"_s);
    settings->reject();

    useShortcut(u"Ctrl+Shift+N"_s);
    QVERIFY(notice->isHidden());
    m_hotkeys->refusedKeys.clear();
}

void TestMainWindow::failingSavesShowOneNoticeUntilASaveWorks()
{
    // A folder where the new file is written stands for a full disk: every save fails.
    const QString blocker = HistoryFile::temporaryPath(Settings::historyFilePath());
    QVERIFY(QDir().mkpath(blocker));
    QSignalSpy told(m_window, &MainWindow::problemStarted);
    auto *notice = m_window->findChild<QLabel *>(u"notice"_s);
    QVERIFY(notice);
    m_window->showAndPin();
    for (const QString &text : {u"one"_s, u"two"_s}) {
        addTexts({text});
        m_history->finishSaves();
    }
    QTRY_COMPARE(told.size(), 1);
    QVERIFY(notice->isVisible());
    QVERIFY2(notice->text().contains(QDir::toNativeSeparators(Settings::historyFilePath())),
             qPrintable(notice->text()));
    QVERIFY(!QApplication::activeModalWidget());

    QVERIFY(QDir(blocker).removeRecursively());
    addTexts({u"three"_s});
    m_history->finishSaves();
    QTRY_VERIFY(!notice->isVisible());
    QCOMPARE(told.size(), 1);
    QCOMPARE(m_history->rowCount(), 3);
}

void TestMainWindow::editedTextBecomesTheNewestCopy()
{
    m_time = m_time.addSecs(60);
    m_history->addText(u"Dear Bob"_s, u"<i>Dear Bob</i>"_s, {}, u"mailer"_s);
    addTexts({u"newer"_s});
    m_window->historyView()->clearStyle({row(1)});
    QVERIFY(row(1).data(HtmlRole).toString().isEmpty());

    emit m_window->historyView()->editRequested(row(1));
    QVERIFY(m_window->clippingEditor()->isVisible());
    QCOMPARE(m_window->clippingEditor()->text(), u"Dear Bob"_s);
    m_time = m_time.addSecs(60);
    emit m_window->clippingEditor()->saved(u"Dear Alice"_s);
    QCOMPARE(rowText(0), u"Dear Alice"_s);
    QCOMPARE(row(0).data(ApplicationRole).toString(), u"mailer"_s);
    QCOMPARE(rowText(2), u"Dear Bob"_s);
}

void TestMainWindow::thumbnailsStayWithinTheirBudget()
{
    QSettings().setValue(u"KeepItems"_s, u"200"_s);
    m_history->reloadSettings();
    const int count = 70;
    for (int i = 0; i < count; ++i) {
        QImage image(8, 6, QImage::Format_RGB32);
        image.fill(QColor(i, 100, 100));
        m_time = m_time.addSecs(1);
        QVERIFY(m_history->addImage({}, image, {}, u"app%1"_s.arg(i), m_time));
    }
    const auto withThumbnail = [this] {
        int kept = 0;
        for (int i = 0; i < m_history->rowCount(); ++i)
            kept += m_history->item(i)->data(ThumbnailRole).isValid() ? 1 : 0;
        return kept;
    };
    // All thumbnails are made; only the most recently made ones stay in memory. The files are
    // written on several threads, so which ones were made first is not known.
    QTRY_COMPARE(withThumbnail(), 64);
    QModelIndex dropped;
    for (int i = 0; i < count && !dropped.isValid(); ++i) {
        if (!m_history->index(i, 0).data(ThumbnailRole).isValid())
            dropped = m_history->index(i, 0);
    }
    QVERIFY(dropped.isValid());
    m_history->requestThumbnail(dropped.data(IdRole).toUuid(),
                                dropped.data(FilenameRole).toString());
    QTRY_VERIFY(dropped.data(ThumbnailRole).isValid());
    QCOMPARE(withThumbnail(), 64);
}

void TestMainWindow::settingsDialogWritesWhatItShows()
{
    QSettings().setValue(SettingsKey::IgnoreLength, u"10"_s);
    m_window->showSettings();
    SettingsDialog *dialog = m_window->settingsDialog();
    auto *theme = dialog->findChild<QComboBox *>();
    QCOMPARE(theme->currentData().toInt(), int(Theme::FollowSystem));
    theme->setCurrentIndex(theme->findData(Theme::Dark));
    const auto boxes = dialog->findChildren<QCheckBox *>();
    const auto box = [&boxes](const QString &text) {
        for (QCheckBox *check : boxes) {
            if (check->text() == text)
                return check;
        }
        return static_cast<QCheckBox *>(nullptr);
    };
    QCheckBox *plain = box(u"Paste as plain text by default"_s);
    QCheckBox *atMouse = box(u"Open the paste window at the mouse"_s);
    QVERIFY(plain && atMouse && !plain->isChecked() && atMouse->isChecked());
    // This build has no report address: the box cannot be ticked, and a line says why.
    QVERIFY(!box(u"Send crash reports"_s)->isEnabled());
    QVERIFY(dialog->findChild<QLabel *>(u"noReportAddress"_s));
    plain->setChecked(true);
    atMouse->setChecked(false);
    QSignalSpy applied(m_services->settingsEvents(), &SettingsEvents::changed);
    dialog->accept();
    QCOMPARE(applied.count(), 1);
    // OK reaches the parts that keep copies of settings: the history's limits too.
    QVERIFY(!m_history->addText(u"too short"_s, QString(), {}, u"editor"_s));
    QSettings settings;
    QCOMPARE(settings.value(u"Theme"_s).toInt(), int(Theme::Dark));
    QVERIFY(settings.value(u"PastePlainText"_s).toBool());
    QVERIFY(!settings.value(u"OpenOnMouse"_s).toBool());
    QCOMPARE(m_desktop->startWithSystem, true);
    // Shown again, it shows what is stored.
    settings.setValue(u"Theme"_s, int(Theme::Light));
    m_window->showSettings();
    QCOMPARE(theme->currentData().toInt(), int(Theme::Light));
    dialog->reject();

    // The release notes come in German to a German user.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QString german = ReleaseNotesDialog::notes();
    QLocale::setDefault(QLocale::c());
    QVERIFY(german.contains(u"Willkommen bei Velmorin"_s));
    QVERIFY(ReleaseNotesDialog::notes().contains(u"Welcome to Velmorin"_s));
}

void TestMainWindow::screenshots()
{
    const QString folder = QStringLiteral(VELMORIN_ARTIFACTS_DIR);
    QVERIFY(QDir().mkpath(folder));
    m_time = QDateTime::currentDateTime().addDays(-3);
    addTexts({u"https://example.org/reports/2026/q4"_s,
              u"SELECT name, total FROM orders\nWHERE total > 100;"_s,
              u"Meeting moved to Thursday 10:30, room Aurora (2nd floor)."_s});
    m_time = QDateTime::currentDateTime().addSecs(-7200);
    addTexts({u"Kind regards,\nAnn Example"_s});
    m_time = QDateTime::currentDateTime();
    addTexts({u"npm install --save-dev prettier"_s});
    m_history->setPinned(2, true);
    m_history->setLocked(3, true);
    SnippetItemModel *snippets = m_window->snippetModel();
    snippets->addSnippet(snippets->addGroup(u"Mail"_s), u"Kind regards"_s, u"Kind regards, Ann"_s);
    m_window->resize(420, 360);
    for (const auto &[choice, name] : {std::pair{Theme::Light, "history-light.png"},
                                       std::pair{Theme::Dark, "history-dark.png"}}) {
        Theme::apply(choice);
        m_window->show();
        QVERIFY(m_window->grab().save(folder + QLatin1Char('/') + QLatin1String(name)));
    }
    m_window->searchEdit()->setText(u"re"_s);
    m_window->searchModel()->updateNow();
    QVERIFY(m_window->searchModel()->rowCount() >= 3);
    QVERIFY(m_window->grab().save(folder + u"/search-dark.png"_s));
    Theme::apply(Theme::Light);
    m_window->showSettings();
    QVERIFY(m_window->settingsDialog()->grab().save(folder + u"/settings.png"_s));
}

int main(int argc, char *argv[])
{
    TestProfile profile;
    profile.useInThisProcess();
    QApplication app(argc, argv);
    TestMainWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "testmainwindow.moc"
