// One computer of a sync test: the real history, snippets, action files and sync engine of one
// profile, driven by commands on standard input, one per line. Each command is answered on
// standard output by "@@<number> <result>@@", numbered from 1 in the order received.
//
//   copy TEXT | remove TEXT | image NAME | bigimage NAME    the history
//   link                                        authorise Google Drive (through the stand-in)
//   snippet TITLE TEXT | edit TITLE TEXT          snippets, in the group "Peer"
//   action FILE TITLE | unaction FILE           action files
//   sync | encrypt PASSPHRASE | strong PASSPHRASE | state | uploads
#include "actions/actionfiles.h"
#include "base/appmodes.h"
#include "base/settings.h"
#include "history/clipping.h"
#include "history/historyfile.h"
#include "history/historyitemmodel.h"
#include "snippets/snippet.h"
#include "snippets/snippetfile.h"
#include "snippets/snippetitemmodel.h"
#include "support/fakebrowser.h"
#include "sync/remote/notifier.h"
#include "sync/remote/syncgoogledrive.h"
#include "sync/sync.h"
#include "sync/synclocalfolder.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QJsonObject>
#include <QPixmap>
#include <QRandomGenerator>
#include <QSettings>
#include <QSortFilterProxyModel>
#include <QThreadPool>
#include <QTimer>

#include <iostream>
#include <string>
#include <thread>
#include <utility>

namespace {

class Peer final : public QObject
{
public:
    Peer() : m_history(HistoryFile::path(AppModes())), m_snippets(SnippetFile::path(AppModes()))
    {
        m_history.load();
        m_snippets.load(false);
        m_sync.addTarget(ISyncTarget::LocalFolderSetting, &m_localFolder);
        m_sync.addTarget(ISyncTarget::GoogleDriveSetting, &m_googleDrive);
        m_notifier.setIdTokenSource([this] { return m_googleDrive.idToken(); });
        m_sync.setNotifier(&m_notifier);
        m_sync.setModels(&m_history, &m_snippets);
        m_sync.setImageNames([this] { return m_history.imageNames(); });
        connect(&m_history, &HistoryItemModel::syncRequested, this,
                [this] { m_sync.sync(Sync::History, &m_history, SyncDirection::Both); });
        connect(&m_snippets, &SnippetItemModel::syncRequested, this,
                [this] { m_sync.sync(Sync::Snippets, &m_snippets, SyncDirection::Both); });
        connect(&m_sync, &Sync::imageDownloaded, &m_history, &HistoryItemModel::receiveImage);
        connect(&m_sync, &Sync::contentUploaded, this, [this] { ++m_uploads; });
        connect(&m_sync, &Sync::syncStatus, this, &Peer::onStatus);
        connect(&m_sync, &Sync::syncInitialized, this, [this](bool success) {
            if (m_linking)
                reply(std::exchange(m_linking, 0),
                      success ? QStringLiteral("1") : QStringLiteral("0"));
        });
        m_sync.connectNotifier();
    }

    void run(const QString &line)
    {
        ++m_number;
        const QString command = line.section(QLatin1Char(' '), 0, 0);
        const QString first = line.section(QLatin1Char(' '), 1, 1);
        const QString rest = line.section(QLatin1Char(' '), 2);
        const QString all = line.section(QLatin1Char(' '), 1);
        if (command == QLatin1String("copy")) {
            m_history.addText(all, QString(), QPixmap(), QStringLiteral("peer"));
            settle();
        } else if (command == QLatin1String("remove")) {
            remove(all);
        } else if (command == QLatin1String("image")) {
            addImage(all);
        } else if (command == QLatin1String("bigimage")) {
            addNoise(all);
        } else if (command == QLatin1String("link")) {
            m_browser.install();
            m_linking = m_number;
            m_googleDrive.initialise(ISyncTarget::AskIfMissing);
            return;
        } else if (command == QLatin1String("snippet")) {
            m_snippets.addSnippet(peerGroup(), first, rest);
            m_snippets.finishSaves();
        } else if (command == QLatin1String("edit")) {
            m_snippets.setSnippetData(snippet(first), Snippet::TextRole, rest);
            m_snippets.finishSaves();
        } else if (command == QLatin1String("action")) {
            writeAction(first, rest);
        } else if (command == QLatin1String("unaction")) {
            ActionFiles::markDeleted(QDir(ActionFiles::userFolder()).filePath(all));
            m_sync.syncActions();
        } else if (command == QLatin1String("sync")) {
            m_waiting = m_number;
            m_sync.syncAll(SyncDirection::Both);
            return;
        } else if (command == QLatin1String("encrypt") || command == QLatin1String("strong")) {
            encrypt(all, command == QLatin1String("strong"));
            return;
        } else if (command == QLatin1String("state")) {
            settle();
            reply(m_number, state());
            return;
        } else if (command == QLatin1String("uploads")) {
            reply(m_number, QString::number(m_uploads));
            return;
        } else if (command == QLatin1String("quit")) {
            QCoreApplication::quit();
            return;
        }
        reply(m_number, QStringLiteral("ok"));
    }

private:
    static void reply(int number, const QString &result)
    {
        std::cout << "@@" << number << ' ' << result.toStdString() << "@@" << std::endl;
    }

    // Lets saves and image files on other threads finish and report back.
    void settle()
    {
        m_history.finishSaves();
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }

    void onStatus(SyncStatus status, const QString &text)
    {
        if (status == SyncStatus::Running || !m_waiting)
            return;
        reply(m_waiting, QString::number(int(status)) + QLatin1Char(' ') + text);
        m_waiting = 0;
    }

