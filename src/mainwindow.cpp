#include "mainwindow.h"

#include "actionapi.h"
#include "actionfiles.h"
#include "actionshortcuts.h"
#include "application.h"
#include "appmodes.h"
#include "clipboardlistener.h"
#include "clipboardmarks.h"
#include "clipboardops.h"
#include "clipping.h"
#include "globalshortcuts.h"
#include "historyfile.h"
#include "historyitemmodel.h"
#include "historyitemview.h"
#include "inputmanager.h"
#include "releasenotesdialog.h"
#include "settings.h"
#include "settingsdialog.h"
#include "snippetfile.h"
#include "snippetitemmodel.h"
#include "snippetshortcuts.h"

#include <QClipboard>
#include <QCursor>
#include <QDebug>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QSortFilterProxyModel>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
void putOnClipboard(const QModelIndex &clipping)
{
    if (Clipping::isImage(clipping.data(Clipping::TypeRole).toInt()))
        ClipboardOps::putClippingImage(clipping, false);
    else
        ClipboardOps::putClippingText(clipping, ClipboardOps::WithFormatting);
}
} // namespace

MainWindow::MainWindow(bool testModes, QWidget *parent)
    : QWidget(parent, Qt::Window), m_testModes(testModes),
      m_history(new HistoryItemModel(HistoryFile::path(AppModes::current()), this)),
      m_pinButton(new QToolButton(this)), m_emptyLabel(new QLabel(this)),
      m_historyView(new HistoryItemView(this)), m_shortcuts(new GlobalShortcuts(this)),
      m_clipboardListener(new ClipboardListener(this))
{
    setWindowTitle(tr("Velmorin"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/images/velmorin.svg")));
    setObjectName(QStringLiteral("mainWindow"));

    m_pinButton->setCheckable(true);
    m_pinButton->setIcon(QIcon(QStringLiteral(":/icons/images/pin.svg")));
    m_pinButton->setToolTip(tr("Keep the window open"));
    m_pinButton->setAccessibleName(tr("Keep the window open"));
    m_pinButton->setAutoRaise(true);

    auto *title = new QLabel(tr("Clipboard history"), this);
    title->setObjectName(QStringLiteral("windowTitle"));
    auto *header = new QHBoxLayout;
    header->addWidget(title, 1);
    header->addWidget(m_pinButton);

    m_emptyLabel->setText(tr("Copied items appear here."));
    m_emptyLabel->setAlignment(Qt::AlignCenter);
    m_emptyLabel->setWordWrap(true);

    m_historyView->setModel(m_history->proxy());
    m_historyView->setObjectName(QStringLiteral("historyView"));
    m_historyView->setUniformItemSizes(true);
    m_historyView->setTextElideMode(Qt::ElideRight);
    m_historyView->setIconSize(QSize(16, 16));

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(header);
    layout->addWidget(m_emptyLabel, 1);
    layout->addWidget(m_historyView, 1);

    connect(m_history, &HistoryItemModel::warning, this, [this](const QString &text) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"), text);
    });
    for (auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_history->proxy(), signal, this, &MainWindow::updateEmptyState);
    connect(m_history->proxy(), &QAbstractItemModel::modelReset, this,
            &MainWindow::updateEmptyState);
    // A new clipping starts "paste next" over from the second newest.
    connect(m_history->proxy(), &QAbstractItemModel::rowsInserted, this,
            [this] { m_pasteNextRow = 0; });
    connect(m_historyView, &QListView::activated, this, &MainWindow::pasteClipping);
    connect(m_historyView, &HistoryItemView::textAction, this, &MainWindow::keepActionResult);
    connect(m_historyView, &HistoryItemView::addItem, m_history,
            [this](const QString &text) { m_history->addText(text, QString(), {}, QString()); });
    connect(m_shortcuts, &GlobalShortcuts::mainActivated, this, &MainWindow::toggleAtMouse);
    connect(m_shortcuts, &GlobalShortcuts::plainTextActivated, this,
            [] { ClipboardOps::pastePlainText(); });
    connect(m_shortcuts, &GlobalShortcuts::pasteNextActivated, this, &MainWindow::pasteNext);
    loadHistory();
    // Only once the history is loaded: a copy merged before would be lost to the load.
    connect(m_clipboardListener, &ClipboardListener::changed, m_history,
            &HistoryItemModel::addMimeData);
    // The action menus and shortcuts read the listing, which would otherwise wait for the
    // first look at the actions page.
    ActionFiles::writeListing(ActionFiles::listedActions());
    m_actionShortcuts = new ActionShortcuts(this);
    loadSnippets();

    const QSize size = QSettings().value(SettingsKey::WindowSize).toSize();
    resize(size.isValid() ? size : QSize(420, 520));

    if (auto *app = qobject_cast<Application *>(QCoreApplication::instance()))
        app->setMainWindow(this);
}

void MainWindow::loadSnippets()
{
    m_snippets = new SnippetItemModel(SnippetFile::path(AppModes::current()), this);
    const auto showWarning = [this](const QString &text) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"), text);
    };
    connect(m_snippets, &SnippetItemModel::warning, this, showWarning);
    InputManager *input = InputManager::instance();
    connect(input, &InputManager::ownClipboardWrite, m_clipboardListener,
            &ClipboardListener::swallowNextChange);
    connect(input, &InputManager::actionFailed, this, showWarning);
    m_snippetShortcuts = new SnippetShortcuts(m_snippets, this);
    connect(m_snippetShortcuts, &SnippetShortcuts::actionFailed, this, showWarning);
    const bool demo = AppModes::current().demo;
    const auto result = m_snippets->load(demo);
    // A demonstration without its own file shows the examples, in its own file from then on.
    if (demo && result == SnippetItemModel::LoadResult::Unreadable && m_snippets->rowCount() == 0)
        m_snippets->loadExamples();
}

