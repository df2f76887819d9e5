#include "ui/shortcutdialog.h"

#include "ui/customkeysequenceedit.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

ShortcutDialog::ShortcutDialog(const QKeySequence &current, QWidget *parent)
    : QDialog(parent), m_edit(new CustomKeySequenceEdit(current, this))
{
    setWindowTitle(tr("Set shortcut"));
    auto *label = new QLabel(tr("Enter shortcut"), this);
    label->setBuddy(m_edit);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_edit);
    layout->addWidget(buttons);
    m_edit->setFocus();
}

QKeySequence ShortcutDialog::shortcut() const
{
    return m_edit->keySequence();
}
