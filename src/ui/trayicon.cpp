#include "ui/trayicon.h"

#include "ui/actions/runactionmenu.h"

#include <QCursor>
#include <QMenu>

TrayIcon::TrayIcon(QObject *parent)
    : QSystemTrayIcon(QIcon(QStringLiteral(":/icons/images/velmorin.svg")), parent)
{
    setToolTip(tr("Velmorin"));
    connect(this, &QSystemTrayIcon::activated, this, &TrayIcon::onActivated);
}

void TrayIcon::setClippingCount(int count)
{
    setToolTip(tr("Velmorin") + QLatin1Char('\n') + tr("%n clipping(s)", nullptr, count));
}

void TrayIcon::onActivated(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::Context)
        showContextMenu();
    else
        emit toggleRequested();
}

void TrayIcon::showContextMenu()
{
    QMenu menu;
    menu.setObjectName(QStringLiteral("trayMenu"));
    const QAction *show = menu.addAction(tr("Show"));
    const QAction *settings = menu.addAction(tr("Settings"));
    auto *actions = new RunActionMenu(&menu);
    connect(actions, &RunActionMenu::actionChosen, this, &TrayIcon::runActionRequested);
    menu.addMenu(actions);
    menu.addSeparator();
    const QAction *monitor = menu.addAction(tr("Clipboard monitor"));
    const QAction *notes = menu.addAction(tr("What's new"));
    menu.addSeparator();
    const QAction *quit = menu.addAction(tr("Quit"));

    const QRect area = geometry();
    const QAction *chosen = menu.exec(area.isValid() ? area.center() : QCursor::pos());
    if (chosen == show)
        emit showRequested();
    else if (chosen == settings)
        emit settingsRequested();
    else if (chosen == monitor)
        emit monitorRequested();
    else if (chosen == notes)
        emit releaseNotesRequested();
    else if (chosen == quit)
        emit quitRequested();
}
