#include "ui/settings/syncsettingspage.h"

#include "base/relativetime.h"
#include "base/secrets.h"
#include "base/settings.h"
#include "services/appservices.h"
#include "sync/remote/syncgoogledrive.h"
#include "sync/sync.h"
#include "sync/synclocalfolder.h"
#include "ui/settings/clientitemdelegate.h"
#include "ui/settings/synclogdialog.h"

#include <QCheckBox>
#include <QDebug>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace {

QLabel *wrappedLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setWordWrap(true);
    return label;
}

} // namespace

SyncSettingsPage::SyncSettingsPage(AppServices *services, QWidget *parent)
    : QWidget(parent), m_services(services), m_sync(services->sync()),
      m_stack(new QStackedWidget(this)), m_refresh(new QTimer(this))
{
    setObjectName(QStringLiteral("syncPage"));
    m_choosePage = createChoosePage();
    m_waitPage = createWaitPage();
    m_syncPage = createSyncPage();
    for (QWidget *page : {m_choosePage, m_waitPage, m_syncPage})
        m_stack->addWidget(page);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_stack);

    connect(m_sync, &Sync::syncInitialized, this, &SyncSettingsPage::onInitialized);
    connect(m_sync, &Sync::syncStatus, this, &SyncSettingsPage::updateStatus);
    connect(m_services->notifier(), &Notifier::status, this,
            &SyncSettingsPage::updateNotifierState);
    connect(m_services->notifier(), &Notifier::clientList, this, &SyncSettingsPage::showClients);
    connect(m_services->googleDrive(), &SyncGoogleDrive::authorisationFailed, this,
            [this](const QString &why) { m_chooseError->setText(why); });
    connect(this, &SyncSettingsPage::syncNow, m_sync, &Sync::syncAll);
    // The relative time of the last success moves on while the page is open.
    m_refresh->setInterval(30000);
    connect(m_refresh, &QTimer::timeout, this, &SyncSettingsPage::updateLastSuccess);
    m_refresh->start();
    load();
}

QWidget *SyncSettingsPage::createChoosePage()
{
    auto *page = new QWidget(this);
    auto *intro = wrappedLabel(
        tr("Keep your history, snippets and actions the same on all your computers."), page);
    auto *folder = new QPushButton(tr("Use a shared folder"), page);
    folder->setObjectName(QStringLiteral("useLocalFolder"));
    auto *folderHint = wrappedLabel(
        tr("Point every computer at the same folder: on a network drive, or in a folder that a "
           "file-sharing service such as Dropbox keeps the same on all of them."),
        page);
    folderHint->setEnabled(false);
    auto *drive = new QPushButton(tr("Use Google Drive"), page);
    drive->setObjectName(QStringLiteral("useGoogleDrive"));
    auto *driveHint = wrappedLabel(
        tr("The data is stored in the application specific folder of your personal Google "
           "account, which only Velmorin can see."),
        page);
    driveHint->setEnabled(false);
    if (!m_services->googleDrive()->isConfigured()) {
        drive->setEnabled(false);
        driveHint->setText(tr("This build of Velmorin has no Google client configured, so it "
                              "cannot connect to Google Drive. The README says how to set one "
                              "up."));
    }
    m_chooseError = wrappedLabel(QString(), page);
    m_chooseError->setObjectName(QStringLiteral("chooseError"));
    m_chooseError->setStyleSheet(QStringLiteral("color: #C62828"));
    connect(folder, &QPushButton::clicked, this,
            [this] { chooseTarget(ISyncTarget::LocalFolderSetting); });
    connect(drive, &QPushButton::clicked, this,
            [this] { chooseTarget(ISyncTarget::GoogleDriveSetting); });

    auto *layout = new QVBoxLayout(page);
    layout->addWidget(intro);
    layout->addSpacing(12);
    layout->addWidget(folder, 0, Qt::AlignLeft);
    layout->addWidget(folderHint);
    layout->addSpacing(12);
    layout->addWidget(drive, 0, Qt::AlignLeft);
    layout->addWidget(driveHint);
    layout->addSpacing(12);
    layout->addWidget(m_chooseError);
    layout->addStretch(1);
    return page;
}

QWidget *SyncSettingsPage::createWaitPage()
{
    auto *page = new QWidget(this);
    m_waitText = wrappedLabel(QString(), page);
    m_waitText->setAlignment(Qt::AlignCenter);
    auto *layout = new QVBoxLayout(page);
    layout->addStretch(1);
    layout->addWidget(m_waitText);
    layout->addStretch(1);
    return page;
}

