// From the keystroke that completes a keyword to the snippet's text in the editor, over the
// real X11 input path (raw key events, XTest Backspaces, the clipboard, Ctrl+V), for a
// 20-character and a 2,000-character snippet. The expansion waits for typing to rest first;
// that pause is the floor printed beside the figures. Needs an X display with a window manager:
//   scripts/xvfb-session.sh build/bench/benchexpansion [runs]
#include "base/settings.h"
#include "input/inputmanager.h"
#include "platform/keysender.h"
#include "platform/platform.h"
#include "support/targetwindow.h"
#include "support/testprofile.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QSettings>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

InputManager *g_input = nullptr;

// Lets the event loop block for a moment, as the program's loop does between events: the hook
// reads key events that Xlib queued while answering our own requests when the loop is about
// to block. (QTest::qWait never blocks, so it would leave them queued.)
void idle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

double percentile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    return values[size_t(share * double(values.size() - 1))];
}

// Milliseconds from the last key of the keyword to the text in the editor, one per run.
std::vector<double> measure(TargetWindow &editor, QChar last, const QString &expected, int runs)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        editor.clear();
        emit g_input->keywordBreakerTyped();
        idle(20);
        KeySender::typeText(QStringLiteral("::"));
        // The hook has seen the prefix.
        for (int wait = 0; wait < 100 && g_input->typedWord() != "::"; ++wait)
            idle(10);
        QElapsedTimer timer;
        timer.start();
        KeySender::tapCharacter(last, 0);
        while (editor.text() != expected && timer.elapsed() < 5000)
            idle(1);
        if (timer.elapsed() >= 5000) {
            std::printf("run %d: no expansion within 5 s; the editor holds %lld characters\n", run,
                        qlonglong(editor.text().size()));
            continue;
        }
        times.push_back(timer.nsecsElapsed() / 1e6);
        idle(600); // the clipboard comes back before the next run
    }
    return times;
}

void report(const char *what, const std::vector<double> &times)
{
    if (times.empty())
        return;
    std::printf("%-26s median %6.1f ms, 95th percentile %6.1f ms, worst %6.1f ms (%zu runs)\n",
                what, percentile(times, 0.5), percentile(times, 0.95),
                *std::max_element(times.begin(), times.end()), times.size());
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    TestProfile profile;
    profile.useInThisProcess();
    QSettings settings;
    Settings::writeDefaults(settings);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    TargetWindow editor;
    if (!editor.start()) {
        std::printf("no editor: %s\n", qPrintable(editor.error()));
        return 1;
    }
    const QString shortText = QStringLiteral("Kind regards, Ann M.");
    QString longText;
    while (longText.size() < 2000)
        longText += QStringLiteral("The quick brown fox jumps over the lazy dog. ");
    longText.truncate(2000);
    InputManager *input = new InputManager(Platform::desktop(), &app);
    g_input = input;
    input->setKeywords({{QStringLiteral("::a"), shortText}, {QStringLiteral("::b"), longText}});
    input->installHooks();
    editor.activate();

    const int runs = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 50;
    std::printf("floor: the typing pause, %d ms\n", InputManager::TypingPause);
    report("20-character snippet:", measure(editor, QLatin1Char('a'), shortText, runs));
    report("2,000-character snippet:", measure(editor, QLatin1Char('b'), longText, runs));
    return 0;
}
