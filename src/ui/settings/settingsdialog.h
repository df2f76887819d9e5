#pragma once

#include <QDialog>

class ActionList;
class ApplicationsList;
class CustomKeySequenceEdit;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;
class QTabWidget;
class SnippetItemModel;
class SnippetsEditor;
class AppServices;
class SettingsEvents;
class SyncSettingsPage;

// The settings of the program, a page per area. Changes are written when the dialog is accepted,
// and the parts that keep copies of them are told to read them again.
class SettingsDialog final : public QDialog
{
    Q_OBJECT

public:
    // snippets: the tree that the export and import commands work on; none hides them.
    // sync: the engine the sync page drives; none hides the page.
    // Without services, only the pages that need no running program.
    explicit SettingsDialog(AppServices *services = nullptr, QWidget *parent = nullptr);

    void load();
    void save();
    // Opens the snippets page at the snippet or group.
    void showSnippet(const QModelIndex &item);
    void showShortcutsPage();

signals:
    // Accepted with other encryption settings: everything online must be written again.
    void encryptionChanged();

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *createGeneralPage();
    QWidget *createHistoryPage();
    QWidget *createShortcutsPage();
    QWidget *createPathRow(QLineEdit *edit, const QString &caption);
    QWidget *createApplicationsPage();
    QWidget *createActionsPage();

    SnippetItemModel *m_snippets;
    SettingsEvents *m_events;
    QTabWidget *m_pages;
    QWidget *createSnippetsPage();
    QWidget *createSnippetsRow(QWidget *page);
    void exportSnippets();
    void importSnippets();

    QCheckBox *m_writeDebugLog = nullptr;
    CustomKeySequenceEdit *m_shortcut = nullptr;
    CustomKeySequenceEdit *m_shortcutPlainText = nullptr;
    CustomKeySequenceEdit *m_shortcutPasteNext = nullptr;
    QCheckBox *m_requireSpace = nullptr;
    QCheckBox *m_startAutomatically = nullptr;
    QSpinBox *m_keepItems = nullptr;
    QSpinBox *m_ignoreLength = nullptr;
    QSpinBox *m_ignoreSize = nullptr;
    QCheckBox *m_includeImages = nullptr;
    QCheckBox *m_clearHistory = nullptr;
    QCheckBox *m_openOnMouse = nullptr;
    QCheckBox *m_sendDumps = nullptr;
    QCheckBox *m_pastePlainText = nullptr;
    QComboBox *m_theme = nullptr;
    QLineEdit *m_historyPath = nullptr;
    QLineEdit *m_snippetPath = nullptr;
    ApplicationsList *m_applications = nullptr;
    ActionList *m_actions = nullptr;
    SnippetsEditor *m_snippetsEditor = nullptr;
    SyncSettingsPage *m_syncPage = nullptr;
};
