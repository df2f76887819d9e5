#include "applicationslist.h"

#include "delaydialog.h"

#include <QContextMenuEvent>
#include <QMenu>

namespace {

// Item data of a row: one flag per rule, then the delay.
constexpr int RuleRole = Qt::UserRole;
constexpr int DelayRole = Qt::UserRole + ApplicationRules::RuleCount;
// What the list proposes when a delay is set for the first time.
constexpr int ProposedDelay = 100;

QString ruleIcon(int rule)
{
    static const char *const names[] = {"rule-exclude", "rule-no-images", "rule-plain-text",
                                        "rule-clear-style", "rule-no-expand"};
    return QStringLiteral(":/icons/images/%1.svg").arg(QLatin1String(names[rule]));
}

} // namespace

ApplicationsList::ApplicationsList(QWidget *parent)
    : QListWidget(parent), m_actionMenu(new QMenu(this))
{
    setObjectName(QStringLiteral("applicationsList"));
    setIconSize(QSize(24, 24));
    // Built when shown, so it reflects the current row and rules changed from the row's menu.
    connect(m_actionMenu, &QMenu::aboutToShow, this, &ApplicationsList::updateActionMenu);
    updateActionMenu();
}

void ApplicationsList::load()
{
    clear();
    for (const ApplicationRules::Application &application : ApplicationRules::load())
        addApplication(application);
}

void ApplicationsList::save() const
{
    ApplicationRules::save(applications());
}

QListWidgetItem *ApplicationsList::addApplication(const ApplicationRules::Application &application)
{
    auto *row = new QListWidgetItem(QIcon(application.icon), application.name, this);
    row->setData(Qt::DecorationRole, application.icon);
    for (int rule = 0; rule < ApplicationRules::RuleCount; ++rule)
        row->setData(RuleRole + rule, application.rules[rule]);
    row->setData(DelayRole, application.delay);
    return row;
}

QList<ApplicationRules::Application> ApplicationsList::applications() const
{
    QList<ApplicationRules::Application> applications;
    for (int row = 0; row < count(); ++row) {
        const QListWidgetItem *entry = item(row);
        ApplicationRules::Application application;
        application.name = entry->text();
        application.icon = entry->data(Qt::DecorationRole).value<QPixmap>();
        for (int rule = 0; rule < ApplicationRules::RuleCount; ++rule)
            application.rules[rule] = entry->data(RuleRole + rule).toBool();
        application.delay = entry->data(DelayRole).toInt();
        applications.append(application);
    }
    return applications;
}

bool ApplicationsList::hasRule(int row, ApplicationRules::Rule rule) const
{
    return item(row) && item(row)->data(RuleRole + rule).toBool();
}

void ApplicationsList::setRule(int row, ApplicationRules::Rule rule, bool on)
{
    if (item(row))
        item(row)->setData(RuleRole + rule, on);
}

int ApplicationsList::delay(int row) const
{
    return item(row) ? item(row)->data(DelayRole).toInt() : 0;
}

void ApplicationsList::setDelay(int row, int milliseconds)
{
    if (item(row))
        item(row)->setData(DelayRole, qMax(0, milliseconds));
}

void ApplicationsList::fillMenu(QMenu *menu, int row, const QStringList &texts)
{
    for (int rule = 0; rule < ApplicationRules::RuleCount; ++rule) {
        QAction *action = menu->addAction(QIcon(ruleIcon(rule)), texts.at(rule));
        action->setCheckable(true);
        action->setChecked(hasRule(row, ApplicationRules::Rule(rule)));
        action->setEnabled(row >= 0);
        connect(action, &QAction::toggled, this,
                [this, row, rule](bool on) { setRule(row, ApplicationRules::Rule(rule), on); });
    }
    QAction *delayAction =
        menu->addAction(QIcon(QStringLiteral(":/icons/images/rule-delay.svg")), texts.at(5));
    delayAction->setCheckable(true);
    delayAction->setChecked(delay(row) > 0);
    delayAction->setEnabled(row >= 0);
    connect(delayAction, &QAction::triggered, this, [this, row] { editDelay(row); });
}

QMenu *ApplicationsList::createContextMenu(int row, QWidget *parent)
{
    auto *menu = new QMenu(parent);
    fillMenu(menu, row,
             {tr("Don't add copied items to history"), tr("Never copy images to clipboard"),
              tr("Always copy as plain text only"), tr("Clear style from text"),
              tr("Do not expand keywords"), tr("Delay text expansion for %1 ms").arg(delay(row))});
    return menu;
}

void ApplicationsList::updateActionMenu()
{
    m_actionMenu->clear();
    const int row = currentRow();
    fillMenu(m_actionMenu, row,
             {tr("Exclude from history"), tr("Ignore images"), tr("Plain text only"),
              tr("Clear style"), tr("Don't expand keywords"), tr("Set text expansion delay...")});
    m_actionMenu->addSeparator();
    QAction *remove =
        m_actionMenu->addAction(QIcon(QStringLiteral(":/icons/images/remove.svg")), tr("Remove"));
    remove->setEnabled(row >= 0);
    connect(remove, &QAction::triggered, this, &ApplicationsList::removeCurrent);
}

void ApplicationsList::contextMenuEvent(QContextMenuEvent *event)
{
    const int row = indexAt(event->pos()).row();
    if (row < 0)
        return;
    setCurrentRow(row);
    QMenu *menu = createContextMenu(row, this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void ApplicationsList::editDelay(int row)
{
    if (!item(row))
        return;
    auto *dialog = new DelayDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setDelay(delay(row) > 0 ? delay(row) : ProposedDelay);
    // The row is looked up again when the dialog closes: the list may have changed meanwhile.
    QPersistentModelIndex index = model()->index(row, 0);
    connect(dialog, &QDialog::accepted, this, [this, dialog, index] {
        if (index.isValid())
            setDelay(index.row(), dialog->delay());
    });
    dialog->open();
}

void ApplicationsList::removeCurrent()
{
    delete takeItem(currentRow());
}
