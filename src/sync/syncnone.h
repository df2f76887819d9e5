#pragma once

#include "sync/isynctarget.h"

// The target when no sync is chosen: never valid, so the engine never runs its queue with it,
// and every operation succeeds with nothing.
class SyncNone final : public ISyncTarget
{
    Q_OBJECT

public:
    using ISyncTarget::ISyncTarget;

    void initialise(InitMode mode) override;
    bool isValid() const override { return false; }
    void listFiles() override;
    void download(int kind, const SyncEntry &entry) override;
    void upload(int kind, const SyncEntry &entry, const QByteArray &bytes) override;
    void remove(const SyncEntry &entry) override;
    QString name() const override { return tr("None"); }
};
