// velmorin-notifyd: the notification service of Velmorin's Google Drive sync.
#include "notifyserver.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("velmorin-notifyd"));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Tells a user's computers running Velmorin when one of them has uploaded "
                       "new content. Clients connect to ws(s)://host:port/notifier."));
    parser.addHelpOption();
    const QCommandLineOption listen(QStringLiteral("listen"),
                                    QStringLiteral("Address to listen on (default 127.0.0.1)."),
                                    QStringLiteral("address"), QStringLiteral("127.0.0.1"));
    const QCommandLineOption port(QStringLiteral("port"),
                                  QStringLiteral("Port to listen on; 0 picks a free one "
                                                 "(default 8080)."),
                                  QStringLiteral("port"), QStringLiteral("8080"));
    const QCommandLineOption cert(QStringLiteral("cert"),
                                  QStringLiteral("TLS certificate chain (PEM) for wss."),
                                  QStringLiteral("file"));
    const QCommandLineOption key(QStringLiteral("key"),
                                 QStringLiteral("TLS private key (PEM) for wss."),
                                 QStringLiteral("file"));
    const QCommandLineOption size(QStringLiteral("max-message-size"),
                                  QStringLiteral("Largest message in bytes (default 4096)."),
                                  QStringLiteral("bytes"), QStringLiteral("4096"));
    const QCommandLineOption rate(QStringLiteral("rate"),
                                  QStringLiteral("Messages a client may send per minute "
                                                 "(default 120)."),
                                  QStringLiteral("count"), QStringLiteral("120"));
    const QCommandLineOption perAddress(QStringLiteral("max-per-address"),
                                        QStringLiteral("Connections one address may hold "
                                                       "(default 64)."),
                                        QStringLiteral("count"), QStringLiteral("64"));
    const QCommandLineOption registerTimeout(
        QStringLiteral("register-timeout"),
        QStringLiteral("Milliseconds a connection has to register (default 10000)."),
        QStringLiteral("ms"), QStringLiteral("10000"));
    const QCommandLineOption connections(
        QStringLiteral("max-connections"),
        QStringLiteral("Connections in all (default: what the open-file limit allows)."),
        QStringLiteral("count"), QStringLiteral("0"));
    parser.addOptions(
        {listen, port, cert, key, size, rate, perAddress, registerTimeout, connections});
    parser.process(app);

    NotifyServer::Options options;
    options.address = QHostAddress(parser.value(listen));
    bool portOk = false;
    options.port = quint16(parser.value(port).toUInt(&portOk));
    options.certificateFile = parser.value(cert);
    options.keyFile = parser.value(key);
    options.maxMessageBytes = qMax(256LL, parser.value(size).toLongLong());
    options.messagesPerMinute = qMax(1, parser.value(rate).toInt());
    options.maxConnectionsPerAddress = qMax(1, parser.value(perAddress).toInt());
    options.registrationTimeoutMs = qMax(100, parser.value(registerTimeout).toInt());
    options.maxConnections = qMax(0, parser.value(connections).toInt());
    if (options.address.isNull() || !portOk) {
        std::fprintf(stderr, "Invalid --listen address or --port\n");
        return 2;
    }

    NotifyServer server(options);
    if (!server.start()) {
        std::fprintf(stderr, "Unable to start: %s\n", qPrintable(server.errorString()));
        return 1;
    }
    // Nothing is kept between runs: SIGTERM may end it at any moment, and the clients
    // reconnect when it is back.
    return app.exec();
}
