#include "app/application.h"

#include "platform/isystemevents.h"
#include "ui/framelesshelper.h"
#include "ui/mainwindow.h"

#include <QDebug>
#include <QMenu>
#include <QMouseEvent>

Application::Application(int &argc, char **argv) : QApplication(argc, argv)
{
    installNativeEventFilter(this);
    m_systemEvents = createSystemEvents(this);
    connect(m_systemEvents, &ISystemEvents::powerResumed, this, &Application::onPowerResumed);
    connect(m_systemEvents, &ISystemEvents::terminationRequested, this,
            &Application::terminationRequested);
    connect(this, &Application::terminationRequested, this, &QCoreApplication::quit);
}

Application::~Application()
{
    removeNativeEventFilter(this);
}

bool Application::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (!m_systemEvents->isPowerResumeMessage(eventType, message))
        return false;
    // Windows hands one resume to each top-level window, and the filter sees a posted message
    // twice (in the event loop, then in the window): one resume starts one sync.
    if (!m_sinceResumeMessage.isValid() || m_sinceResumeMessage.elapsed() > 10000)
        onPowerResumed();
    m_sinceResumeMessage.start();
    return false;
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    if (event->type() == QEvent::ApplicationDeactivate && m_mainWindow && !m_mainWindow->isPinned())
        m_mainWindow->hideWindow();
    if (event->type() == QEvent::MouseMove)
        updateResizeCursor(receiver, static_cast<QMouseEvent *>(event));
    return QApplication::notify(receiver, event);
}

void Application::updateResizeCursor(QObject *receiver, QMouseEvent *event)
{
    auto *widget = qobject_cast<QWidget *>(receiver);
    if (!widget || !m_mainWindow || !m_secondaryWindow || qobject_cast<QMenu *>(widget))
        return;
    // Children see the move first; the frameless window under them decides the cursor.
    QWidget *window = widget;
    while (window && window != m_mainWindow && window != m_secondaryWindow)
        window = window->parentWidget();
    if (!window)
        return;
    if (auto *helper = window->findChild<FramelessHelper *>(QString(), Qt::FindDirectChildrenOnly))
        helper->updateCursorShape(widget->mapTo(window, event->position().toPoint()));
}

void Application::onPowerResumed()
{
    qDebug() << "Power resumed";
    emit powerResume();
}