void MainWindow::loadHistory()
{
    const AppModes &modes = AppModes::current();
    if (modes.perfTest) {
        m_history->fillWithGeneratedClippings(1000);
        m_history->save(false);
    } else if (modes.demo) {
        m_history->loadDemo();
        m_history->save(false);
    } else {
        m_history->load();
        m_history->startCleanCache();
    }
    updateEmptyState();
}

void MainWindow::updateEmptyState()
{
    const bool empty = m_history->proxy()->rowCount() == 0;
    m_emptyLabel->setVisible(empty);
    m_historyView->setVisible(!empty);
}

void MainWindow::keepActionResult(const QModelIndex &proxyIndex, const QString &text)
{
    // The result becomes the newest copy, from the clipping's application; the clipping
    // itself stays as it was copied.
    m_history->addText(text, QString(), proxyIndex.data(Clipping::IconRole).value<QPixmap>(),
                       proxyIndex.data(Clipping::ApplicationRole).toString());
}

void MainWindow::runActionOnClipboard(const QString &path, const QString &title)
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    const QString text = clipboard->text();
    if (text.isEmpty()) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"),
                             tr("Current clipboard content is not text. Unable to run the "
                                "action."));
        return;
    }
    QString error;
    const QStringList result = ActionAPI::runActionFile(path, text, QString(), error);
    qDebug() << "Executed" << result;
    if (!error.isEmpty()) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"),
                             tr("Failed to run action '%1'\n%2").arg(title, error));
        return;
    }
    const QMimeData *current = clipboard->mimeData();
    auto *data = new QMimeData;
    data->setText(result.join(QLatin1Char('\n')));
    const QString owner = current ? ClipboardMarks::owner(*current) : QString();
    if (!owner.isNull())
        ClipboardMarks::setOwner(data, owner);
    clipboard->setMimeData(data);
}

void MainWindow::prepareToQuit()
{
    // Every change was saved as it happened; only clearing is left to do here. (Saving an
    // untouched history would also replace a file that could not be read at start.)
    if (Settings::clearHistory()) {
        qDebug() << "Clearing the history on quit";
        m_history->clearHistory();
        m_history->save(false);
    }
    m_history->finishSaves();
    m_snippets->finishSaves();
}

MainWindow::~MainWindow()
{
    QSettings().setValue(SettingsKey::WindowSize, size());
}

bool MainWindow::isPinned() const
{
    return m_pinButton->isChecked();
}

void MainWindow::setPinned(bool pinned)
{
    m_pinButton->setChecked(pinned);
}

void MainWindow::showAndPin()
{
    setPinned(true);
    show();
    raise();
    activateWindow();
}

void MainWindow::toggleVisible()
{
    if (isVisible()) {
        hideWindow();
        return;
    }
    show();
    raise();
    activateWindow();
}

void MainWindow::toggleAtMouse()
{
    if (isVisible()) {
        hideWindow();
        return;
    }
    if (QSettings().value(SettingsKey::OpenOnMouse, true).toBool()) {
        const QPoint mouse = QCursor::pos();
        QScreen *screen = QGuiApplication::screenAt(mouse);
        const QRect area = screen ? screen->availableGeometry() : QRect(mouse, size());
        // Kept whole on the screen under the mouse.
        const int x = qBound(area.left(), mouse.x(), qMax(area.left(), area.right() - width()));
        const int y = qBound(area.top(), mouse.y(), qMax(area.top(), area.bottom() - height()));
        move(x, y);
    }
    // The newest clipping is ready for Enter.
    m_historyView->setCurrentIndex(m_history->proxy()->index(0, 0));
    show();
    raise();
    activateWindow();
    m_historyView->setFocus();
}

void MainWindow::pasteClipping(const QModelIndex &proxyIndex)
{
    const QModelIndex clipping = m_history->proxy()->mapToSource(proxyIndex);
    if (!clipping.isValid())
        return;
    putOnClipboard(clipping);
    if (!isPinned())
        hideWindow();
    ClipboardOps::delayedPaste();
}

void MainWindow::pasteNext()
{
    QAbstractItemModel *proxy = m_history->proxy();
    if (proxy->rowCount() < 2)
        return;
    m_pasteNextRow = m_pasteNextRow % (proxy->rowCount() - 1) + 1;
    const QModelIndex clipping = m_history->proxy()->mapToSource(proxy->index(m_pasteNextRow, 0));
    putOnClipboard(clipping);
    ClipboardOps::paste();
}

void MainWindow::hideWindow()
{
    hide();
}

void MainWindow::showSettings()
{
    if (!m_settingsDialog)
        m_settingsDialog = new SettingsDialog(m_snippets, this);
    m_settingsDialog->show();
    m_settingsDialog->raise();
    m_settingsDialog->activateWindow();
}

void MainWindow::openReleaseNotes()
{
    if (!m_releaseNotes)
        m_releaseNotes = new ReleaseNotesDialog(this);
    m_releaseNotes->show();
    m_releaseNotes->raise();
}
