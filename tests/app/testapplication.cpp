#include "app/application.h"
#include "services/appservices.h"
#include "support/testprofile.h"
#include "ui/mainwindow.h"
#include "ui/search/searchedit.h"

#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

#ifdef Q_OS_WIN
#include <windows.h>
#endif

// The application object as the program builds it: losing the focus to another application
// hides the paste window unless it is pinned open.
class TestApplication final : public QObject
{
    Q_OBJECT

private slots:
    void aResumeIsToldOnceAndNoMessageIsConsumed();
    void resizeCursorFollowsTheMouseIntoChildren();
};

void TestApplication::aResumeIsToldOnceAndNoMessageIsConsumed()
{
    auto *app = qobject_cast<Application *>(QCoreApplication::instance());
    QSignalSpy resumed(app, &Application::powerResume);
    int fakeEvent = 0;
    QVERIFY(!app->nativeEventFilter("xcb_generic_event_t", &fakeEvent, nullptr));
    QCOMPARE(resumed.count(), 0);
#ifdef Q_OS_WIN
    // A resume as Windows announces it to the program's windows.
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    PostMessageW(HWND(window.winId()), WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC, 0);
    QTRY_COMPARE(resumed.count(), 1);
#endif
}

void TestApplication::resizeCursorFollowsTheMouseIntoChildren()
{
    auto *app = qobject_cast<Application *>(QCoreApplication::instance());
    AppServices services{AppModes()};
    MainWindow window(&services);
    app->setMainWindow(&window);
    QWidget secondary;
    app->setSecondaryWindow(&secondary);
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    // Over the window's own border: a resize cursor.
    QMouseEvent atEdge(QEvent::MouseMove, QPointF(2, 150), window.mapToGlobal(QPointF(2, 150)),
                       Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &atEdge);
    QCOMPARE(window.cursor().shape(), Qt::SizeHorCursor);

    // On into a child, which gets the move instead: the window's cursor is normal again.
    QWidget *child = window.searchEdit();
    QMouseEvent inside(QEvent::MouseMove, QPointF(5, 5), child->mapToGlobal(QPointF(5, 5)),
                       Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(child, &inside);
    QCOMPARE(window.cursor().shape(), Qt::ArrowCursor);
    app->setSecondaryWindow(nullptr);
}

int main(int argc, char *argv[])
{
    // The main window loads the history: keep it away from the real user's files.
    TestProfile profile;
    profile.useInThisProcess();
    Application app(argc, argv);
    TestApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "testapplication.moc"