QWidget *SyncSettingsPage::createSyncPage()
{
    auto *page = new QWidget(this);
    m_targetText = wrappedLabel(QString(), page);
    m_targetText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_changeFolder = new QPushButton(tr("Change folder..."), page);
    connect(m_changeFolder, &QPushButton::clicked, this, [this] {
        m_waitText->setText(tr("Please choose the sync folder."));
        m_stack->setCurrentWidget(m_waitPage);
        m_services->localFolder()->initialise(ISyncTarget::AlwaysAsk);
    });
    auto *target = new QHBoxLayout;
    target->addWidget(m_targetText, 1);
    target->addWidget(m_changeFolder);

    auto *content = new QGroupBox(tr("What to synchronize"), page);
    m_history = new QCheckBox(tr("History, with its images"), content);
    m_snippets = new QCheckBox(tr("Snippets"), content);
    m_actions = new QCheckBox(tr("Actions"), content);
    auto *contentLayout = new QVBoxLayout(content);
    for (QCheckBox *box : {m_history, m_snippets, m_actions})
        contentLayout->addWidget(box);

    auto *encryption = new QGroupBox(tr("Encryption"), page);
    m_encrypt = new QCheckBox(tr("Encrypt the data with a pass phrase"), encryption);
    m_encrypt->setObjectName(QStringLiteral("encryptData"));
    m_passphrase = new QLineEdit(encryption);
    m_passphrase->setEchoMode(QLineEdit::Password);
    m_passphrase->setAccessibleName(tr("Pass phrase"));
    m_passphrase->setPlaceholderText(tr("The same pass phrase on every computer"));
    m_strong = new QCheckBox(tr("Strong encryption"), encryption);
    m_strong->setObjectName(QStringLiteral("strongEncryption"));
    m_strong->setToolTip(
        tr("A key derived from the pass phrase with Argon2id seals every file with "
           "XChaCha20-Poly1305, so that changed files are refused, and file names no longer "
           "show which contents are equal. Older versions of Velmorin cannot read these files."));
    connect(m_encrypt, &QCheckBox::toggled, m_passphrase, &QLineEdit::setEnabled);
    connect(m_encrypt, &QCheckBox::toggled, m_strong, &QCheckBox::setEnabled);
    auto *encryptionLayout = new QFormLayout(encryption);
    encryptionLayout->addRow(m_encrypt);
    encryptionLayout->addRow(tr("Pass phrase:"), m_passphrase);
    encryptionLayout->addRow(m_strong);
    encryptionLayout->addRow(wrappedLabel(
        tr("Switch strong encryption on or off on every computer that syncs."), encryption));

    // Wrapped: a status that names a file or tells what to do is longer than the page is wide.
    m_status = wrappedLabel(QString(), page);
    m_status->setObjectName(QStringLiteral("syncStatusText"));
    m_lastSuccess = new QLabel(page);
    m_notifierState = wrappedLabel(QString(), page);
    auto *state = new QFormLayout;
    state->addRow(tr("Status:"), m_status);
    state->addRow(tr("Last success"), m_lastSuccess);
    state->addRow(m_notifierState);

    auto *clients = new QGroupBox(tr("Your other computers"), page);
    m_clientsBox = clients;
    m_clients = new QListWidget(clients);
    m_clients->setObjectName(QStringLiteral("clients"));
    m_clients->setItemDelegate(new ClientItemDelegate(m_clients));
    m_clients->setMaximumHeight(150);
    auto *refreshClients = new QPushButton(tr("Refresh"), clients);
    connect(refreshClients, &QPushButton::clicked, m_services->notifier(),
            &Notifier::requestClientList);
    auto *clientsLayout = new QHBoxLayout(clients);
    clientsLayout->addWidget(m_clients, 1);
    clientsLayout->addWidget(refreshClients, 0, Qt::AlignTop);

    auto *showLog = new QPushButton(tr("Show sync log..."), page);
    auto *stop = new QPushButton(tr("Stop synchronizing the data"), page);
    stop->setObjectName(QStringLiteral("stopSync"));
    connect(showLog, &QPushButton::clicked, this, &SyncSettingsPage::showLog);
    connect(stop, &QPushButton::clicked, this, &SyncSettingsPage::stopSync);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(showLog);
    bottom->addStretch(1);
    bottom->addWidget(stop);

    auto *layout = new QVBoxLayout(page);
    layout->addLayout(target);
    layout->addWidget(content);
    layout->addWidget(encryption);
    layout->addWidget(createRunButtons(page));
    layout->addLayout(state);
    layout->addWidget(clients);
    layout->addStretch(1);
    layout->addLayout(bottom);
    return page;
}

