#pragma once

#include <QDialog>

class ApplicationsList;
class QCheckBox;
class QSpinBox;
class QTabWidget;

// The settings of the program, a page per area. Changes are written when the dialog is accepted,
// and the parts that keep copies of them are told to read them again.
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
    QWidget *createHistoryPage();
    QWidget *createApplicationsPage();

    QTabWidget *m_pages;
    QCheckBox *m_writeDebugLog = nullptr;
    QSpinBox *m_keepItems = nullptr;
    QSpinBox *m_ignoreLength = nullptr;
    QSpinBox *m_ignoreSize = nullptr;
    QCheckBox *m_includeImages = nullptr;
    QCheckBox *m_clearHistory = nullptr;
    ApplicationsList *m_applications = nullptr;
};
