#include "ui/settings/delaydialog.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

DelayDialog::DelayDialog(QWidget *parent)
    : QDialog(parent), m_slider(new QSlider(Qt::Horizontal)), m_spinBox(new QSpinBox)
{
    setWindowTitle(tr("Set delay"));
    resize(400, 129);

    m_slider->setRange(0, 2000);
    m_slider->setSingleStep(10);
    m_slider->setPageStep(100);
    m_slider->setTickPosition(QSlider::TicksBelow);
    m_slider->setTickInterval(100);
    m_spinBox->setRange(0, 2000);
    m_spinBox->setSuffix(tr("ms"));
    connect(m_slider, &QSlider::valueChanged, m_spinBox, &QSpinBox::setValue);
    connect(m_spinBox, &QSpinBox::valueChanged, m_slider, &QSlider::setValue);

    auto *group = new QGroupBox(tr("Text expansion delay (in ms)"), this);
    auto *row = new QHBoxLayout(group);
    row->addWidget(m_slider, 1);
    row->addWidget(m_spinBox);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addWidget(buttons);
}

int DelayDialog::delay() const
{
    return m_spinBox->value();
}

void DelayDialog::setDelay(int milliseconds)
{
    m_spinBox->setValue(milliseconds);
}
