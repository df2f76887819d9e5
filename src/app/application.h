#pragma once

#include "ui/mainwindow.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>

class ISystemEvents;
class QMouseEvent;

// The program's application object. It hears about resume from sleep and about the session
// asking the program to end, and hides the paste window when another application takes the
// focus (unless the window is pinned open).
class Application final : public QApplication, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    Application(int &argc, char **argv);
    ~Application() override;

    void setMainWindow(MainWindow *window) { m_mainWindow = window; }
    MainWindow *mainWindow() const { return m_mainWindow; }
    void setSecondaryWindow(QWidget *window) { m_secondaryWindow = window; }
    QWidget *secondaryWindow() const { return m_secondaryWindow; }

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    bool notify(QObject *receiver, QEvent *event) override;

signals:
    void powerResume();
    // The session or a signal asks the program to end; it quits unless still starting.
    void terminationRequested();

private:
    void onPowerResumed();
    void updateResizeCursor(QObject *receiver, QMouseEvent *event);

    QPointer<MainWindow> m_mainWindow;
    QPointer<QWidget> m_secondaryWindow;
    ISystemEvents *m_systemEvents = nullptr;
    QElapsedTimer m_sinceResumeMessage;
};
