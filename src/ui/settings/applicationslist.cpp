#include "ui/settings/applicationslist.h"

#include "ui/settings/delaydialog.h"

#include <QActionGroup>
#include <QContextMenuEvent>
#include <QMenu>

namespace {

// Item data of a row: one flag per rule, then the delay and the paste keys.
constexpr int RuleRole = Qt::UserRole;
constexpr int DelayRole = Qt::UserRole + ApplicationRules::RuleCount;
constexpr int PasteKeyRole = DelayRole + 1;
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
    row->setData(PasteKeyRole, application.pasteKey);
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
        application.pasteKey = pasteKey(row);
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

PasteKeys::Key ApplicationsList::pasteKey(int row) const
{
    return item(row) ? PasteKeys::Key(item(row)->data(PasteKeyRole).toInt()) : PasteKeys::Automatic;
}

void ApplicationsList::setPasteKey(int row, PasteKeys::Key key)
{
    if (item(row))
        item(row)->setData(PasteKeyRole, key);
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
    addPasteKeyMenu(menu, row);
}

void ApplicationsList::addPasteKeyMenu(QMenu *menu, int row)
{
    // Terminals are known by their window class; a program the list of terminals misses, or
    // one with keys of its own, gets its keys here.
    QMenu *keys = menu->addMenu(tr("Paste with"));
    keys->setEnabled(row >= 0);
    auto *group = new QActionGroup(keys);
    const QList<QPair<PasteKeys::Key, QString>> choices{
        {PasteKeys::Automatic, tr("Automatic (Shift+Insert in terminals, else Ctrl+V)")},
        {PasteKeys::ControlV, PasteKeys::name(PasteKeys::ControlV)},
        {PasteKeys::ShiftInsert, PasteKeys::name(PasteKeys::ShiftInsert)},
        {PasteKeys::ControlShiftV, PasteKeys::name(PasteKeys::ControlShiftV)},
    };
    for (const auto &[key, text] : choices) {
        QAction *action = keys->addAction(text);
        action->setCheckable(true);
        action->setChecked(pasteKey(row) == key);
        group->addAction(action);
        connect(action, &QAction::triggered, this,
                [this, row, key = key] { setPasteKey(row, key); });
    }
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
