#include "ui/settings/settingsdialog.h"

#include "base/settings.h"
#include "base/settingsevents.h"
#include "maintenance/crashreports.h"
#include "platform/platform.h"
#include "services/appservices.h"
#include "snippets/snippetitemmodel.h"
#include "ui/actions/actionlist.h"
#include "ui/customkeysequenceedit.h"
#include "ui/settings/applicationslist.h"
#include "ui/settings/syncsettingspage.h"
#include "ui/snippets/snippetseditor.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

SettingsDialog::SettingsDialog(AppServices *services, QWidget *parent)
    : QDialog(parent), m_snippets(services ? services->snippets() : nullptr),
      m_events(services ? services->settingsEvents() : nullptr), m_pages(new QTabWidget(this))
{
    setWindowTitle(tr("Velmorin Settings"));
    setObjectName(QStringLiteral("settingsDialog"));
    m_pages->addTab(createGeneralPage(), tr("General"));
    m_pages->addTab(createHistoryPage(), tr("History"));
    m_pages->addTab(createShortcutsPage(), tr("Shortcuts")); // index 2: showShortcutsPage()
    m_pages->addTab(createApplicationsPage(), tr("Applications"));
    m_pages->addTab(createActionsPage(), tr("Actions"));
    if (m_snippets)
        m_pages->insertTab(m_pages->count() - 1, createSnippetsPage(), tr("Snippets"));
    if (services) {
        m_syncPage = new SyncSettingsPage(services, this);
        m_pages->addTab(m_syncPage, tr("Sync"));
        connect(m_actions, &ActionList::actionFilesEdited, m_events,
                &SettingsEvents::notifyActionFilesEdited);
        connect(m_actions, &ActionList::actionsChanged, m_events,
                &SettingsEvents::notifyActionsChanged);
    }

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(this, &QDialog::accepted, this, &SettingsDialog::save);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    layout->addWidget(buttons);
    resize(680, 480);
}

QWidget *SettingsDialog::createGeneralPage()
{
    auto *page = new QWidget(this);
    m_startAutomatically = new QCheckBox(tr("Start with the system"), page);
    m_openOnMouse = new QCheckBox(tr("Open the paste window at the mouse"), page);
    m_pastePlainText = new QCheckBox(tr("Paste as plain text by default"), page);
    m_clearHistory = new QCheckBox(tr("Clear the history on quit (locked items stay)"), page);
    m_sendDumps = new QCheckBox(tr("Send crash reports"), page);
    m_writeDebugLog = new QCheckBox(tr("Write a debug log"), page);
    auto *debugHint = new QLabel(tr("The debug log is written from the next start on."), page);
    debugHint->setEnabled(false);
    m_theme = new QComboBox(page);
    m_theme->addItem(tr("Light"), Theme::Light);
    m_theme->addItem(tr("Dark"), Theme::Dark);
    m_theme->addItem(tr("Follow the system"), Theme::FollowSystem);

    auto *theme = new QFormLayout;
    theme->addRow(tr("Theme:"), m_theme);
    auto *layout = new QVBoxLayout(page);
    layout->addLayout(theme);
    for (QWidget *widget :
         {m_startAutomatically, m_openOnMouse, m_pastePlainText, m_clearHistory, m_sendDumps})
        layout->addWidget(widget);
    if (CrashReports::configuredUploadUrl().isEmpty()) {
        // A box that does nothing would mislead; the line says why it cannot be ticked.
        m_sendDumps->setEnabled(false);
        auto *noAddress = new QLabel(tr("This build has no address to send crash reports to; "
                                        "they stay on this computer."),
                                     page);
        noAddress->setObjectName(QStringLiteral("noReportAddress"));
        noAddress->setEnabled(false);
        noAddress->setWordWrap(true);
        layout->addWidget(noAddress);
    }
    layout->addWidget(m_writeDebugLog);
    layout->addWidget(debugHint);
    layout->addStretch(1);
    return page;
}

