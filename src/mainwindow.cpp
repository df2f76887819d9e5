#include "mainwindow.h"

#include "application.h"
#include "releasenotesdialog.h"
#include "settings.h"
#include "settingsdialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSettings>
#include <QToolButton>
#include <QVBoxLayout>

MainWindow::MainWindow(bool testModes, QWidget *parent)
    : QWidget(parent, Qt::Window), m_testModes(testModes), m_pinButton(new QToolButton(this)),
      m_emptyLabel(new QLabel(this))
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

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(header);
    layout->addWidget(m_emptyLabel, 1);

    const QSize size = QSettings().value(SettingsKey::WindowSize).toSize();
    resize(size.isValid() ? size : QSize(420, 520));

    if (auto *app = qobject_cast<Application *>(QCoreApplication::instance()))
        app->setMainWindow(this);
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

void MainWindow::hideWindow()
{
    hide();
}

void MainWindow::showSettings()
{
    if (!m_settingsDialog)
        m_settingsDialog = new SettingsDialog(this);
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
