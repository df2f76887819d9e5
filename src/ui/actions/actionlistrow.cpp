#include "ui/actions/actionlistrow.h"

#include "actions/actionfiles.h"
#include "ui/actions/actionlist.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QListWidgetItem>
#include <QToolButton>
#include <QVBoxLayout>

ActionListRow::ActionListRow(const QListWidgetItem *item, QWidget *parent) : QWidget(parent)
{
    const bool hidden = item->data(ActionList::HiddenRole).toBool();
    const QString path = item->data(ActionList::PathRole).toString();
    const bool builtIn = ActionFiles::isBuiltIn(path);
    // Built-in texts are in the translation catalogue; a user's are shown as written.
    const auto shown = [builtIn, item](int role) {
        const QString text = item->data(role).toString();
        return builtIn ? QCoreApplication::translate("ActionList", text.toUtf8().constData())
                       : text;
    };
    auto *title = new QLabel(shown(ActionList::TitleRole), this);
    title->setObjectName(QStringLiteral("title"));
    title->setStyleSheet(QStringLiteral("font: 10pt;"));
    if (hidden) {
        QPalette dimmed = title->palette();
        dimmed.setColor(QPalette::WindowText,
                        palette().color(QPalette::Disabled, QPalette::WindowText));
        title->setPalette(dimmed);
    }
    auto *description = new QLabel(shown(ActionList::DescriptionRole), this);
    description->setObjectName(QStringLiteral("description"));
    description->setWordWrap(true);
    description->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    QFont small = description->font();
    small.setPointSize(8);
    description->setFont(small);
    QPalette secondary = description->palette();
    secondary.setColor(QPalette::WindowText, palette().color(QPalette::PlaceholderText));
    description->setPalette(secondary);

    if (builtIn) {
        m_status = iconLabel(QStringLiteral(":/icons/images/ic_shield.svg"),
                             ActionList::tr("Built-in actions cannot be edited."));
    } else if (item->data(ActionList::UnreadableRole).toBool()) {
        m_status = iconLabel(QStringLiteral(":/icons/images/ic_error.svg"),
                             ActionList::tr("This action file cannot be read."));
    } else if (item->data(ActionList::FailedRole).toBool()) {
        m_status = iconLabel(QStringLiteral(":/icons/images/ic_error.svg"),
                             ActionList::tr("There are errors in the action script."));
    }
    const QString shortcut = item->data(ActionList::ShortcutRole).toString();
    m_shortcut = iconLabel(QStringLiteral(":/icons/images/ic_command.svg"), shortcut);
    m_shortcut->setVisible(!shortcut.isEmpty());
    m_more = new QToolButton(this);
    m_more->setObjectName(QStringLiteral("more"));
    m_more->setIcon(QIcon(QStringLiteral(":/icons/images/ic_more.svg")));
    m_more->setToolTip(ActionList::tr("More"));
    m_more->setAutoRaise(true);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(title);
    texts->addWidget(description, 1);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 4, 4, 4);
    layout->addLayout(texts, 1);
    if (m_status)
        layout->addWidget(m_status);
    layout->addWidget(m_shortcut);
    layout->addWidget(m_more);
}

QLabel *ActionListRow::iconLabel(const QString &path, const QString &toolTip)
{
    auto *label = new QLabel(this);
    label->setPixmap(QIcon(path).pixmap(16, 16));
    label->setToolTip(toolTip);
    label->setObjectName(QFileInfo(path).baseName());
    return label;
}
