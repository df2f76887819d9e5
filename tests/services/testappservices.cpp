#include "base/settings.h"
#include "clipboard/clipboardlistener.h"
#include "history/clipping.h"
#include "history/historyitemmodel.h"
#include "platform/platform.h"
#include "services/appservices.h"
#include "snippets/snippetitemmodel.h"
#include "support/fakedesktop.h"
#include "support/fakehotkeyservice.h"
#include "support/testprofile.h"
#include "sync/sync.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

// The program assembled without a window, as the windows and the tools get it: copies reach
// the history only once it is loaded, and changes reach the sync engine.
class TestAppServices final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void copiesAreRecordedOnlyOnceTheHistoryIsLoaded();
    void changesAreQueuedForSync();

private:
    static void copy(const QString &text);

    TestProfile m_profile;
    FakeHotkeyService m_hotkeys;
};

void TestAppServices::initTestCase()
{
    m_profile.useInThisProcess();
    auto *desktop = new FakeDesktop(this);
    desktop->foregroundName = QStringLiteral("editor");
    desktop->clipboardChangesWhileRead = false;
    Platform::setDesktop(desktop);
    QHotkeyPrivate::setInstance(&m_hotkeys);
    QSettings settings;
    Settings::writeDefaults(settings);
}

void TestAppServices::copy(const QString &text)
{
    auto *data = new QMimeData;
    data->setText(text);
    QGuiApplication::clipboard()->setMimeData(data);
}

void TestAppServices::copiesAreRecordedOnlyOnceTheHistoryIsLoaded()
{
    AppServices services{AppModes()};
    QSignalSpy heard(services.clipboardListener(), &ClipboardListener::changed);
    copy(QStringLiteral("before the load"));
    QTRY_COMPARE(heard.count(), 1);
    QCOMPARE(services.history()->rowCount(), 0);

    services.start();
    copy(QStringLiteral("after the load"));
    QTRY_COMPARE(services.history()->rowCount(), 1);
    QCOMPARE(services.history()->item(0)->data(Clipping::TextRole).toString(),
             QStringLiteral("after the load"));
    services.prepareToQuit();
}

void TestAppServices::changesAreQueuedForSync()
{
    AppServices services{AppModes()};
    services.start();
    // No target is chosen: nothing is synced at start, and what is queued stays queued.
    QVERIFY(services.sync()->queuedFiles().isEmpty());
    services.history()->addText(QStringLiteral("new here"), QString(), {},
                                QStringLiteral("editor"));
    QTRY_VERIFY(services.sync()->queuedFiles().contains(Sync::HistoryFile));
    const QModelIndex group = services.snippets()->addGroup(QStringLiteral("Mine"));
    services.snippets()->addSnippet(group, QStringLiteral("S"), QStringLiteral("text"));
    QTRY_VERIFY(services.sync()->queuedFiles().contains(Sync::SnippetsFile));
    services.prepareToQuit();
}

QTEST_MAIN(TestAppServices)
#include "testappservices.moc"
