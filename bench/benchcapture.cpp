// From a copy in another program to the clipping in the history and the history file saved,
// over the real X11 clipboard, with histories of 100, 10,000 and 100,000 clippings. The other
// program is the test editor, which puts rich text on the clipboard when told. Needs an X
// display:
//   xvfb-run -a ./bench/benchcapture
#include "base/settings.h"
#include "clipboard/clipboardlistener.h"
#include "history/historyfile.h"
#include "history/historyitemmodel.h"
#include "support/targetwindow.h"
#include "support/testprofile.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QSettings>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

// Runs the event loop until done() holds or ten seconds pass.
template <typename Done> bool spinUntil(Done done)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return done();
}

struct Figures
{
    std::vector<double> inModel;
    std::vector<double> saved;
    std::vector<double> noticed; // the floor: the clipboard's change reaching this process
    std::vector<double> written; // the floor: writing and syncing a file of the history's size
};

double percentile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    return values[size_t(share * double(values.size() - 1))];
}

Figures measure(QProcess &editor, const TestProfile &profile, int historySize, int copies)
{
    QSettings().setValue(SettingsKey::KeepItems, QString::number(historySize + copies + 100));
    const QString path = profile.path(QStringLiteral("data/bench-%1.json").arg(historySize));
    {
        HistoryItemModel generated(path);
        generated.fillWithGeneratedClippings(historySize);
        generated.save(false);
        generated.finishSaves();
    }
    // Loaded from its file, as the program starts with it.
    HistoryItemModel model(path);
    model.load();
    model.save(false);
    model.finishSaves();
    ClipboardListener listener;
    QObject::connect(&listener, &ClipboardListener::changed, &model,
                     &HistoryItemModel::addMimeData);

    Figures figures;
    QElapsedTimer timer;
    bool inModel = false;
    bool saved = false;
    bool noticed = false;
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &model, [&] {
        if (!noticed)
            figures.noticed.push_back(double(timer.nsecsElapsed()) / 1e6);
        noticed = true;
    });
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, &model, [&] {
        if (!inModel)
            figures.inModel.push_back(double(timer.nsecsElapsed()) / 1e6);
        inModel = true;
    });
    QObject::connect(&model, &HistoryItemModel::saveFinished, &model, [&] {
        figures.saved.push_back(double(timer.nsecsElapsed()) / 1e6);
        saved = true;
    });
    for (int i = 0; i < copies; ++i) {
        inModel = saved = noticed = false;
        timer.start();
        editor.write(QStringLiteral("copy-rich Copy %1 of the capture benchmark, history %2\n")
                         .arg(i)
                         .arg(historySize)
                         .toUtf8());
        if (!spinUntil([&] { return saved; })) {
            std::fprintf(stderr, "copy %d was not recorded\n", i);
            break;
        }
    }
    model.finishSaves();
    QByteArray bytes;
    HistoryFile::read(model.filePath(), &bytes);
    for (int i = 0; i < 7; ++i) {
        timer.start();
        HistoryFile::write(model.filePath() + QStringLiteral("-floor"), bytes);
        figures.written.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return figures;
}

} // namespace

int main(int argc, char **argv)
{
    TestProfile profile;
    profile.useInThisProcess();
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_LOGGING_RULES", "*.debug=false");
    QApplication application(argc, argv);
    QSettings settings;
    Settings::writeDefaults(settings);

    QProcess editor;
    editor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    editor.start(TargetWindow::editorPath(), {});
    QByteArray said;
    if (!spinUntil([&] { return (said += editor.readAllStandardOutput()).contains("READY"); })) {
        std::fprintf(stderr, "the test editor did not start: run under xvfb-run\n");
        return 1;
    }
    // The editor answers each copy; its answers are not needed here.
    QObject::connect(&editor, &QProcess::readyReadStandardOutput, &editor,
                     [&] { editor.readAllStandardOutput(); });

    std::printf("history size | copies | in the model: median, 95th pct | saved: median, 95th "
                "pct | floors: clipboard noticed, median; file written, median (ms)\n");
    for (const int size : {100, 10000, 100000}) {
        const int copies = size >= 100000 ? 30 : 100;
        const Figures figures = measure(editor, profile, size, copies);
        if (figures.saved.empty())
            return 1;
        std::printf("%12d | %6zu | %6.1f, %6.1f | %6.1f, %6.1f | %6.1f; %6.1f\n", size,
                    figures.saved.size(), percentile(figures.inModel, 0.5),
                    percentile(figures.inModel, 0.95), percentile(figures.saved, 0.5),
                    percentile(figures.saved, 0.95), percentile(figures.noticed, 0.5),
                    percentile(figures.written, 0.5));
        std::fflush(stdout);
    }
    editor.closeWriteChannel();
    editor.waitForFinished(3000);
    return 0;
}
