#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

// The process-wide run modes, fixed once at start from the first command-line argument.
class AppModes final
{
public:
    bool debug = false;
    bool perfTest = false;
    bool demo = false;

    // Only the first argument after the program name counts, compared case-sensitively, so at
    // most one switch takes effect. Without arguments writeDebugLog alone decides debug mode.
    static AppModes fromArguments(const QStringList &arguments, bool writeDebugLog);

    // The temporary folder's "Velmorin-debug-log.txt".
    static QString debugLogPath();

    bool anyOn() const { return debug || perfTest || demo; }
    // Crash reports are collected unless a debug log is written or the run is a demonstration.
    bool wantsCrashReports() const { return !debug && !demo; }
    // Settings that the mode replaces for its run: a performance test keeps a large history,
    // images included, that stays on this computer.
    QVariantMap settingsOverrides() const;
};
