#include "ui/snippets/snippetclipdialog.h"

#include "base/settings.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QVBoxLayout>

SnippetClipDialog::SnippetClipDialog(QWidget *parent)
    : QDialog(parent), m_current(new QRadioButton(tr("Current clipping"), this)),
      m_position(new QRadioButton(tr("Clipping from position"), this)),
      m_matching(new QRadioButton(tr("Clipping that matches"), this)), m_number(new QSpinBox(this)),
      m_expression(new QLineEdit(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Choose clipping type"));
    m_current->setObjectName(QStringLiteral("current"));
    m_position->setObjectName(QStringLiteral("position"));
    m_matching->setObjectName(QStringLiteral("matching"));
    m_number->setObjectName(QStringLiteral("number"));
    m_expression->setObjectName(QStringLiteral("expression"));
    m_number->setRange(1, qMax(1, Settings::keepItems()));
    m_expression->setPlaceholderText(
        tr("Enter regular expression which is matched with the clipping history"));
    m_current->setChecked(true);

    auto *group = new QGroupBox(tr("Clipping type"), this);
    auto *grid = new QGridLayout(group);
    grid->addWidget(m_current, 0, 0, 1, 2);
    grid->addWidget(m_position, 1, 0);
    grid->addWidget(m_number, 1, 1);
    grid->addWidget(m_matching, 2, 0);
    grid->addWidget(m_expression, 2, 1);
    grid->setColumnStretch(1, 1);

    // Typing into a field chooses its kind.
    connect(m_number, &QSpinBox::valueChanged, m_position,
            [this] { m_position->setChecked(true); });
    connect(m_expression, &QLineEdit::textEdited, m_matching,
            [this] { m_matching->setChecked(true); });
    for (QRadioButton *choice : {m_current, m_position, m_matching})
        connect(choice, &QRadioButton::toggled, this, &SnippetClipDialog::updateOk);
    connect(m_expression, &QLineEdit::textChanged, this, &SnippetClipDialog::updateOk);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addWidget(m_buttons);
    resize(460, sizeHint().height());
}

QString SnippetClipDialog::placeholder() const
{
    if (m_position->isChecked())
        return QStringLiteral("{CLIP:%1}").arg(m_number->value());
    if (m_matching->isChecked())
        return QStringLiteral("{CLIP:%1}").arg(m_expression->text());
    return QStringLiteral("{CLIP}");
}

void SnippetClipDialog::updateOk()
{
    // An expression that cannot match would only ever paste the placeholder itself.
    const QString expression = m_expression->text();
    const bool valid = !expression.isEmpty() && QRegularExpression(expression).isValid() &&
                       !expression.contains(QLatin1Char('}'));
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(!m_matching->isChecked() || valid);
    m_expression->setToolTip(m_matching->isChecked() && !valid && !expression.isEmpty()
                                 ? tr("The expression must be valid and must not hold \"}\".")
                                 : QString());
}
