// Global shortcuts: the Windows key table and the shared registrations of the registry (over a
// fake system service).
#include "qhotkey.h"
#include "support/fakehotkeyservice.h"
#include "support/testprofile.h"
#include "win/winkeymap.h"

#include <QSignalSpy>
#include <QTest>

namespace {

// A US layout for VkKeyScanW: letters and digits, nothing else.
short usKeyScan(wchar_t character)
{
    if (character >= 'A' && character <= 'Z')
        return short(character);
    if (character >= '0' && character <= '9')
        return short(character);
    return -1;
}

} // namespace

class TestHotkey : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void windowsKeyTable_data();
    void windowsKeyTable();
    void sameCombinationSharesOneRegistration();

private:
    TestProfile m_profile;
    FakeHotkeyService *m_service = nullptr;
};

void TestHotkey::initTestCase()
{
    m_profile.useInThisProcess();
    m_service = new FakeHotkeyService;
    QHotkeyPrivate::setInstance(m_service);
}

void TestHotkey::cleanupTestCase()
{
    delete m_service;
}

void TestHotkey::windowsKeyTable_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("mapped");
    QTest::addColumn<quint32>("virtualKey");
    QTest::newRow("letter") << int(Qt::Key_V) << true << quint32(0x56);
    QTest::newRow("period without a key: keypad decimal")
        << int(Qt::Key_Period) << true << quint32(110);
    QTest::newRow("other character without a key: low byte")
        << int(Qt::Key_Eacute) << true << quint32(0xC9);
    QTest::newRow("F1") << int(Qt::Key_F1) << true << quint32(112);
    QTest::newRow("F24") << int(Qt::Key_F24) << true << quint32(135);
    QTest::newRow("Backtab") << int(Qt::Key_Backtab) << true << quint32(9);
    QTest::newRow("Print") << int(Qt::Key_Print) << true << quint32(42);
    QTest::newRow("MediaNext") << int(Qt::Key_MediaNext) << true << quint32(176);
    QTest::newRow("Play") << int(Qt::Key_Play) << true << quint32(250);
    QTest::newRow("F25 has no key") << int(Qt::Key_F25) << false << quint32(0);
    QTest::newRow("Calculator has no key") << int(Qt::Key_Calculator) << false << quint32(0);
}

void TestHotkey::windowsKeyTable()
{
    QFETCH(int, key);
    QFETCH(bool, mapped);
    QFETCH(quint32, virtualKey);
    bool ok = false;
    const quint32 result = WinKeyMap::virtualKey(Qt::Key(key), usKeyScan, ok);
    QCOMPARE(ok, mapped);
    if (mapped)
        QCOMPARE(result, virtualKey);
}

void TestHotkey::sameCombinationSharesOneRegistration()
{
    const int calls = m_service->registerCalls;
    auto *first = new QHotkey(QKeySequence(QStringLiteral("Ctrl+Shift+V")), true);
    QHotkey second(QKeySequence(QStringLiteral("Ctrl+Shift+V")), true);
    QCOMPARE(m_service->registerCalls, calls + 1);
    QCOMPARE(m_service->registrationCount(), 1);

    QSignalSpy activated(&second, &QHotkey::activated);
    QSignalSpy firstActivated(first, &QHotkey::activated);
    m_service->press(quint32(Qt::Key_V), 6);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(firstActivated.count(), 1);

    delete first; // the other object still holds the combination
    QCOMPARE(m_service->registered.size(), 1);
    m_service->press(quint32(Qt::Key_V), 6);
    QCOMPARE(activated.count(), 2);
    QVERIFY(second.setRegistered(false));
    QVERIFY(m_service->registered.isEmpty());
    m_service->press(quint32(Qt::Key_V), 6);
    QCOMPARE(activated.count(), 2);
}

QTEST_MAIN(TestHotkey)
#include "testhotkey.moc"
