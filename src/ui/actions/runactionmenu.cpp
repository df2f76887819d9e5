#include "ui/actions/runactionmenu.h"

#include "actions/actionfiles.h"

#include <QCoreApplication>

RunActionMenu::RunActionMenu(QWidget *parent) : QMenu(tr("Run action"), parent)
{
    setObjectName(QStringLiteral("runActionMenu"));
    setIcon(QIcon(QStringLiteral(":/icons/images/action.png")));
    connect(this, &QMenu::aboutToShow, this, &RunActionMenu::fill);
    fill();
}

void RunActionMenu::fill()
{
    clear();
    const QIcon icon(QStringLiteral(":/icons/images/action.png"));
    for (const auto &[path, title] : ActionFiles::menuEntries()) {
        const QString shown = QCoreApplication::translate("ActionList", title.toUtf8().constData());
        addAction(icon, shown, this,
                  [this, path = path, shown] { emit actionChosen(path, shown); });
    }
    setEnabled(!isEmpty());
}
