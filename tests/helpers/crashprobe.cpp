// Installs the crash handler for the folder given, then dies of the signal given.
//   crashprobe FOLDER SIGNAL
#include "platform/crashhandler.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc != 3 || !CrashHandler::initialise(QString::fromLocal8Bit(argv[1])))
        return 2;
    std::printf("armed\n");
    std::fflush(stdout);
    std::raise(std::atoi(argv[2]));
    return 0;
}
