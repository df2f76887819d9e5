#include "ui/mainwindow.h"

#include "actions/actionapi.h"
#include "base/settings.h"
#include "clipboard/clipboardmarks.h"
#include "history/clipping.h"
#include "history/historyitemmodel.h"
#include "input/globalshortcuts.h"
#include "input/texttyper.h"
#include "platform/platform.h"
#include "services/appservices.h"
#include "snippets/snippet.h"
#include "snippets/snippetitemmodel.h"
#include "snippets/snippetpaster.h"
#include "sync/sync.h"
#include "sync/synclocalfolder.h"
#include "ui/clippingeditor.h"
#include "ui/framelesshelper.h"
#include "ui/history/historyitemdelegate.h"
#include "ui/history/historyitemview.h"
#include "ui/releasenotesdialog.h"
#include "ui/search/searchdelegate.h"
#include "ui/search/searchedit.h"
#include "ui/search/searchmodel.h"
#include "ui/search/searchview.h"
#include "ui/settings/settingsdialog.h"
#include "ui/snippets/snippetitemdelegate.h"
#include "ui/snippets/snippettreeview.h"

#include <QApplication>
#include <QButtonGroup>
#include <QClipboard>
#include <QCursor>
#include <QDebug>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QStackedWidget>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QToolButton *newToolButton(QWidget *parent, const char *icon, const QString &text)
{
    auto *button = new QToolButton(parent);
    button->setIcon(QIcon(QLatin1String(icon)));
    button->setToolTip(text);
    button->setAccessibleName(text);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

// An image clipping goes as the image, a text clipping in the mode given.
void putOnClipboard(const QModelIndex &clipping, int textMode)
{
    if (Clipping::isImage(clipping.data(Clipping::TypeRole).toInt()))
        ClipboardOps::putClippingImage(clipping, false);
    else
        ClipboardOps::putClippingText(clipping, textMode);
}

} // namespace

