#pragma once

#include "base/isyncmerge.h"
#include "sync/remote/notifier.h"

#include <QPointer>
#include <QVariantMap>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QTimer;
class AppServices;
class Sync;
class SyncLogDialog;
enum class SyncStatus;

// The sync page of the settings: choosing where the content is kept, what is synchronised and
// whether it is encrypted, and starting a run in either direction. Choices of content and
// encryption take effect when the settings are accepted; runs start at once.
class SyncSettingsPage final : public QWidget
{
    Q_OBJECT

public:
    explicit SyncSettingsPage(AppServices *services, QWidget *parent = nullptr);

    void load();
    // Writes the content and encryption choices; true when the encryption changed, so that
    // everything online must be written again.
    bool save();
    // The values a run reads, as the page shows them now.
    QVariantMap values() const;

    // Asks before a one-way run (No cancels) and starts it.
    void startRun(SyncDirection direction);

signals:
    void syncNow(SyncDirection direction);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *createChoosePage();
    QWidget *createWaitPage();
    QWidget *createSyncPage();
    QWidget *createRunButtons(QWidget *page);
    void chooseTarget(const QString &targetName);
    void onInitialized(bool success);
    void showCurrentPage();
    void stopSync();
    void showLog();
    void updateStatus(SyncStatus status, const QString &text);
    void updateLastSuccess();
    void updateNotifierState();
    void showClients(const QList<Notifier::Client> &clients);

    AppServices *m_services;
    Sync *m_sync;
    QStackedWidget *m_stack;
    QWidget *m_choosePage = nullptr;
    QWidget *m_waitPage = nullptr;
    QWidget *m_syncPage = nullptr;
    QLabel *m_waitText = nullptr;
    QLabel *m_targetText = nullptr;
    QLabel *m_chooseError = nullptr;
    QPushButton *m_changeFolder = nullptr;
    QWidget *m_clientsBox = nullptr;
    QListWidget *m_clients = nullptr;
    QCheckBox *m_history = nullptr;
    QCheckBox *m_snippets = nullptr;
    QCheckBox *m_actions = nullptr;
    QCheckBox *m_encrypt = nullptr;
    QCheckBox *m_strong = nullptr;
    QLineEdit *m_passphrase = nullptr;
    QLabel *m_status = nullptr;
    QLabel *m_lastSuccess = nullptr;
    QLabel *m_notifierState = nullptr;
    QTimer *m_refresh;
    QPointer<SyncLogDialog> m_log;
};