QWidget *SettingsDialog::createShortcutsPage()
{
    auto *page = new QWidget(this);
    m_shortcut = new CustomKeySequenceEdit(page);
    m_shortcutPlainText = new CustomKeySequenceEdit(page);
    m_shortcutPasteNext = new CustomKeySequenceEdit(page);
    m_shortcut->setAccessibleName(tr("Open the paste window"));
    m_shortcutPlainText->setAccessibleName(tr("Paste as plain text"));
    m_shortcutPasteNext->setAccessibleName(tr("Paste the next item"));
    auto *layout = new QFormLayout(page);
    layout->addRow(tr("Open the paste window:"),
                   CustomKeySequenceEdit::withClearButton(m_shortcut));
    layout->addRow(tr("Paste as plain text:"),
                   CustomKeySequenceEdit::withClearButton(m_shortcutPlainText));
    layout->addRow(tr("Paste the next item:"),
                   CustomKeySequenceEdit::withClearButton(m_shortcutPasteNext));
    auto *hint = new QLabel(tr("Snippets and actions get their own shortcuts on their pages. Linux "
                               "terminals keep Ctrl+Shift+V for their own paste: to open the paste "
                               "window there, choose other keys."),
                            page);
    hint->setWordWrap(true);
    hint->setEnabled(false);
    layout->addRow(hint);
    return page;
}

QWidget *SettingsDialog::createPathRow(QLineEdit *edit, const QString &caption)
{
    auto *row = new QWidget(edit->parentWidget());
    auto *browse = new QToolButton(row);
    browse->setText(tr("Browse..."));
    connect(browse, &QToolButton::clicked, this, [this, edit, caption] {
        const QString path =
            QFileDialog::getSaveFileName(this, caption, edit->text(), tr("JSON files (*.json)"),
                                         nullptr, QFileDialog::DontConfirmOverwrite);
        if (!path.isEmpty())
            edit->setText(QDir::toNativeSeparators(path));
    });
    edit->setParent(row);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit, 1);
    layout->addWidget(browse);
    return row;
}

QWidget *SettingsDialog::createSnippetsPage()
{
    auto *page = new QWidget(this);
    m_requireSpace = new QCheckBox(tr("Only expand keyword after space is pressed"), page);
    m_snippetPath = new QLineEdit(page);
    m_snippetPath->setAccessibleName(tr("Snippet file"));
    auto *file = new QFormLayout;
    file->addRow(tr("Snippet file:"), createPathRow(m_snippetPath, tr("Snippet file")));
    auto *pathHint = new QLabel(tr("A new file place applies from the next start."), page);
    pathHint->setEnabled(false);
    file->addRow(pathHint);
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(m_requireSpace);
    layout->addLayout(file);
    m_snippetsEditor = new SnippetsEditor(m_snippets, page);
    layout->addWidget(m_snippetsEditor, 1);
    layout->addWidget(createSnippetsRow(page));
    return page;
}

QWidget *SettingsDialog::createSnippetsRow(QWidget *page)
{
    auto *row = new QWidget(page);
    auto *exportButton = new QPushButton(tr("Export snippets..."), row);
    exportButton->setObjectName(QStringLiteral("exportSnippets"));
    auto *importButton = new QPushButton(tr("Import snippets..."), row);
    importButton->setObjectName(QStringLiteral("importSnippets"));
    connect(exportButton, &QPushButton::clicked, this, &SettingsDialog::exportSnippets);
    connect(importButton, &QPushButton::clicked, this, &SettingsDialog::importSnippets);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch(1);
    layout->addWidget(exportButton);
    layout->addWidget(importButton);
    return row;
}

void SettingsDialog::exportSnippets()
{
    const QString proposed = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) +
                             QLatin1Char('/') +
                             QStringLiteral("Snippets-%1.json")
                                 .arg(QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd")));
    const QString path = QFileDialog::getSaveFileName(this, tr("Save snippets"), proposed,
                                                      tr("JSON files (*.json);;All files (*.*);"));
    if (!path.isEmpty() && !m_snippets->exportTo(path)) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"),
                             tr("Writing the snippets file failed: ") + path);
    }
}