MainWindow::MainWindow(AppServices *services, QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint), m_services(services),
      m_history(services->history()), m_helper(new FramelessHelper(this)),
      m_shortcuts(services->shortcuts()), m_snippets(services->snippets()),
      m_typer(services->textTyper()), m_sync(services->sync())
{
    setWindowTitle(tr("Velmorin"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/images/velmorin.svg")));
    setObjectName(QStringLiteral("mainWindow"));

    m_pages = new QStackedWidget(this);
    m_pages->addWidget(createHistoryPage());
    m_snippetView = new SnippetTreeView(m_snippets, m_pages);
    m_pages->addWidget(m_snippetView);
    createSearchPage();

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(FramelessHelper::BorderWidth, FramelessHelper::BorderWidth,
                               FramelessHelper::BorderWidth, FramelessHelper::BorderWidth);
    layout->setSpacing(4);
    layout->addWidget(createHeader());
    // Stays while the problem lasts, without stopping the user as a box would.
    m_notice = new QLabel(this);
    m_notice->setObjectName(QStringLiteral("notice"));
    m_notice->setWordWrap(true);
    m_notice->setTextFormat(Qt::RichText);
    m_notice->setStyleSheet(QStringLiteral("QLabel#notice { background: #fff3cd; color: #5c4400; "
                                           "border: 1px solid #e0c060; padding: 4px; }"));
    m_notice->hide();
    connect(m_notice, &QLabel::linkActivated, this, &MainWindow::chooseOtherShortcut);
    layout->addWidget(m_notice);
    layout->addWidget(m_pages, 1);

    connectHistory();
    connect(m_shortcuts, &GlobalShortcuts::takenChanged, this, &MainWindow::tellTakenShortcuts);
    tellTakenShortcuts();
    connectSearch();
    createKeys();
    connectServices();
    updateEmptyState();

    const QSize size = Settings::value(SettingsKey::WindowSize).toSize();
    resize(size.isValid() ? size : QSize(420, 520));
}

bool MainWindow::testModes() const
{
    return m_services->modes().anyOn();
}

void MainWindow::connectServices()
{
    connect(m_services, &AppServices::warning, this, [this](const QString &text) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"), text);
    });
    m_services->localFolder()->setFolderChooser([this] {
        return QFileDialog::getExistingDirectory(
            this, tr("Select sync target folder"), QDir::homePath(),
            QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
    });
}

QWidget *MainWindow::createHeader()
{
    auto *header = new QWidget(this);
    header->setObjectName(QStringLiteral("header"));
    m_search = new SearchEdit(header);
    m_historyButton = newToolButton(header, ":/icons/images/history.svg", tr("History"));
    m_snippetsButton = newToolButton(header, ":/icons/images/snippets.svg", tr("Snippets"));
    const QString switchKey =
        QKeySequence(Qt::CTRL | Qt::Key_Tab).toString(QKeySequence::NativeText);
    m_historyButton->setToolTip(tr("History (%1)").arg(switchKey));
    m_snippetsButton->setToolTip(tr("Snippets (%1)").arg(switchKey));
    auto *pages = new QButtonGroup(header);
    for (QAbstractButton *button : {m_historyButton, m_snippetsButton}) {
        button->setCheckable(true);
        pages->addButton(button);
    }
    m_historyButton->setChecked(true);
    connect(m_historyButton, &QAbstractButton::clicked, this, [this] { showPage(HistoryPage); });
    connect(m_snippetsButton, &QAbstractButton::clicked, this, [this] { showPage(SnippetsPage); });
    auto *settings = newToolButton(header, ":/icons/images/settings.svg", tr("Settings"));
    connect(settings, &QToolButton::clicked, this, &MainWindow::showSettings);
    m_pinButton = newToolButton(header, ":/icons/images/pin.svg", tr("Keep the window open"));
    m_pinButton->setObjectName(QStringLiteral("pinButton"));
    m_pinButton->setCheckable(true);

    auto *layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_search, 1);
    layout->addSpacing(4);
    for (QWidget *button :
         {m_historyButton, m_snippetsButton, static_cast<QAbstractButton *>(settings),
          static_cast<QAbstractButton *>(m_pinButton)})
        layout->addWidget(button);
    m_helper->addMoveHandle(header);
    return header;
}

QWidget *MainWindow::createHistoryPage()
{
    m_historyStack = new QStackedWidget(this);
    m_emptyLabel = new QLabel(tr("Copied items appear here."), m_historyStack);
    m_emptyLabel->setAlignment(Qt::AlignCenter);
    m_emptyLabel->setWordWrap(true);
    m_historyView = new HistoryItemView(m_historyStack);
    m_historyView->setObjectName(QStringLiteral("historyView"));
    m_historyView->setModels(m_history, m_snippets);
    m_historyStack->addWidget(m_emptyLabel);
    m_historyStack->addWidget(m_historyView);
    return m_historyStack;
}

void MainWindow::createSearchPage()
{
    m_searchModel = new SearchModel(m_history->proxy(), m_snippets, this);
    m_searchView = new SearchView(m_pages);
    m_searchView->setObjectName(QStringLiteral("searchView"));
    m_searchView->setSearchModel(m_searchModel);
    auto *historyDelegate = new HistoryItemDelegate(m_history, m_searchView);
    historyDelegate->setShowNumbers(false);
    historyDelegate->setHighlight([model = m_searchModel] { return model->searchText(); });
    m_searchView->setItemDelegate(new SearchDelegate(
        m_searchModel, historyDelegate, new SnippetItemDelegate(true, m_searchView), m_searchView));
    m_pages->addWidget(m_searchView);
}

void MainWindow::connectHistory()
{
    connect(m_history, &HistoryItemModel::warning, this, [this](const QString &text) {
        QMessageBox::warning(this, QStringLiteral("Velmorin"), text);
    });
    connect(m_history, &HistoryItemModel::saveProblemChanged, this,
            [this](const QString &text) { setNotice(Notice::SaveProblem, text.toHtmlEscaped()); });
    connect(m_history, &HistoryItemModel::notice, this,
            [this](const QString &text) { setNotice(Notice::Told, text.toHtmlEscaped()); });
    for (auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_history->proxy(), signal, this, &MainWindow::updateEmptyState);
    connect(m_history->proxy(), &QAbstractItemModel::modelReset, this,
            &MainWindow::updateEmptyState);
    // A new clipping starts "paste next" over from the second newest.
    connect(m_history->proxy(), &QAbstractItemModel::rowsInserted, this,
            [this] { m_pasteNextRow = 0; });
    connect(m_historyView, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        // Ctrl and Shift clicks choose several clippings; a plain click pastes one.
        if (QGuiApplication::keyboardModifiers() == Qt::NoModifier)
            pasteClipping(index);
    });
    connect(m_historyView, &HistoryItemView::pasteRequested, this, &MainWindow::pasteClippings);
    connect(m_historyView, &HistoryItemView::pasteImageRequested, this, &MainWindow::pasteImage);
    connect(m_historyView, &HistoryItemView::typeRequested, this, &MainWindow::typeText);
    connect(m_historyView, &HistoryItemView::editRequested, this, &MainWindow::editClipping);
    connect(m_historyView, &HistoryItemView::escapePressed, this, &MainWindow::hideWindow);
    connect(m_historyView, &HistoryItemView::textTyped, this, &MainWindow::startSearchWith);
    connect(m_historyView, &HistoryItemView::textAction, this, &MainWindow::keepActionResult);
    connect(m_historyView, &HistoryItemView::addItem, m_history,
            [this](const QString &text) { m_history->addText(text, QString(), {}, QString()); });
    connect(m_snippetView, &SnippetTreeView::snippetActivated, this, &MainWindow::pasteSnippet);
    connect(m_snippetView, &SnippetTreeView::editRequested, this, &MainWindow::editSnippet);
    connect(m_snippetView, &SnippetTreeView::escapePressed, this, &MainWindow::hideWindow);
    connect(m_snippetView, &SnippetTreeView::textTyped, this, &MainWindow::startSearchWith);
    connect(m_shortcuts, &GlobalShortcuts::mainActivated, this, &MainWindow::toggleAtMouse);
    connect(m_shortcuts, &GlobalShortcuts::plainTextActivated, this,
            [] { ClipboardOps::pastePlainText(); });
    connect(m_shortcuts, &GlobalShortcuts::pasteNextActivated, this, &MainWindow::pasteNext);
}

