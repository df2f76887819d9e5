#pragma once

#include <QDateTime>

#include "sync/isynctarget.h"

#include <functional>

// Sync files kept as plain files in one folder, which a network drive or a file-sharing client
// shares between computers. A file's identifier is its name and its creation time is its last
// modification. Failures are warnings in the debug log and send no answer.
class SyncLocalFolder final : public ISyncTarget
{
    Q_OBJECT

public:
    explicit SyncLocalFolder(QObject *parent = nullptr);

    // Asks the user for a folder; empty when the user cancels. The windows give the dialog.
    void setFolderChooser(std::function<QString()> chooser) { m_chooser = std::move(chooser); }
    QString folder() const { return m_folder; }

    void initialise(InitMode mode) override;
    bool isValid() const override;
    void listFiles() override;
    void download(int kind, const SyncEntry &entry) override;
    void upload(int kind, const SyncEntry &entry, const QByteArray &bytes) override;
    void remove(const SyncEntry &entry) override;
    QString name() const override { return tr("Local folder"); }
    bool hasPendingAnswers() const override { return m_pending > 0; }

private:
    void readSetting();
    void askForFolder();
    QString pathOf(const QString &fileName) const;
    static void keepModificationTime(const QString &path, const QDateTime &time);
    // Emits on the next turn of the event loop.
    void answer(std::function<void()> emitter);

    QString m_folder;
    bool m_configured = false;
    std::function<QString()> m_chooser = [] { return QString(); };
    int m_pending = 0;
};
