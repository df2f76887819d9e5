#include "services/appservices.h"

#include "actions/actionfiles.h"
#include "actions/actionshortcuts.h"
#include "base/settings.h"
#include "base/settingsevents.h"
#include "clipboard/clipboardlistener.h"
#include "history/historyfile.h"
#include "history/historyitemmodel.h"
#include "input/globalshortcuts.h"
#include "input/inputmanager.h"
#include "input/texttyper.h"
#include "platform/platform.h"
#include "snippets/snippetfile.h"
#include "snippets/snippetitemmodel.h"
#include "snippets/snippetpaster.h"
#include "snippets/snippetshortcuts.h"
#include "sync/remote/notifier.h"
#include "sync/remote/syncgoogledrive.h"
#include "sync/sync.h"
#include "sync/synclocalfolder.h"

#include <QDebug>
#include <QTimer>

AppServices::AppServices(const AppModes &modes, QObject *parent)
    : QObject(parent), m_modes(modes), m_settingsEvents(new SettingsEvents(this)),
      m_history(new HistoryItemModel(HistoryFile::path(modes), this)),
      m_snippets(new SnippetItemModel(SnippetFile::path(modes), this)),
      m_clipboardListener(new ClipboardListener(this)), m_shortcuts(new GlobalShortcuts(this)),
      m_input(new InputManager(Platform::desktop(), this)),
      m_snippetPaster(new SnippetPaster(m_history, this)), m_typer(new TextTyper(this))
{
    m_input->setResolver([this](const QString &text, const QString &application) {
        return m_snippetPaster->resolve(text, application);
    });
    connect(m_input, &InputManager::actionFailed, this, &AppServices::warning);
    connect(m_snippetPaster, &SnippetPaster::actionFailed, this, &AppServices::warning);
    connect(m_snippets, &SnippetItemModel::warning, this, &AppServices::warning);
    // The action menus and shortcuts read the listing, which would otherwise wait for the
    // first look at the actions page.
    ActionFiles::writeListing(ActionFiles::listedActions());
    m_actionShortcuts = new ActionShortcuts(this);
    createSync();
    followSettings();
}

// The parts that keep copies of settings read them again when the user applies new ones.
void AppServices::followSettings()
{
    const auto changed = &SettingsEvents::changed;
    connect(m_settingsEvents, changed, m_history, &HistoryItemModel::reloadSettings);
    connect(m_settingsEvents, changed, m_clipboardListener, &ClipboardListener::reloadSettings);
    connect(m_settingsEvents, changed, m_shortcuts, &GlobalShortcuts::apply);
    connect(m_settingsEvents, changed, m_input, &InputManager::loadSettings);
    connect(m_settingsEvents, changed, m_actionShortcuts, &ActionShortcuts::apply);
    connect(m_settingsEvents, &SettingsEvents::actionsChanged, m_actionShortcuts,
            &ActionShortcuts::apply);
    connect(m_settingsEvents, &SettingsEvents::actionFilesEdited, m_sync, &Sync::syncActions);
}

AppServices::~AppServices() = default;

void AppServices::start()
{
    loadHistory();
    // Only once the history is loaded: a copy merged before would be lost to the load.
    connect(m_clipboardListener, &ClipboardListener::changed, m_history,
            &HistoryItemModel::addMimeData);
    loadSnippets();
    m_sync->connectNotifier();
    // Whatever the other computers did while this one was off.
    if (m_sync->activeTarget()->isValid())
        QTimer::singleShot(0, m_sync, [this] { m_sync->syncAll(SyncDirection::Both); });
}

void AppServices::loadHistory()
{
    if (m_modes.perfTest) {
        m_history->fillWithGeneratedClippings(1000);
        m_history->save(false);
    } else if (m_modes.demo) {
        m_history->loadDemo();
        m_history->save(false);
    } else {
        m_history->load();
        m_history->startCleanCache();
    }
}

void AppServices::loadSnippets()
{
    m_snippetShortcuts = new SnippetShortcuts(m_snippets, m_input, m_snippetPaster, this);
    const auto result = m_snippets->load(m_modes.demo);
    // A demonstration without its own file shows the examples, in its own file from then on.
    if (m_modes.demo && result == SnippetItemModel::LoadResult::Unreadable &&
        m_snippets->rowCount() == 0)
        m_snippets->loadExamples();
}

void AppServices::createSync()
{
    m_sync = new Sync(this);
    m_sync->setDemonstration(m_modes.demo);
    m_localFolder = new SyncLocalFolder(this);
    m_googleDrive = new SyncGoogleDrive(this);
    m_notifier = new Notifier(this);
    m_sync->addTarget(ISyncTarget::LocalFolderSetting, m_localFolder);
    m_sync->addTarget(ISyncTarget::GoogleDriveSetting, m_googleDrive);
    m_notifier->setIdTokenSource([this] { return m_googleDrive->idToken(); });
    m_sync->setNotifier(m_notifier);
    m_sync->setModels(m_history, m_snippets);
    m_sync->setImageNames([this] { return m_history->imageNames(); });
    connect(m_history, &HistoryItemModel::syncRequested, m_sync,
            [this] { m_sync->sync(Sync::History, m_history, SyncDirection::Both); });
    connect(m_snippets, &SnippetItemModel::syncRequested, m_sync,
            [this] { m_sync->sync(Sync::Snippets, m_snippets, SyncDirection::Both); });
    connect(m_sync, &Sync::imageDownloaded, m_history, &HistoryItemModel::receiveImage);
    connect(m_sync, &Sync::actionsChanged, this, [this] {
        ActionFiles::writeListing(ActionFiles::listedActions());
        m_settingsEvents->notifyActionsChanged();
    });
}

void AppServices::resume()
{
    m_sync->syncAll(SyncDirection::Both);
}

void AppServices::prepareToQuit()
{
    // Every change was saved as it happened; only clearing is left to do here. (Saving an
    // untouched history would also replace a file that could not be read at start.)
    if (Settings::clearHistory()) {
        qDebug() << "Clearing the history on quit";
        m_history->clearHistory();
        m_history->save(false);
    }
    m_typer->stop();
    m_history->finishSaves();
    m_snippets->finishSaves();
}
