#pragma once

#include <QDialog>

class QCheckBox;
class QTabWidget;

// The settings of the program, a page per area. Changes are written when the dialog is accepted.
class SettingsDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit SettingsDialog(QWidget *parent = nullptr);

    void load();
    void save();

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *createGeneralPage();

    QTabWidget *m_pages;
    QCheckBox *m_writeDebugLog = nullptr;
};
