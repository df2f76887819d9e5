// The update check against stand-ins for the installer's maintenance tool: scripts that answer
// as the tool does, with updates, without, or with an error.
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
    QString tool(const QByteArray &body);

    QTemporaryDir m_dir;
    int m_tools = 0;
};

QString TestUpdateChecker::tool(const QByteArray &body)
{
    const QString path = m_dir.filePath(QStringLiteral("maintenancetool%1").arg(++m_tools));
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    // The tool is asked with "check-updates"; any other question is an error here.
    file.write("#!/bin/sh\n[ \"$1\" = check-updates ] || exit 3\n" + body);
    file.close();
    file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
    return path;
}

void TestUpdateChecker::answersOfTheTool()
{
    UpdateChecker withUpdates(tool(R"(echo "[0] Arguments: check-updates"
echo '<updates>'
echo '  <update name="Velmorin" version="2.0.0" size="48213000" id="org.velmorin.velmorin"/>'
echo '  <update name="Velmorin notifier" version="2.0.1" size="120" id="org.velmorin.notifyd"/>'
echo '</updates>'
echo "[10] Done"
)"));
    QSignalSpy available(&withUpdates, &UpdateChecker::updatesAvailable);
    withUpdates.check();
    QVERIFY(available.wait());
    const auto updates = available.first().first().value<QList<UpdateChecker::Update>>();
    QCOMPARE(updates.size(), 2);
    QCOMPARE(updates.first().name, QStringLiteral("Velmorin"));
    QCOMPARE(updates.first().version, QStringLiteral("2.0.0"));

    UpdateChecker current(tool("echo 'There are currently no updates available.'\nexit 1\n"));
    QSignalSpy none(&current, &UpdateChecker::noUpdates);
    current.check();
    QVERIFY(none.wait());

    UpdateChecker broken(tool("echo 'Cannot retrieve remote tree' >&2\nexit 2\n"));
    QSignalSpy failed(&broken, &UpdateChecker::failed);
    broken.check();
    QVERIFY(failed.wait());

    UpdateChecker missing(m_dir.filePath(QStringLiteral("no-such-tool")));
    QSignalSpy missingFailed(&missing, &UpdateChecker::failed);
    missing.check();
    QVERIFY(missingFailed.wait());

    QVERIFY(!UpdateChecker(QString()).isAvailable());
    QVERIFY(UpdateChecker::toolForThisProgram().isEmpty()); // not Windows
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