void SettingsDialog::importSnippets()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Load snippets"), QString(),
                                                      tr("JSON files (*.json);;All files (*.*);"));
    if (!path.isEmpty() && m_snippets->importFrom(path) < 0) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"),
                             tr("Failed to parse the snippets file: ") + path);
    }
}

QWidget *SettingsDialog::createHistoryPage()
{
    auto *page = new QWidget(this);
    m_keepItems = new QSpinBox(page);
    m_keepItems->setRange(1, 100000);
    m_ignoreLength = new QSpinBox(page);
    m_ignoreLength->setRange(0, 1000);
    m_ignoreLength->setSuffix(tr(" characters"));
    m_ignoreSize = new QSpinBox(page);
    m_ignoreSize->setRange(1, 100000);
    m_ignoreSize->setSuffix(tr(" × 1024 characters"));
    m_includeImages = new QCheckBox(tr("Keep copied images"), page);
    m_historyPath = new QLineEdit(page);
    m_historyPath->setAccessibleName(tr("History file"));
    auto *pathHint = new QLabel(tr("A new file place applies from the next start."), page);
    pathHint->setEnabled(false);

    auto *layout = new QFormLayout(page);
    layout->addRow(tr("Clippings to keep:"), m_keepItems);
    layout->addRow(tr("Ignore texts shorter than:"), m_ignoreLength);
    layout->addRow(tr("Ignore texts longer than:"), m_ignoreSize);
    layout->addRow(m_includeImages);
    layout->addRow(tr("History file:"), createPathRow(m_historyPath, tr("History file")));
    layout->addRow(pathHint);
    return page;
}

QWidget *SettingsDialog::createApplicationsPage()
{
    auto *page = new QWidget(this);
    m_applications = new ApplicationsList(page);
    auto *hint =
        new QLabel(tr("Applications appear here once you copy something in them. "
                      "Right-click one to change how its copies are treated and which keys paste "
                      "into it."),
                   page);
    hint->setWordWrap(true);
    auto *actions = new QToolButton(page);
    actions->setText(tr("Rules"));
    actions->setMenu(m_applications->actionMenu());
    actions->setPopupMode(QToolButton::InstantPopup);

    auto *layout = new QVBoxLayout(page);
    layout->addWidget(hint);
    layout->addWidget(m_applications, 1);
    layout->addWidget(actions, 0, Qt::AlignRight);
    return page;
}

QWidget *SettingsDialog::createActionsPage()
{
    auto *page = new QWidget(this);
    m_actions = new ActionList(page);
    auto *hint = new QLabel(tr("Actions change a clipping's text with a small script. Run them "
                               "from a clipping's menu or give them a shortcut. Changes here "
                               "apply at once."),
                            page);
    hint->setWordWrap(true);
    auto *add = new QToolButton(page);
    add->setObjectName(QStringLiteral("newAction"));
    add->setText(tr("New action"));
    connect(add, &QToolButton::clicked, m_actions, &ActionList::newAction);

    auto *layout = new QVBoxLayout(page);
    layout->addWidget(hint);
    layout->addWidget(m_actions, 1);
    layout->addWidget(add, 0, Qt::AlignRight);
    return page;
}