    void remove(const QString &text)
    {
        for (int row = 0; row < m_history.rowCount(); ++row) {
            if (m_history.item(row)->data(Clipping::TextRole).toString() == text)
                m_history.markRemoved({row});
        }
        settle();
    }

    void addImage(const QString &name)
    {
        const uint seed = qHash(name);
        QImage image(40 + int(seed % 50), 30 + int(seed % 20), QImage::Format_RGB32);
        image.fill(QColor::fromRgb(seed & 0xFFFFFF));
        m_history.addImage(QUrl(), image, QPixmap(), name, QDateTime::currentDateTime());
        settle();
    }

    // An image that no compression makes small: more than one upload chunk.
    void addNoise(const QString &name)
    {
        QImage image(1800, 1200, QImage::Format_RGB32);
        QRandomGenerator random(qHash(name));
        for (int y = 0; y < image.height(); ++y)
            random.fillRange(reinterpret_cast<quint32 *>(image.scanLine(y)), image.width());
        m_history.addImage(QUrl(), image, QPixmap(), name, QDateTime::currentDateTime());
        settle();
    }

    QModelIndex peerGroup()
    {
        for (int row = 0; row < m_snippets.rowCount(); ++row) {
            if (m_snippets.item(row)->text() == QLatin1String("Peer"))
                return m_snippets.index(row, 0);
        }
        return m_snippets.addGroup(QStringLiteral("Peer"));
    }

    QModelIndex snippet(const QString &title)
    {
        for (int row = 0; row < m_snippets.rowCount(); ++row) {
            const QStandardItem *group = m_snippets.item(row);
            if (group->text() != QLatin1String("Peer"))
                continue; // the examples of a first start
            for (int child = 0; child < group->rowCount(); ++child) {
                if (group->child(child)->text() == title)
                    return group->child(child)->index();
            }
        }
        return {};
    }

    void writeAction(const QString &fileName, const QString &title)
    {
        QDir().mkpath(ActionFiles::userFolder());
        const QJsonObject action{
            {QLatin1String("title"), title},
            {QLatin1String("script"), QStringLiteral("return input;")},
            {QLatin1String("created"), QDateTime::currentDateTime().toString(Qt::ISODate)}};
        ActionFiles::writeAction(QDir(ActionFiles::userFolder()).filePath(fileName), action);
        m_sync.syncActions();
    }

    // As the settings dialog does it: the old pass phrase is kept to read older files, and
    // everything online is written again.
    void encrypt(const QString &passphrase, bool strong)
    {
        QSettings().setValue(SettingsKey::EncryptData, true);
        QSettings().setValue(SettingsKey::StrongEncryption, strong);
        const QString old = Settings::secret(SettingsKey::Passphrase);
        if (!old.isEmpty())
            Settings::setSecret(SettingsKey::PreviousPassphrase, old);
        Settings::setSecret(SettingsKey::Passphrase, passphrase);
        m_sync.setSettings(Sync::storedSettings());
        m_sync.queueResyncAll();
        m_waiting = m_number;
        m_sync.syncAll(SyncDirection::Both);
    }

    QString state()
    {
        QStringList texts;
        for (int row = 0; row < m_history.proxy()->rowCount(); ++row) {
            const QModelIndex clipping = m_history.proxy()->index(row, 0);
            texts.append(clipping.data(Clipping::TextRole).toString());
        }
        QStringList images;
        for (const QString &name : m_history.imageNames())
            images.append(name + (QFileInfo::exists(Sync::imagePath(name)) ? "" : "(missing)"));
        QStringList snippets;
        for (int row = 0; row < m_snippets.rowCount(); ++row) {
            const QStandardItem *group = m_snippets.item(row);
            if (group->text() != QLatin1String("Peer"))
                continue; // the examples of a first start
            for (int child = 0; child < group->rowCount(); ++child)
                snippets.append(group->child(child)->text() + QLatin1Char('=') +
                                group->child(child)->data(Snippet::TextRole).toString());
        }
        QStringList actions;
        for (const auto &[path, action] : ActionFiles::listedActions()) {
            if (!ActionFiles::isBuiltIn(path))
                actions.append(QFileInfo(path).fileName() + QLatin1Char('=') +
                               action.value(QLatin1String("title")).toString());
        }
        images.sort();
        snippets.sort();
        actions.sort();
        return QStringLiteral("history[%1] images[%2] snippets[%3] actions[%4] hashes[%5 %6]")
            .arg(texts.join(QLatin1Char('|')), images.join(QLatin1Char('|')),
                 snippets.join(QLatin1Char('|')), actions.join(QLatin1Char('|')), m_history.hash(),
                 m_snippets.hash());
    }

    HistoryItemModel m_history;
    SnippetItemModel m_snippets;
    Sync m_sync;
    SyncLocalFolder m_localFolder;
    SyncGoogleDrive m_googleDrive;
    Notifier m_notifier;
    FakeBrowser m_browser;
    int m_linking = 0;
    int m_number = 0;
    int m_waiting = 0;
    int m_uploads = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorin"));
    QCoreApplication::setApplicationName(QStringLiteral("Velmorin"));
    QSettings settings;
    Settings::writeDefaults(settings);
    Peer peer;
    std::thread reader([&peer] {
        std::string line;
        while (std::getline(std::cin, line)) {
            const QString command = QString::fromStdString(line);
            QMetaObject::invokeMethod(&peer, [&peer, command] { peer.run(command); });
        }
        QMetaObject::invokeMethod(&peer, [] { QCoreApplication::quit(); });
    });
    const int result = app.exec();
    reader.detach();
    return result;
}
