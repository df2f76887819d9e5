#include "application.h"

#include "mainwindow.h"
#include "platform/isystemevents.h"

#include <QDebug>

Application::Application(int &argc, char **argv) : QApplication(argc, argv)
{
    installNativeEventFilter(this);
    m_systemEvents = createSystemEvents(this);
    connect(m_systemEvents, &ISystemEvents::powerResumed, this, &Application::onPowerResumed);
    connect(m_systemEvents, &ISystemEvents::terminationRequested, this, &QCoreApplication::quit);
}

Application::~Application()
{
    removeNativeEventFilter(this);
}

bool Application::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (m_systemEvents->isPowerResumeMessage(eventType, message))
        onPowerResumed();
    return false;
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    if (event->type() == QEvent::ApplicationDeactivate && m_mainWindow && !m_mainWindow->isPinned())
        m_mainWindow->hideWindow();
    return QApplication::notify(receiver, event);
}

void Application::onPowerResumed()
{
    qDebug() << "Power resumed";
    emit powerResume();
}
