#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

// A private user for programs started by a test: its own settings, data, documents and
// temporary folders (the temporary folder also keys the single-instance guard), so runs
// never meet the real user's files or each other.
class TestProfile final
{
public:
    TestProfile();

    bool isValid() const { return m_root.isValid(); }
    QString path(const QString &relative = QString()) const;
    QString settingsFile() const;
    QString debugLogFile() const;
    QProcessEnvironment environment() const;

    // Points this test process itself at the profile: its data folder (the history, the image
    // cache) and its settings. Call before the first use of either.
    void useInThisProcess() const;

    // Writes one setting into the profile's settings file before the program starts.
    void setSetting(const QString &key, const QVariant &value) const;
    QVariant setting(const QString &key) const;

private:
    QTemporaryDir m_root;
};
