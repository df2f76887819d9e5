#include "app/application.h"
#include "base/appmodes.h"
#include "base/runguard.h"
#include "base/secrets.h"
#include "base/settings.h"
#include "base/settingsevents.h"
#include "consoleengine.h"
#include "fileengine.h"
#include "history/historyitemmodel.h"
#include "logger.h"
#include "maintenance/crashreports.h"
#include "maintenance/updatechecker.h"
#include "platform/crashhandler.h"
#include "platform/platform.h"
#include "services/appservices.h"
#include "ui/clipboardmonitor.h"
#include "ui/mainwindow.h"
#include "ui/theme.h"
#include "ui/trayicon.h"

#include <QDate>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QSortFilterProxyModel>
#include <QSslSocket>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QTranslator>

#include <chrono>
#include <memory>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

void setUpLogging(const AppModes &modes)
{
    Logger &logger = Logger::instance();
    QString fileProblem;
    QString crashFolder;
    if (modes.debug) {
        auto file = std::make_unique<FileEngine>(QStringLiteral("file"), AppModes::debugLogPath());
        if (!file->isOpen())
            fileProblem = file->errorString();
        logger.addEngine(std::move(file));
    } else if (!modes.demo) {
        const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        if (CrashHandler::initialise(data))
            crashFolder = CrashHandler::reportFolder(data);
    }
    logger.addEngine(std::make_unique<ConsoleEngine>(QStringLiteral("std")));
    logger.installMessageHandler();
    logger.removeEngine(QStringLiteral("DEFAULT"));
    qDebug().noquote() << "Logging engines:" << logger.engineNames().join(QStringLiteral(", "));
    if (!crashFolder.isNull())
        qDebug().noquote() << "Crash reports go to" << crashFolder;
    if (!fileProblem.isNull())
        qWarning().noquote() << "Unable to open the debug log" << AppModes::debugLogPath() << "-"
                             << fileProblem;
}

void logBanner(const AppModes &modes)
{
    const QString stars(58, QLatin1Char('*'));
    qInfo().noquote() << stars;
    qInfo().noquote() << "Started new log at " + QDate::currentDate().toString(Qt::ISODate);
    if (modes.debug)
        qInfo().noquote() << "Logging to " + AppModes::debugLogPath();
    qInfo().noquote() << stars;
    qDebug() << "TLS library build:" << QSslSocket::sslLibraryBuildVersionString()
             << "run time:" << QSslSocket::sslLibraryVersionString()
             << "supported:" << QSslSocket::supportsSsl();
}

// Installs the catalogues for the user's language and answers which were found. They are
// logged once logging is set up: before that, a Windows program's messages go nowhere visible.
QStringList installTranslators(QCoreApplication &app)
{
    // Qt's own buttons and dialogs (Cancel, Yes, the file dialog) come from Qt's catalogue: the
    // system's on Linux, the one built into the program on Windows.
    const QList<QPair<QString, QString>> catalogues{
        {QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)},
        {QStringLiteral("qtbase"), QStringLiteral(":/i18n")},
        {QStringLiteral("velmorin"), QStringLiteral(":/i18n")}};
    QStringList loaded;
    QStringList names;
    for (const auto &[name, folder] : catalogues) {
        if (names.contains(name))
            continue;
        auto *translator = new QTranslator(&app);
        if (translator->load(QLocale(), name, QStringLiteral("_"), folder)) {
            QCoreApplication::installTranslator(translator);
            names.append(name);
            loaded.append(QFileInfo(translator->filePath()).completeBaseName());
        } else {
            delete translator;
        }
    }
    return loaded;
}

void connectTrayIcon(TrayIcon &tray, MainWindow &mainWindow)
{
    QObject::connect(&tray, &TrayIcon::toggleRequested, &mainWindow, &MainWindow::toggleVisible);
    QObject::connect(&tray, &TrayIcon::showRequested, &mainWindow, &MainWindow::showAndPin);
    QObject::connect(&tray, &TrayIcon::settingsRequested, &mainWindow, &MainWindow::showSettings);
    QObject::connect(&tray, &TrayIcon::quitRequested, &QCoreApplication::quit);
    QObject::connect(&mainWindow, &MainWindow::clippingCountChanged, &tray,
                     &TrayIcon::setClippingCount);
    tray.setClippingCount(mainWindow.historyModel()->proxy()->rowCount());
    QObject::connect(&tray, &TrayIcon::runActionRequested, &mainWindow,
                     &MainWindow::runActionOnClipboard);
    // The window shows the notice, with what to do about it.
    QObject::connect(&tray, &QSystemTrayIcon::messageClicked, &mainWindow, &MainWindow::showAndPin);
    QObject::connect(&mainWindow, &MainWindow::problemStarted, &tray, [&tray](const QString &text) {
        tray.showMessage(QStringLiteral("Velmorin"), text, QSystemTrayIcon::Warning);
    });
    if (QSystemTrayIcon::isSystemTrayAvailable()) {
        tray.show();
    } else {
        qWarning() << "No system tray is available; showing the window instead";
        mainWindow.show();
    }
}

void showReleaseNotesOnce(MainWindow &mainWindow)
{
    if (Settings::releaseNotesVersion() == Settings::currentReleaseNotesVersion())
        return;
    qDebug() << "Showing the release notes of version" << Settings::currentReleaseNotesVersion();
    mainWindow.show();
    mainWindow.openReleaseNotes();
    Settings::setReleaseNotesVersion(Settings::currentReleaseNotesVersion());
}