void MainWindow::connectSearch()
{
    connect(m_search, &QLineEdit::textChanged, m_searchModel, &SearchModel::setSearchText);
    connect(m_search, &QLineEdit::textChanged, this, &MainWindow::onSearchTextChanged);
    connect(m_search, &SearchEdit::escapePressed, this, &MainWindow::hideWindow);
    connect(m_search, &SearchEdit::downPressed, this, [this] {
        if (m_search->text().trimmed().isEmpty()) {
            (currentPage() == SnippetsPage ? static_cast<QWidget *>(m_snippetView) : m_historyView)
                ->setFocus();
            return;
        }
        m_searchModel->updateNow();
        m_searchView->selectFirst();
        m_searchView->setFocus();
    });
    connect(m_search, &QLineEdit::returnPressed, this, [this] {
        m_searchModel->updateNow();
        const QModelIndex first = m_searchModel->index(0, 0);
        if (first.isValid())
            activateSearchResult(SearchModel::sourceIndex(first));
    });
    connect(m_searchView, &QAbstractItemView::activated, this, &MainWindow::activateSearchResult);
    connect(m_searchModel, &SearchModel::updated, m_searchView, &SearchView::selectFirst);
    connect(m_searchView, &SearchView::historyMenuRequested, this,
            [this](const QModelIndex &clipping, const QPoint &position) {
                m_historyView->showMenu({clipping}, position);
            });
    connect(m_searchView, &SearchView::escapePressed, this, &MainWindow::hideWindow);
    connect(m_searchView, &SearchView::upFromFirstRow, m_search, qOverload<>(&QWidget::setFocus));
    connect(m_searchView, &SearchView::textTyped, this, &MainWindow::startSearchWith);
}