void SettingsDialog::load()
{
    m_writeDebugLog->setChecked(Settings::writeDebugLog());
    const auto sequence = [](const char *key) {
        return QKeySequence::fromString(Settings::value(QLatin1String(key)).toString());
    };
    m_shortcut->setKeySequence(sequence(SettingsKey::Shortcut));
    m_shortcutPlainText->setKeySequence(sequence(SettingsKey::ShortcutPlainText));
    m_shortcutPasteNext->setKeySequence(sequence(SettingsKey::ShortcutPasteNext));
    if (m_requireSpace)
        m_requireSpace->setChecked(Settings::value(SettingsKey::RequireSpace).toBool());
    m_startAutomatically->setChecked(Settings::value(SettingsKey::StartAutomatically).toBool());
    m_keepItems->setValue(Settings::keepItems());
    m_ignoreLength->setValue(Settings::ignoreLength());
    m_ignoreSize->setValue(Settings::ignoreSize());
    m_includeImages->setChecked(Settings::includeImages());
    m_clearHistory->setChecked(Settings::clearHistory());
    m_openOnMouse->setChecked(Settings::value(SettingsKey::OpenOnMouse).toBool());
    m_sendDumps->setChecked(Settings::value(SettingsKey::SendDumps).toBool());
    m_pastePlainText->setChecked(Settings::value(SettingsKey::PastePlainText).toBool());
    m_theme->setCurrentIndex(m_theme->findData(Settings::value(SettingsKey::Theme).toInt()));
    m_historyPath->setText(
        QDir::toNativeSeparators(Settings::value(SettingsKey::HistoryFilePath).toString()));
    if (m_snippetPath)
        m_snippetPath->setText(
            QDir::toNativeSeparators(Settings::value(SettingsKey::SnippetFilePath).toString()));
    m_applications->load();
    if (m_syncPage)
        m_syncPage->load();
}

void SettingsDialog::save()
{
    Settings::setWriteDebugLog(m_writeDebugLog->isChecked());
    // The limits are stored as texts, as they always have been.
    Settings::setValue(SettingsKey::KeepItems, QString::number(m_keepItems->value()));
    Settings::setValue(SettingsKey::IgnoreLength, QString::number(m_ignoreLength->value()));
    Settings::setValue(SettingsKey::IgnoreSize, QString::number(m_ignoreSize->value()));
    Settings::setValue(SettingsKey::IncludeImages, m_includeImages->isChecked());
    Settings::setValue(SettingsKey::ClearHistory, m_clearHistory->isChecked());
    Settings::setValue(SettingsKey::Shortcut, m_shortcut->keySequence().toString());
    Settings::setValue(SettingsKey::ShortcutPlainText,
                       m_shortcutPlainText->keySequence().toString());
    Settings::setValue(SettingsKey::ShortcutPasteNext,
                       m_shortcutPasteNext->keySequence().toString());
    if (m_requireSpace)
        Settings::setValue(SettingsKey::RequireSpace, m_requireSpace->isChecked());
    Settings::setValue(SettingsKey::StartAutomatically, m_startAutomatically->isChecked());
    Settings::setValue(SettingsKey::OpenOnMouse, m_openOnMouse->isChecked());
    Settings::setValue(SettingsKey::SendDumps, m_sendDumps->isChecked());
    Settings::setValue(SettingsKey::PastePlainText, m_pastePlainText->isChecked());
    Settings::setValue(SettingsKey::Theme, m_theme->currentData().toInt());
    if (!m_historyPath->text().trimmed().isEmpty())
        Settings::setValue(SettingsKey::HistoryFilePath,
                           QDir::fromNativeSeparators(m_historyPath->text().trimmed()));
    if (m_snippetPath && !m_snippetPath->text().trimmed().isEmpty())
        Settings::setValue(SettingsKey::SnippetFilePath,
                           QDir::fromNativeSeparators(m_snippetPath->text().trimmed()));
    Platform::applyStartWithSystem(m_startAutomatically->isChecked());
    m_applications->save();
    const bool encryptionChanged = m_syncPage && m_syncPage->save();
    if (m_events)
        m_events->notifyChanged();
    if (encryptionChanged)
        emit this->encryptionChanged();
}

void SettingsDialog::showShortcutsPage()
{
    m_pages->setCurrentIndex(2);
}

void SettingsDialog::showSnippet(const QModelIndex &item)
{
    if (!m_snippetsEditor)
        return;
    m_pages->setCurrentWidget(m_snippetsEditor->parentWidget());
    m_snippetsEditor->select(item);
}

void SettingsDialog::showEvent(QShowEvent *event)
{
    // Opening the dialog again shows what is stored, not what was left unapplied.
    load();
    QDialog::showEvent(event);
}
