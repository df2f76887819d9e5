// What one action run costs: a trivial script, the same with the engine's creation measured
// alone, and "JSON Pretty Print" on a document of about 1 MB, valid and not.
// Run from a release build: ./bench/benchactions
#include "actions/actionapi.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJSEngine>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

// The best of several runs, in milliseconds per run.
double perRun(const std::function<void()> &work, int runs)
{
    double best = 1e12;
    for (int round = 0; round < 3; ++round) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < runs; ++i)
            work();
        best = std::min(best, timer.nsecsElapsed() / 1e6 / runs);
    }
    return best;
}

// An array of records, as an API answer would hold them, of about the given size.
QString jsonDocument(int bytes)
{
    QString text = QStringLiteral("[");
    for (int i = 0; text.size() < bytes; ++i) {
        text += QStringLiteral(R"({"id":%1,"name":"Item %1","tags":["a","b, c"],)"
                               R"("price":%2,"stock":{"north":3,"south":null}},)")
                    .arg(i)
                    .arg(i * 1.25);
    }
    text.chop(1);
    return text + QLatin1Char(']');
}

QString builtInScript(const char *fileName)
{
    QFile file(QStringLiteral(":/data/actions/") + QLatin1String(fileName));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object().value("script").toString();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    // The invalid document makes the script warn once per run.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QString error;

    const double engine = perRun(
        [] {
            QJSEngine engine;
            engine.installExtensions(QJSEngine::ConsoleExtension);
        },
        200);
    const double trivial = perRun(
        [&error] {
            ActionAPI::runScript(QStringLiteral("((clipping) => clipping.plainText.toUpperCase())"),
                                 QStringLiteral("abc"), QString(), {}, error);
        },
        200);
    std::printf("trivial action:           %8.3f ms per run (engine creation alone %.3f ms)\n",
                trivial, engine);

    const QString script = builtInScript("03-jsonprettyprint.json");
    const QString valid = jsonDocument(1 << 20);
    QString invalid = valid;
    invalid.replace(QStringLiteral("\"name\""), QStringLiteral("name"));
    QStringList result;
    const double pretty =
        perRun([&] { result = ActionAPI::runScript(script, valid, QString(), {}, error); }, 3);
    std::printf("JSON pretty print, 1 MB:  %8.1f ms per run (%lld characters out)%s\n", pretty,
                qlonglong(result.value(0).size()), error.isEmpty() ? "" : " FAILED");
    // The floor: parsing and indenting the same document in C++.
    const double native = perRun(
        [&] {
            result = {QString::fromUtf8(
                QJsonDocument::fromJson(valid.toUtf8()).toJson(QJsonDocument::Indented))};
        },
        3);
    std::printf("  floor, QJsonDocument:   %8.1f ms per run\n", native);
    const double fallback =
        perRun([&] { result = ActionAPI::runScript(script, invalid, QString(), {}, error); }, 3);
    std::printf("  the same, invalid JSON: %8.1f ms per run (%lld characters out)%s\n", fallback,
                qlonglong(result.value(0).size()), error.isEmpty() ? "" : " FAILED");
    return 0;
}
