// The notification service under load, on loopback only: it holds 5,000 registered computers
// (of 2,500 users) at once, and a notify reaches the other computer of its user. Prints the
// service's resident memory per computer, beside its memory with no computer connected, and
// both beside a bare Qt websocket server (this program with --bare) that only accepts and holds
// the same connections.
//   ./bench/benchnotifyd [computers]
// Needs an open-file limit above the number of computers (ulimit -n).
#include "support/appprocess.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QWebSocket>
#include <QWebSocketServer>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

quint16 startService(QProcess &service, const QString &program, const QStringList &arguments)
{
    service.start(program, arguments);
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

// The floor's server: accepts every connection and keeps it, reading nothing.
int runBareServer()
{
    QWebSocketServer server(QStringLiteral("bare"), QWebSocketServer::NonSecureMode);
    if (!server.listen(QHostAddress::LocalHost, 0))
        return 1;
    QObject::connect(&server, &QWebSocketServer::newConnection, &server, [&server] {
        while (QWebSocket *socket = server.nextPendingConnection())
            socket->setParent(&server);
    });
    std::fprintf(stderr, "Listening on ws://127.0.0.1:%u\n", unsigned(server.serverPort()));
    return QCoreApplication::exec();
}

struct Figures
{
    int open = 0;
    int stillOpen = 0;
    int received = 0;
    double connectSeconds = 0;
    long emptyKb = 0;
    long loadedKb = 0;
};

// Connects and registers the computers, then lets every even one notify its user's other one.
Figures measure(const QString &program, const QStringList &arguments, int computers)
{
    Figures figures;
    QProcess service;
    service.setProcessChannelMode(QProcess::SeparateChannels);
    const quint16 port = startService(service, program, arguments);
    if (port == 0)
        return figures;
    // The log of 5,000 registrations is not read here; it must not fill the pipe.
    QObject::connect(&service, &QProcess::readyReadStandardError, &service,
                     [&service] { service.readAllStandardError(); });
    QTest::qWait(500);
    figures.emptyKb =
        AppProcess::procKilobytes(service.processId(), QStringLiteral("status"), "VmRSS");

    const QUrl url(QStringLiteral("ws://127.0.0.1:%1/notifier").arg(port));
    std::vector<std::unique_ptr<QWebSocket>> sockets;
    int &open = figures.open;
    int &received = figures.received;
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
    figures.connectSeconds = clock.elapsed() / 1000.0;
    QTest::qWait(2000); // the last registrations arrive
    figures.loadedKb =
        AppProcess::procKilobytes(service.processId(), QStringLiteral("status"), "VmRSS");

    for (int i = 0; i < computers; i += 2)
        sockets[size_t(i)]->sendTextMessage(
            QStringLiteral("{\"operation\":\"notify\",\"content\":\"History.json\"}"));
    (void)QTest::qWaitFor([&] { return received >= computers / 2; }, 10000);
    for (const auto &socket : sockets)
        figures.stillOpen += socket->state() == QAbstractSocket::ConnectedState;
    sockets.clear();
    service.terminate();
    service.waitForFinished();
    return figures;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc > 1 && QByteArray(argv[1]) == "--bare")
        return runBareServer();
    const int computers = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 5000;
    const Figures service =
        measure(QStringLiteral(NOTIFY_SERVICE),
                {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--rate"),
                 QStringLiteral("6000"), QStringLiteral("--max-per-address"),
                 QString::number(computers + 10)},
                computers);
    if (service.emptyKb == 0) {
        std::printf("the service did not start\n");
        return 1;
    }
    const Figures bare =
        measure(QCoreApplication::applicationFilePath(), {QStringLiteral("--bare")}, computers);
    const auto perComputer = [](const Figures &figures) {
        return figures.open > 0 ? double(figures.loadedKb - figures.emptyKb) / figures.open : 0.0;
    };
    std::printf("computers connected and registered: %d of %d in %.1f s; still open: %d\n",
                service.open, computers, service.connectSeconds, service.stillOpen);
    std::printf("notifications delivered: %d of %d\n", service.received, computers / 2);
    std::printf("service memory: %.1f MB with no computer, %.1f MB with %d: %.1f kB per computer\n",
                service.emptyKb / 1024.0, service.loadedKb / 1024.0, service.open,
                perComputer(service));
    std::printf("floor, a bare websocket server: %d connected in %.1f s; %.1f MB with none, "
                "%.1f MB with %d: %.1f kB per connection\n",
                bare.open, bare.connectSeconds, bare.emptyKb / 1024.0, bare.loadedKb / 1024.0,
                bare.open, perComputer(bare));
    return 0;
}
