#include "settingsdialog.h"

#include "settings.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

SettingsDialog::SettingsDialog(QWidget *parent) : QDialog(parent), m_pages(new QTabWidget(this))
{
    setWindowTitle(tr("Velmorin Settings"));
    setObjectName(QStringLiteral("settingsDialog"));
    m_pages->addTab(createGeneralPage(), tr("General"));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(this, &QDialog::accepted, this, &SettingsDialog::save);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    layout->addWidget(buttons);
    resize(520, 360);
}

QWidget *SettingsDialog::createGeneralPage()
{
    auto *page = new QWidget(this);
    m_writeDebugLog = new QCheckBox(tr("Write a debug log"), page);
    auto *debugHint = new QLabel(tr("The debug log is written from the next start on."), page);
    debugHint->setEnabled(false);

    auto *layout = new QVBoxLayout(page);
    layout->addWidget(m_writeDebugLog);
    layout->addWidget(debugHint);
    layout->addStretch(1);
    return page;
}

void SettingsDialog::load()
{
    m_writeDebugLog->setChecked(Settings::writeDebugLog());
}

void SettingsDialog::save()
{
    Settings::setWriteDebugLog(m_writeDebugLog->isChecked());
}

void SettingsDialog::showEvent(QShowEvent *event)
{
    // Opening the dialog again shows what is stored, not what was left unapplied.
    load();
    QDialog::showEvent(event);
}