QWidget *SyncSettingsPage::createRunButtons(QWidget *page)
{
    auto *row = new QWidget(page);
    auto *both = new QPushButton(tr("Full Sync"), row);
    auto *upload = new QPushButton(tr("Upload"), row);
    auto *download = new QPushButton(tr("Download"), row);
    both->setObjectName(QStringLiteral("syncBothWays"));
    upload->setObjectName(QStringLiteral("syncUpload"));
    download->setObjectName(QStringLiteral("syncDownload"));
    upload->setToolTip(tr("Write the content of this computer over the online content"));
    download->setToolTip(tr("Replace the content of this computer by the online content"));
    connect(both, &QPushButton::clicked, this, [this] { startRun(SyncDirection::Both); });
    connect(upload, &QPushButton::clicked, this, [this] { startRun(SyncDirection::ToServer); });
    connect(download, &QPushButton::clicked, this, [this] { startRun(SyncDirection::FromServer); });
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QPushButton *button : {both, upload, download})
        layout->addWidget(button);
    layout->addStretch(1);
    return row;
}

void SyncSettingsPage::load()
{
    m_history->setChecked(Settings::value(SettingsKey::SyncHistory).toBool());
    m_snippets->setChecked(Settings::value(SettingsKey::SyncSnippets).toBool());
    m_actions->setChecked(Settings::value(SettingsKey::SyncActions).toBool());
    m_encrypt->setChecked(Settings::value(SettingsKey::EncryptData).toBool());
    m_passphrase->setEnabled(m_encrypt->isChecked());
    m_passphrase->setText(Settings::secret(SettingsKey::Passphrase));
    m_strong->setChecked(Settings::value(SettingsKey::StrongEncryption).toBool());
    m_strong->setEnabled(m_encrypt->isChecked());
    showCurrentPage();
}

bool SyncSettingsPage::save()
{
    Settings::setValue(SettingsKey::SyncHistory, m_history->isChecked());
    Settings::setValue(SettingsKey::SyncSnippets, m_snippets->isChecked());
    Settings::setValue(SettingsKey::SyncActions, m_actions->isChecked());
    // Encryption without a pass phrase would have no key to encrypt with.
    const bool encrypt = m_encrypt->isChecked() && !m_passphrase->text().isEmpty();
    const bool encryptChanged = encrypt != Settings::value(SettingsKey::EncryptData).toBool();
    Settings::setValue(SettingsKey::EncryptData, encrypt);
    const bool strong = encrypt && m_strong->isChecked();
    const bool strongChanged = strong != Settings::value(SettingsKey::StrongEncryption).toBool();
    Settings::setValue(SettingsKey::StrongEncryption, strong);
    const QString old = Settings::secret(SettingsKey::Passphrase);
    const bool passphraseChanged = m_passphrase->text() != old;
    if (passphraseChanged) {
        // Files encrypted with the old pass phrase stay readable until they are written again.
        if (!old.isEmpty())
            Settings::setSecret(SettingsKey::PreviousPassphrase, old);
        Settings::setSecret(SettingsKey::Passphrase, m_passphrase->text());
    }
    QString problem;
    if (strongChanged && !Secrets::place(&problem)) {
        qWarning().noquote() << "Secrets stay in the settings:" << problem;
        QMessageBox::warning(this, QStringLiteral("Velmorin"),
                             tr("The pass phrase and the Google Drive sign-in stay in the "
                                "settings, enciphered under a key built into Velmorin: %1.")
                                 .arg(problem));
    }
    return encryptChanged || strongChanged || (encrypt && passphraseChanged);
}

QVariantMap SyncSettingsPage::values() const
{
    QVariantMap values = Sync::storedSettings();
    values.insert(QLatin1String(SettingsKey::SyncHistory), m_history->isChecked());
    values.insert(QLatin1String(SettingsKey::SyncSnippets), m_snippets->isChecked());
    values.insert(QLatin1String(SettingsKey::SyncActions), m_actions->isChecked());
    const bool encrypt = m_encrypt->isChecked() && !m_passphrase->text().isEmpty();
    values.insert(QLatin1String(SettingsKey::EncryptData), encrypt);
    values.insert(QLatin1String(SettingsKey::StrongEncryption), encrypt && m_strong->isChecked());
    const QString stored = Settings::secret(SettingsKey::Passphrase);
    if (m_passphrase->text() != stored) {
        values.insert(QLatin1String(SettingsKey::Passphrase), m_passphrase->text());
        if (!stored.isEmpty())
            values.insert(QLatin1String(SettingsKey::PreviousPassphrase), stored);
    }
    return values;
}