bool ask(const QString &question, QMessageBox::StandardButton byDefault)
{
    return QMessageBox::question(nullptr, QStringLiteral("Velmorin"), question,
                                 QMessageBox::Yes | QMessageBox::No, byDefault) == QMessageBox::Yes;
}

void tellOfCrash(CrashReports &reports)
{
    QString newest;
    const QString question = reports.takeUnseenQuestion(&newest);
    if (!question.isEmpty() && ask(question, QMessageBox::No))
        Platform::showInFileManager(newest);
}

void tellAlreadyRunning(Application &app)
{
    qDebug() << "Another instance did not quit; telling the user";
    // Shown before the event loop runs, where quit() does nothing: the box closes itself.
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Velmorin"),
                    QObject::tr("Velmorin is already running!"), QMessageBox::Ok);
    QObject::connect(&app, &Application::terminationRequested, &box, &QMessageBox::reject);
    box.exec();
}

} // namespace

int main(int argc, char *argv[])
{
    qSetMessagePattern(QStringLiteral("%{file}(%{line}): %{message}"));
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorin"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("velmorin.app"));
    QCoreApplication::setApplicationName(QStringLiteral("Velmorin"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // Screenshots of 8K screens are 256 MB decoded, twice Qt's default limit; the limit still
    // keeps a hostile image from claiming gigabytes.
    QImageReader::setAllocationLimit(512);
#ifdef __GLIBC__
    // A fixed threshold: blocks of the size of a save's snapshot or an image are mapped and
    // handed back when freed. Left to adapt, the threshold rises with each such block freed and
    // later ones stay in the heap for as long as the program runs.
    mallopt(M_MMAP_THRESHOLD, 256 * 1024);
#endif

    Application app(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QStringList translations = installTranslators(app);

    QSettings settings;
    Settings::writeDefaults(settings);
    Theme::apply(Settings::value(SettingsKey::Theme).toInt());

    const AppModes modes = AppModes::fromArguments(
        app.arguments(), Settings::value(SettingsKey::WriteDebugLog).toBool());
    Settings::setRunOverrides(modes.settingsOverrides());
    setUpLogging(modes);
    logBanner(modes);
    qDebug().noquote() << "Translations for" << QLocale().name() << "loaded:"
                       << (translations.isEmpty() ? QStringLiteral("none")
                                                  : translations.join(u", "));

    RunGuard guard(QStringLiteral("VelmorinRunGuard"));
    QObject::connect(&app, &Application::terminationRequested, &guard, &RunGuard::cancelWaiting);
    const RunGuard::Start start = guard.waitToRun(10, std::chrono::milliseconds(1000));
    if (start == RunGuard::Start::Blocked)
        tellAlreadyRunning(app);
    if (start != RunGuard::Start::Running)
        return 0;

    // With strong encryption, the pass phrases and the Google tokens live there.
    Secrets::setStore(Platform::secretStore());

    // The box shows ticked from the first start on, so the entry is there from then on too; it
    // also follows the program when it has moved.
    if (!modes.demo && !modes.perfTest)
        Platform::applyStartWithSystem(Settings::value(SettingsKey::StartAutomatically).toBool());

    qDebug() << "Main thread:" << QThread::currentThreadId();
    qDebug().noquote() << "Settings:" << settings.fileName();

    AppServices services(modes);
    QObject::connect(services.settingsEvents(), &SettingsEvents::changed, &app,
                     [] { Theme::apply(Settings::value(SettingsKey::Theme).toInt()); });
    TrayIcon tray;
    MainWindow mainWindow(&services);
    app.setMainWindow(&mainWindow);
    QObject::connect(&mainWindow, &MainWindow::editorCreated, &app,
                     &Application::setSecondaryWindow);
    QObject::connect(&app, &Application::powerResume, &services, &AppServices::resume);
    services.start();
    ClipboardMonitor clipboardMonitor;

    QObject::connect(&app, &QCoreApplication::aboutToQuit, &services, [&services] {
        qDebug() << "Quitting the application";
        services.prepareToQuit();
    });
    connectTrayIcon(tray, mainWindow);
    QObject::connect(&tray, &TrayIcon::monitorRequested, &clipboardMonitor, [&clipboardMonitor] {
        clipboardMonitor.show();
        clipboardMonitor.raise();
        clipboardMonitor.activateWindow();
    });
    QObject::connect(&tray, &TrayIcon::releaseNotesRequested, &mainWindow,
                     &MainWindow::openReleaseNotes);
    showReleaseNotesOnce(mainWindow);

    // Reports of an earlier crash: sent where the build says (while SendDumps is on), and
    // the user told once, after the window is up.
    CrashReports crashReports(CrashHandler::reportFolder(QStandardPaths::writableLocation(
                                  QStandardPaths::AppDataLocation)),
                              CrashReports::configuredUploadUrl());
    if (!modes.demo && !modes.perfTest) {
        QTimer::singleShot(0, &crashReports, [&crashReports] {
            crashReports.upload(crashReports.unseen());
            tellOfCrash(crashReports);
        });
    }

    // On Windows the installer's maintenance tool knows of newer versions; elsewhere the
    // system's packages update the program.
    UpdateChecker updates(UpdateChecker::toolForThisProgram());
    if (updates.isAvailable() && !modes.anyOn()) {
        QObject::connect(&updates, &UpdateChecker::updatesAvailable, &mainWindow,
                         [&updates](const QList<UpdateChecker::Update> &available) {
                             if (ask(UpdateChecker::offerText(available), QMessageBox::Yes))
                                 updates.startUpdater();
                         });
        QTimer::singleShot(std::chrono::seconds(10), &updates, &UpdateChecker::check);
    }

    return QApplication::exec();
}
