// The update check against stand-ins for the installer's maintenance tool: scripts (batch files
// on Windows) that answer as the tool does, with updates, without, or with an error.
#include "maintenance/updatechecker.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestUpdateChecker : public QObject
{
    Q_OBJECT

private slots:
    void answersOfTheTool();
    void offerNamesEachUpdate();

private:
    QString tool(const QStringList &lines, int exitCode, bool toError = false);

    QTemporaryDir m_dir;
    int m_tools = 0;
};

// A tool that answers "check-updates" with these lines, on standard output or error, and ends
// with the code; any other question is an error.
QString TestUpdateChecker::tool(const QStringList &lines, int exitCode, bool toError)
{
#ifdef Q_OS_WIN
    QString script = QStringLiteral("@echo off\r\nif not \"%1\"==\"check-updates\" exit /b 3\r\n");
    for (QString line : lines) {
        for (const QString special : {"^", "<", ">", "&", "|"})
            line.replace(special, "^" + special);
        script += "echo " + line + (toError ? " 1>&2\r\n" : "\r\n");
    }
    script += QStringLiteral("exit /b %1\r\n").arg(exitCode);
    const QString path = m_dir.filePath(QStringLiteral("maintenancetool%1.cmd").arg(++m_tools));
#else
    QString script = QStringLiteral("#!/bin/sh\n[ \"$1\" = check-updates ] || exit 3\n");
    for (const QString &line : lines)
        script += "echo '" + line + (toError ? "' >&2\n" : "'\n");
    script += QStringLiteral("exit %1\n").arg(exitCode);
    const QString path = m_dir.filePath(QStringLiteral("maintenancetool%1").arg(++m_tools));
#endif
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(script.toUtf8());
    file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
    return path;
}

void TestUpdateChecker::answersOfTheTool()
{
    UpdateChecker withUpdates(tool(
        {"[0] Arguments: check-updates", "<updates>",
         R"(  <update name="Velmorin" version="2.0.0" size="48213000" id="org.velmorin.velmorin"/>)",
         R"(  <update name="Velmorin notifier" version="2.0.1" size="120" id="org.velmorin.notifyd"/>)",
         "</updates>", "[10] Done"},
        0));
    QSignalSpy available(&withUpdates, &UpdateChecker::updatesAvailable);
    withUpdates.check();
    QVERIFY(available.wait());
    const auto updates = available.first().first().value<QList<UpdateChecker::Update>>();
    QCOMPARE(updates.size(), 2);
    QCOMPARE(updates.first().name, QStringLiteral("Velmorin"));
    QCOMPARE(updates.first().version, QStringLiteral("2.0.0"));

    UpdateChecker current(tool({"There are currently no updates available."}, 1));
    QSignalSpy none(&current, &UpdateChecker::noUpdates);
    current.check();
    QVERIFY(none.wait());

    UpdateChecker broken(tool({"Cannot retrieve remote tree"}, 2, true));
    QSignalSpy failed(&broken, &UpdateChecker::failed);
    broken.check();
    QVERIFY(failed.wait());

    UpdateChecker missing(m_dir.filePath(QStringLiteral("no-such-tool")));
    QSignalSpy missingFailed(&missing, &UpdateChecker::failed);
    missing.check();
    // Windows tells at once, from within check(); Linux a moment later.
    QTRY_COMPARE(missingFailed.size(), 1);

    QVERIFY(!UpdateChecker(QString()).isAvailable());
    QVERIFY(UpdateChecker::toolForThisProgram().isEmpty()); // none beside the tests
    QVERIFY(UpdateChecker::parse("<updates></updates").isEmpty());
}

void TestUpdateChecker::offerNamesEachUpdate()
{
    const QString text = UpdateChecker::offerText(
        {{QStringLiteral("Velmorin"), QStringLiteral("2.0")}, {QStringLiteral("Tools"), "1.1"}});
    QVERIFY(text.contains(QLatin1String("Velmorin 2.0\nTools 1.1")));
}

QTEST_MAIN(TestUpdateChecker)
#include "testupdatechecker.moc"
