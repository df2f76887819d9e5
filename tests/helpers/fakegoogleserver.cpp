// The Google stand-in of the tests as a program of its own, to try Google Drive sync by hand
// without a Google account:
//
//   build/tests/helpers/fakegoogleserver 8765
//   export VELMORIN_GOOGLE_ACCOUNTS_URL=http://127.0.0.1:8765
//   export VELMORIN_GOOGLE_API_URL=http://127.0.0.1:8765
//   build/src/velmorin
//
// with GoogleClientId set to the stand-in's client in the settings.
#include "support/fakegoogle.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const quint16 port = argc > 1 ? quint16(QByteArray(argv[1]).toUInt()) : 0;
    FakeGoogle google;
    if (!google.start(port)) {
        std::fprintf(stderr, "Unable to listen on port %u\n", port);
        return 1;
    }
    std::printf("Google stand-in at %s, client id %s\n", qPrintable(google.url()),
                qPrintable(FakeGoogle::ClientId));
    std::fflush(stdout);
    return app.exec();
}
