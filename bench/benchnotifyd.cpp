// The notification service under load, on loopback only: it holds 5,000 registered computers
// (of 2,500 users) at once, and a notify reaches the other computer of its user. Prints the
// service's resident memory per computer, beside its memory with no computer connected.
//   ./bench/benchnotifyd [computers]
// Needs an open-file limit above the number of computers (ulimit -n).
#include "support/appprocess.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QWebSocket>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

quint16 startService(QProcess &service, int computers)
{
    service.start(QStringLiteral(NOTIFY_SERVICE),
                  {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--rate"),
                   QStringLiteral("6000"), QStringLiteral("--max-per-address"),
                   QString::number(computers + 10)});
    const QRegularExpression listening(QStringLiteral("Listening on ws://127.0.0.1:(\\d+)"));
    QString output;
    QRegularExpressionMatch match;
    (void)QTest::qWaitFor(
        [&] {
            output += QString::fromUtf8(service.readAllStandardError());
            match = listening.match(output);
            return match.hasMatch() || service.state() == QProcess::NotRunning;
        },
        10000);
    return quint16(match.captured(1).toUInt());
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const int computers = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 5000;
    QProcess service;
    service.setProcessChannelMode(QProcess::SeparateChannels);
    const quint16 port = startService(service, computers);
    if (port == 0) {
        std::printf("the service did not start\n");
        return 1;
    }
    // The log of 5,000 registrations is not read here; it must not fill the pipe.
    QObject::connect(&service, &QProcess::readyReadStandardError, &service,
                     [&service] { service.readAllStandardError(); });
    QTest::qWait(500);
    const long emptyKb =
        AppProcess::procKilobytes(service.processId(), QStringLiteral("status"), "VmRSS");

    const QUrl url(QStringLiteral("ws://127.0.0.1:%1/notifier").arg(port));
    std::vector<std::unique_ptr<QWebSocket>> sockets;
    int open = 0;
    int received = 0;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < computers; ++i) {
        auto socket = std::make_unique<QWebSocket>();
        QWebSocket *raw = socket.get();
        QObject::connect(raw, &QWebSocket::connected, raw, [raw, i, &open] {
            ++open;
            raw->sendTextMessage(
                QStringLiteral("{\"operation\":\"register\",\"user\":\"user%1\",\"name\":\"pc%2\","
                               "\"type\":\"bench\"}")
                    .arg(i / 2)
                    .arg(i));
        });
        QObject::connect(raw, &QWebSocket::textMessageReceived, raw, [&received] { ++received; });
        raw->open(url);
        sockets.push_back(std::move(socket));
        if (i % 200 == 199)
            (void)QTest::qWaitFor([&] { return open > i - 100; }, 10000);
    }
    (void)QTest::qWaitFor([&] { return open == computers; }, 60000);
    const double connectSeconds = clock.elapsed() / 1000.0;
    QTest::qWait(2000); // the last registrations arrive
    const long loadedKb =
        AppProcess::procKilobytes(service.processId(), QStringLiteral("status"), "VmRSS");

    // Every even computer tells its user's other one.
    for (int i = 0; i < computers; i += 2)
        sockets[size_t(i)]->sendTextMessage(
            QStringLiteral("{\"operation\":\"notify\",\"content\":\"History.json\"}"));
    (void)QTest::qWaitFor([&] { return received >= computers / 2; }, 30000);
    int stillOpen = 0;
    for (const auto &socket : sockets)
        stillOpen += socket->state() == QAbstractSocket::ConnectedState;

    std::printf("computers connected and registered: %d of %d in %.1f s; still open: %d\n", open,
                computers, connectSeconds, stillOpen);
    std::printf("notifications delivered: %d of %d\n", received, computers / 2);
    std::printf("service memory: %.1f MB with no computer, %.1f MB with %d: %.1f kB per computer\n",
                emptyKb / 1024.0, loadedKb / 1024.0, open,
                open > 0 ? double(loadedKb - emptyKb) / open : 0.0);
    sockets.clear();
    service.terminate();
    service.waitForFinished();
    return 0;
}
