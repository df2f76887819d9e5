#pragma once

#include <QCoreApplication>
#include <QString>

class ISecretStore;

// Where the secrets live: the sync pass phrases and the Google tokens. With strong encryption
// on they go to the system's secret store, and the settings keep only a note that they are
// there; with it off, or with no secret store to take them, they stay in the settings,
// enciphered under the settings key. Empty is none.
class Secrets final
{
    Q_DECLARE_TR_FUNCTIONS(Secrets)

public:
    // The system's secret store; none keeps everything in the settings. The caller keeps
    // ownership.
    static void setStore(ISecretStore *store);
    static QString read(const QString &key);
    static void write(const QString &key, const QString &text);
    // Moves every secret to where the StrongEncryption setting puts it. False, with the reason,
    // when the secret store cannot take them: they stay in the settings.
    static bool place(QString *problem);
};