void SyncSettingsPage::startRun(SyncDirection direction)
{
    QString question;
    if (direction == SyncDirection::FromServer)
        question = tr("All your local content will be overwritten with the remote data. Are you "
                      "sure you want to continue?");
    else if (direction == SyncDirection::ToServer)
        question = tr("The remote data will be overwritten with your local content. Are you sure "
                      "you want to continue?");
    if (!question.isEmpty() &&
        QMessageBox::question(this, QStringLiteral("Velmorin"), question,
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    m_sync->setSettings(values());
    emit syncNow(direction);
}

void SyncSettingsPage::showEvent(QShowEvent *event)
{
    // A run in the background may have ended before the page was there to hear it.
    m_status->setText(m_sync->lastStatusText());
    updateLastSuccess();
    updateNotifierState();
    QWidget::showEvent(event);
}

void SyncSettingsPage::chooseTarget(const QString &targetName)
{
    m_chooseError->clear();
    Settings::setValue(SettingsKey::SyncTarget, targetName);
    m_waitText->setText(targetName == ISyncTarget::GoogleDriveSetting
                            ? tr("Please authorize Velmorin to access your Google Drive on the "
                                 "browser.")
                            : tr("Please choose the sync folder."));
    m_stack->setCurrentWidget(m_waitPage);
    m_sync->activeTarget()->initialise(ISyncTarget::AskIfMissing);
}

void SyncSettingsPage::onInitialized(bool success)
{
    if (!success && m_stack->currentWidget() == m_waitPage && !m_sync->activeTarget()->isValid())
        Settings::setValue(SettingsKey::SyncTarget, QStringLiteral("None"));
    showCurrentPage();
    if (success)
        startRun(SyncDirection::Both);
}

void SyncSettingsPage::showCurrentPage()
{
    ISyncTarget *target = m_sync->activeTarget();
    if (!target->isValid()) {
        m_stack->setCurrentWidget(m_choosePage);
        return;
    }
    QString where = target->name();
    const bool folder = target == m_services->localFolder();
    if (folder)
        where +=
            QStringLiteral(": ") + QDir::toNativeSeparators(m_services->localFolder()->folder());
    m_targetText->setText(tr("Synchronizing with %1").arg(where));
    m_changeFolder->setVisible(folder);
    m_clientsBox->setVisible(target == m_services->googleDrive());
    m_services->notifier()->requestClientList();
    m_stack->setCurrentWidget(m_syncPage);
    updateLastSuccess();
    updateNotifierState();
}

void SyncSettingsPage::stopSync()
{
    // Stopping also withdraws the access Google granted; choosing Drive again asks anew.
    if (m_sync->activeTarget() == m_services->googleDrive())
        m_services->googleDrive()->unlink();
    Settings::setValue(SettingsKey::SyncTarget, QStringLiteral("None"));
    m_sync->connectNotifier();
    showCurrentPage();
}

void SyncSettingsPage::showLog()
{
    if (!m_log)
        m_log = new SyncLogDialog(this);
    m_log->show();
    m_log->raise();
}

void SyncSettingsPage::updateStatus(SyncStatus status, const QString &text)
{
    Q_UNUSED(status)
    m_status->setText(text);
    updateLastSuccess();
}

void SyncSettingsPage::updateLastSuccess()
{
    const QDateTime last = Settings::value(SettingsKey::LastSync).toDateTime();
    m_lastSuccess->setText(last.isValid()
                               ? RelativeTime::ago(last.msecsTo(QDateTime::currentDateTime()))
                               : tr("Not synchronized"));
}

void SyncSettingsPage::showClients(const QList<Notifier::Client> &clients)
{
    m_clients->clear();
    for (const Notifier::Client &client : clients) {
        auto *item = new QListWidgetItem(client.value(QStringLiteral("name")), m_clients);
        item->setData(ClientItemDelegate::TypeRole, client.value(QStringLiteral("type")));
        item->setData(ClientItemDelegate::TimeRole, client.value(QStringLiteral("time")));
    }
}

void SyncSettingsPage::updateNotifierState()
{
    Notifier *notifier = m_services->notifier();
    if (notifier->isConnected() && m_clientsBox->isVisible() && m_clients->count() == 0)
        notifier->requestClientList();
    if (notifier->isWatchingFolder())
        m_notifierState->setText(tr("Changes from other computers are picked up as they arrive "
                                    "in the folder."));
    else if (notifier->isConnected())
        m_notifierState->setText(tr("Connected to the notification server."));
    else if (notifier->lastStatus() == Notifier::Error)
        m_notifierState->setText(tr("Failed to connect to the notification server."));
    else
        m_notifierState->setText(tr("No connection to the notification server."));
}
