// The platform-free key logic over a fake desktop: what typed keys do to the word, hook
// installation, and the synthetic key sequences.
#include "base/settings.h"
#include "base/settingsevents.h"
#include "input/inputmanager.h"
#include "platform/keysender.h"
#include "platform/platform.h"
#include "platform/virtualkeys.h"
#include "support/fakedesktop.h"
#include "support/testprofile.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTest>

class TestInputManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void wordBreaksAndCharacters_data();
    void wordBreaksAndCharacters();
    void sendKeyOrderAndFlags();
    void tapCharacterAddsTheModifiersItNeeds();
    void typeTextGoesByteByByte();

private:
    void type(quint32 virtualKey, const QString &text);

    TestProfile m_profile;
    FakeDesktop *m_desktop = nullptr;
    InputManager *m_input = nullptr;
};

void TestInputManager::initTestCase()
{
    m_profile.useInThisProcess();
    m_desktop = new FakeDesktop(this);
    Platform::setDesktop(m_desktop);
    m_input = new InputManager(m_desktop, this);
}

void TestInputManager::init()
{
    QSettings().setValue(SettingsKey::RequireSpace, false);
    m_input->loadSettings();
    m_desktop->events.clear();
    emit m_input->keywordBreakerTyped();
    QCoreApplication::processEvents();
}

void TestInputManager::type(quint32 virtualKey, const QString &text)
{
    emit m_desktop->keyPressed(virtualKey, text);
    QCoreApplication::processEvents();
}

void TestInputManager::wordBreaksAndCharacters_data()
{
    QTest::addColumn<quint32>("virtualKey");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("word"); // after typing "ab" and then this key

    QTest::newRow("letter") << quint32('C') << "c"
                            << "abc";
    QTest::newRow("shifted letter") << quint32('C') << "C"
                                    << "abC";
    QTest::newRow("accented letter from a dead key") << quint32('E') << "\u00e9"
                                                     << "ab\u00e9";
    QTest::newRow("dead key alone") << quint32(0xDE) << ""
                                    << "ab";
    QTest::newRow("F1 types nothing") << VirtualKey::F1 << ""
                                      << "ab";
    QTest::newRow("backspace") << VirtualKey::Backspace << "\b"
                               << "a";
    QTest::newRow("space") << VirtualKey::Space << " "
                           << "";
    QTest::newRow("enter") << VirtualKey::Return << "\r"
                           << "";
    QTest::newRow("tab") << VirtualKey::Tab << "\t"
                         << "";
    QTest::newRow("escape") << VirtualKey::Escape << "\x1b"
                            << "";
    QTest::newRow("control character") << quint32('C') << "\x03"
                                       << "";
    for (const quint32 key : {VirtualKey::Left, VirtualKey::Right, VirtualKey::Up, VirtualKey::Down,
                              VirtualKey::Home, VirtualKey::End, VirtualKey::PageUp,
                              VirtualKey::PageDown, VirtualKey::Insert, VirtualKey::Delete}) {
        QTest::newRow(qPrintable(QStringLiteral("navigation 0x%1").arg(key, 0, 16))) << key << ""
                                                                                     << "";
    }
    // Navigation breaks the word even if a layout gave the key a character.
    QTest::newRow("navigation with text") << VirtualKey::Delete << "x"
                                          << "";
}

void TestInputManager::wordBreaksAndCharacters()
{
    QFETCH(quint32, virtualKey);
    QFETCH(QString, text);
    QFETCH(QString, word);
    type('A', QStringLiteral("a"));
    type('B', QStringLiteral("b"));
    type(virtualKey, text);
    QCOMPARE(m_input->typedWord(), word);
}

void TestInputManager::sendKeyOrderAndFlags()
{
    const quint32 all =
        KeyModifier::Windows | KeyModifier::Alt | KeyModifier::Control | KeyModifier::Shift;
    KeySender::sendKey('A', true, all);
    KeySender::sendKey('A', false, all);
    QCOMPARE(m_desktop->keyLog(),
             QStringLiteral("+Win +Alt +Ctrl +Shift +A -Win -Alt -Ctrl -Shift -A"));
    const auto &events = m_desktop->events;
    QCOMPARE(events.at(0).flags, KeyEventFlag::ExtendedKey);
    QCOMPARE(events.at(5).flags, KeyEventFlag::ExtendedKey | KeyEventFlag::KeyUp);
    QCOMPARE(events.at(5).scanCode, quint8(FakeDesktop::scanOf(VirtualKey::LeftWindows) | 0x80));
    QCOMPARE(events.at(7).flags, KeyEventFlag::KeyUp);
    QCOMPARE(events.at(9).scanCode, quint8(FakeDesktop::scanOf('A') | 0x80));

    m_desktop->events.clear();
    KeySender::tapKey(VirtualKey::Delete, 0);
    KeySender::tapKey(VirtualKey::Return, 0);
    QCOMPARE(events.at(0).flags, KeyEventFlag::ExtendedKey);
    QCOMPARE(events.at(1).flags, KeyEventFlag::ExtendedKey | KeyEventFlag::KeyUp);
    QCOMPARE(events.at(2).flags, 0u);
    QCOMPARE(events.at(3).flags, KeyEventFlag::KeyUp);
}

void TestInputManager::tapCharacterAddsTheModifiersItNeeds()
{
    KeySender::tapCharacter(QLatin1Char('v'), KeyModifier::Control);
    QCOMPARE(m_desktop->keyLog(), QStringLiteral("+Ctrl +V -Ctrl -V"));
    m_desktop->events.clear();
    KeySender::tapCharacter(QLatin1Char('V'), 0);
    QCOMPARE(m_desktop->keyLog(), QStringLiteral("+Shift +V -Shift -V"));
    m_desktop->events.clear();
    KeySender::tapCharacter(QChar(0x20AC), 0); // AltGr is Control and Alt
    QCOMPARE(m_desktop->keyLog(), QStringLiteral("+Alt +Ctrl +E -Alt -Ctrl -E"));
}

void TestInputManager::typeTextGoesByteByByte()
{
    KeySender::typeText(QStringLiteral("a!B"));
    QCOMPARE(m_desktop->keyLog(), QStringLiteral("+A -A +Shift +1 -Shift -1 +Shift +B -Shift -B"));
    // A character beyond 7 bits is two UTF-8 bytes that no key types: VkKeyScanW's -1 asks
    // for every modifier around the non-key 0xFF, and no letter comes out.
    m_desktop->events.clear();
    KeySender::typeText(QStringLiteral("\u00e9"));
    QCOMPARE(
        m_desktop->keyLog(),
        QStringLiteral("+Alt +Ctrl +Shift +0xff -Alt -Ctrl -Shift -0xff ").repeated(2).trimmed());
}

QTEST_GUILESS_MAIN(TestInputManager)
#include "testinputmanager.moc"