void MainWindow::createKeys()
{
    // Ctrl+Tab would move within the lists otherwise, so the window sees it first.
    for (QWidget *widget :
         {static_cast<QWidget *>(m_search), static_cast<QWidget *>(m_historyView),
          static_cast<QWidget *>(m_snippetView), static_cast<QWidget *>(m_searchView)})
        widget->installEventFilter(this);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search,
            [this] { m_search->setFocus(); });
    // In the search field Ctrl+Z undoes the typing, as there it should.
    connect(new QShortcut(QKeySequence::Undo, this), &QShortcut::activated, m_historyView,
            &HistoryItemView::undoRemoval);
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) &&
            (key->modifiers() & Qt::ControlModifier)) {
            showPage(currentPage() == SnippetsPage ? HistoryPage : SnippetsPage);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void MainWindow::onSearchTextChanged(const QString &text)
{
    if (!text.trimmed().isEmpty())
        m_pages->setCurrentWidget(m_searchView);
    else
        showPage(m_lastListPage);
}

void MainWindow::startSearchWith(const QString &text)
{
    m_search->setFocus();
    m_search->insert(text);
}

void MainWindow::activateSearchResult(const QModelIndex &source)
{
    if (m_searchModel->isHistoryIndex(source))
        pasteClipping(source);
    else
        pasteSnippet(source);
}

void MainWindow::showPage(Page page)
{
    if (page == SearchPage) {
        m_pages->setCurrentWidget(m_searchView);
        return;
    }
    m_lastListPage = page;
    if (!m_search->text().isEmpty())
        m_search->clear();
    (page == HistoryPage ? m_historyButton : m_snippetsButton)->setChecked(true);
    m_pages->setCurrentIndex(page);
    QAbstractItemView *list =
        page == HistoryPage ? static_cast<QAbstractItemView *>(m_historyView) : m_snippetView;
    if (page == HistoryPage && !list->currentIndex().isValid())
        list->setCurrentIndex(m_history->proxy()->index(0, 0));
    // On the snippets page a snippet, not a group, is ready for Enter.
    if (page == SnippetsPage && !list->currentIndex().parent().isValid()) {
        for (int group = 0; group < m_snippets->rowCount(); ++group) {
            const QModelIndex first = m_snippets->index(0, 0, m_snippets->index(group, 0));
            if (first.isValid()) {
                list->setCurrentIndex(first);
                break;
            }
        }
    }
    if (isVisible())
        list->setFocus();
}

MainWindow::Page MainWindow::currentPage() const
{
    return Page(m_pages->currentIndex());
}

void MainWindow::updateEmptyState()
{
    const int count = m_history->proxy()->rowCount();
    m_historyStack->setCurrentIndex(count == 0 ? 0 : 1);
    emit clippingCountChanged(count);
}

void MainWindow::keepActionResult(const QModelIndex &proxyIndex, const QString &text)
{
    // The result becomes the newest copy, from the clipping's application; the clipping
    // itself stays as it was copied.
    m_history->addText(text, QString(), proxyIndex.data(Clipping::IconRole).value<QPixmap>(),
                       proxyIndex.data(Clipping::ApplicationRole).toString());
}

void MainWindow::editClipping(const QModelIndex &proxyIndex)
{
    if (!m_editor) {
        m_editor = new ClippingEditor(this);
        connect(m_editor, &ClippingEditor::saved, this, [this](const QString &text) {
            // Saved as the newest copy, from the application the original came from.
            const QModelIndex original = m_editedClipping;
            m_history->addText(text, QString(), original.data(Clipping::IconRole).value<QPixmap>(),
                               original.data(Clipping::ApplicationRole).toString());
        });
        emit editorCreated(m_editor);
    }
    m_editedClipping = proxyIndex;
    m_editor->move(geometry().topLeft() + QPoint(24, 24));
    m_editor->edit(proxyIndex.data(Clipping::TextRole).toString());
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

MainWindow::~MainWindow()
{
    Settings::setValue(SettingsKey::WindowSize, size());
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
    rememberForegroundWindow();
    show();
    raise();
    activateWindow();
}

void MainWindow::rememberForegroundWindow()
{
    const quint64 window = Platform::foregroundWindow();
    // Opened again while the window or one of its dialogs has the focus: keep the
    // application it was first opened from.
    const QWidget *own = QApplication::activeWindow();
    if (window == 0 || (own && own->winId() == window))
        return;
    m_previousWindow = window;
    m_previousApplication = Platform::foregroundApplicationName();
}

void MainWindow::placeAtMouse()
{
    const QPoint mouse = QCursor::pos();
    QScreen *screen = QGuiApplication::screenAt(mouse);
    const QRect area = screen ? screen->availableGeometry() : QRect(mouse, size());
    const QSize fitted = size().boundedTo(area.size());
    if (fitted != size())
        resize(fitted);
    // Kept whole on the screen under the mouse.
    const int x = qBound(area.left(), mouse.x(), qMax(area.left(), area.right() + 1 - width()));
    const int y = qBound(area.top(), mouse.y(), qMax(area.top(), area.bottom() + 1 - height()));
    move(x, y);
}

void MainWindow::toggleAtMouse()
{
    if (isVisible() && isPinned() && !isActiveWindow()) {
        // Pinned and gone behind other windows: the shortcut brings it back.
        raise();
        activateWindow();
        return;
    }
    if (isVisible()) {
        hideWindow();
        return;
    }
    rememberForegroundWindow();
    if (Settings::value(SettingsKey::OpenOnMouse, true).toBool())
        placeAtMouse();
    // Always the history, the newest clipping ready: what the shortcut is pressed for.
    showPage(HistoryPage);
    // The newest clipping is ready for Enter.
    m_historyView->clearSelection();
    m_historyView->setCurrentIndex(m_history->proxy()->index(0, 0));
    m_historyView->scrollToTop();
    show();
    raise();
    activateWindow();
    m_historyView->setFocus();
    // Once the window is painted.
    QTimer::singleShot(0, m_searchModel, &SearchModel::prepare);
}

void MainWindow::returnFocus()
{
    if (!isPinned())
        hideWindow();
    if (m_previousWindow)
        Platform::activateWindow(m_previousWindow);
}

void MainWindow::finishPaste(ClipboardOps::CursorSteps steps)
{
    returnFocus();
    ClipboardOps::delayedPasteWithCursor(steps);
}

void MainWindow::pasteClippings(const QModelIndexList &proxyIndexes, int mode)
{
    if (proxyIndexes.isEmpty())
        return;
    if (mode < 0)
        mode = Settings::value(SettingsKey::PastePlainText).toBool() ? ClipboardOps::PlainText
                                                                     : ClipboardOps::WithFormatting;
    if (proxyIndexes.size() == 1) {
        const QModelIndex clipping = m_history->proxy()->mapToSource(proxyIndexes.first());
        if (!clipping.isValid())
            return;
        putOnClipboard(clipping, mode);
        m_history->moveToTop(clipping.row());
        finishPaste();
        return;
    }
    QStringList texts;
    for (const QModelIndex &index : proxyIndexes)
        texts.append(index.data(Clipping::TextRole).toString());
    // Joined for this paste only: the clipboard, and the history, stay as they were.
    ClipboardOps::pasteInstead(texts.join(QLatin1Char('\n')), [this] { finishPaste(); });
}

void MainWindow::pasteImage(const QModelIndex &proxyIndex, bool asFile)
{
    const QModelIndex clipping = m_history->proxy()->mapToSource(proxyIndex);
    if (!clipping.isValid())
        return;
    ClipboardOps::putClippingImage(clipping, asFile);
    m_history->moveToTop(clipping.row());
    finishPaste();
}

void MainWindow::pasteSnippet(const QModelIndex &snippet)
{
    if (!snippet.isValid() || !snippet.parent().isValid())
        return;
    m_services->snippetPaster()->paste(
        snippet.data(Snippet::TextRole).toString(), m_previousApplication,
        [this](ClipboardOps::CursorSteps steps) { finishPaste(steps); });
}

void MainWindow::typeText(const QString &text)
{
    returnFocus();
    m_typer->start(text);
}

void MainWindow::pasteNext()
{
    QAbstractItemModel *proxy = m_history->proxy();
    if (proxy->rowCount() < 2)
        return;
    m_pasteNextRow = m_pasteNextRow % (proxy->rowCount() - 1) + 1;
    const QModelIndex clipping = m_history->proxy()->mapToSource(proxy->index(m_pasteNextRow, 0));
    // It stays where it is (the program's own write is no new copy), so the one after it is
    // next.
    putOnClipboard(clipping, ClipboardOps::WithFormatting);
    ClipboardOps::paste();
}

void MainWindow::hideWindow()
{
    const bool wasVisible = isVisible();
    if (wasVisible)
        Settings::setValue(SettingsKey::WindowSize, size());
    hide();
    m_historyView->forgetRemovals();
    // A notice told once has been seen once the window was open with it.
    if (wasVisible && m_notices.contains(Notice::Told))
        setNotice(Notice::Told, QString());
}

void MainWindow::setNotice(Notice notice, const QString &html)
{
    const bool isNew = !html.isEmpty() && m_notices.value(notice) != html;
    if (html.isEmpty())
        m_notices.remove(notice);
    else
        m_notices.insert(notice, html);
    const QStringList shown = m_notices.values();
    m_notice->setText(shown.join(QLatin1String("<br>")));
    m_notice->setVisible(!shown.isEmpty());
    // Queued: the history is read while the window is made, before the tray listens. The tray
    // shows plain text.
    if (isNew) {
        const QString plain = QTextDocumentFragment::fromHtml(html).toPlainText();
        QMetaObject::invokeMethod(
            this, [this, plain] { emit problemStarted(plain); }, Qt::QueuedConnection);
    }
}

void MainWindow::showSettings()
{
    if (!m_settingsDialog) {
        m_settingsDialog = new SettingsDialog(m_services, this);
        connect(m_settingsDialog, &SettingsDialog::encryptionChanged, this, [this] {
            m_sync->setSettings(Sync::storedSettings());
            m_sync->queueResyncAll();
            m_sync->syncAll(SyncDirection::Both);
        });
        connect(m_settingsDialog, &QDialog::accepted, this,
                [this] { m_sync->setSettings(Sync::storedSettings()); });
    }
    m_settingsDialog->show();
    m_settingsDialog->raise();
    m_settingsDialog->activateWindow();
}

void MainWindow::chooseOtherShortcut()
{
    showSettings();
    m_settingsDialog->showShortcutsPage();
}

void MainWindow::tellTakenShortcuts()
{
    const QStringList taken = m_shortcuts->taken();
    setNotice(Notice::TakenShortcut,
              taken.isEmpty() ? QString()
                              : tr("Another program already uses %1, so Velmorin cannot use it. "
                                   "<a href=\"shortcuts\">Choose another shortcut</a>")
                                    .arg(taken.join(QLatin1String(", ")).toHtmlEscaped()));
}

void MainWindow::editSnippet(const QModelIndex &item)
{
    showSettings();
    m_settingsDialog->showSnippet(item);
}

SettingsDialog *MainWindow::settingsDialog() const
{
    return m_settingsDialog;
}

ClippingEditor *MainWindow::clippingEditor() const
{
    return m_editor;
}

void MainWindow::openReleaseNotes()
{
    if (!m_releaseNotes)
        m_releaseNotes = new ReleaseNotesDialog(this);
    m_releaseNotes->show();
    m_releaseNotes->raise();
}
