// Keyword expansion over a fake desktop and the real (offscreen) clipboard: when a typed word
// matches, what is erased, what is pasted, where the caret goes, and what comes back.
#include "base/settings.h"
#include "history/historyitemmodel.h"
#include "input/inputmanager.h"
#include "platform/platform.h"
#include "platform/virtualkeys.h"
#include "snippets/snippet.h"
#include "snippets/snippetitemmodel.h"
#include "snippets/snippetpaster.h"
#include "snippets/snippetshortcuts.h"
#include "support/fakedesktop.h"
#include "support/fakehotkeyservice.h"
#include "support/testprofile.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

class TestKeywordExpansion : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void expandsWhenTypingRests();
    void typingOnIsCarriedIntoTheReplacement_data();
    void typingOnIsCarriedIntoTheReplacement();
    void requireSpace();
    void theShorterKeywordWins();
    void noExpandApplicationKeepsTheWord();
    void delayedApplicationDropsAnExpansionTypedOver();
    void heldModifiersAreReleasedFirst();
    void caretMarkersSelect();
    void snippetShortcutsFollowTheTree();

private:
    void type(const QString &keys);
    // Waits until the expansion has gone out, before the clipboard comes back.
    static void rest() { QTest::qWait(InputManager::TypingPause + 60); }
    void setRequireSpace(bool on);
    int backspaces() const { return int(m_desktop->keyLog().count(QLatin1String("+Back"))); }

    TestProfile m_profile;
    FakeDesktop *m_desktop = nullptr;
    InputManager *m_input = nullptr;
    HistoryItemModel *m_history = nullptr;
    SnippetPaster *m_paster = nullptr;
};

void TestKeywordExpansion::initTestCase()
{
    m_profile.useInThisProcess();
    m_desktop = new FakeDesktop(this);
    Platform::setDesktop(m_desktop);
    m_history = new HistoryItemModel(m_profile.path(QStringLiteral("History.json")), this);
    m_paster = new SnippetPaster(m_history, this);
    m_input = new InputManager(m_desktop, this);
    m_input->setResolver([this](const QString &text, const QString &application) {
        return m_paster->resolve(text, application);
    });
}

void TestKeywordExpansion::init()
{
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
    m_history->reloadSettings();
    setRequireSpace(false);
    m_input->setKeywords({{QStringLiteral("sig"), QStringLiteral("Best, Ann")}});
    m_desktop->foregroundName = QStringLiteral("editor");
    m_desktop->held = Qt::NoModifier;
    emit m_input->keywordBreakerTyped();
    QCoreApplication::processEvents();
    m_desktop->events.clear();
    QGuiApplication::clipboard()->setText(QStringLiteral("the user's"));
}

void TestKeywordExpansion::cleanup()
{
    // The caret moves and the clipboard's return of this test happen before the next.
    QTest::qWait(550);
}

void TestKeywordExpansion::setRequireSpace(bool on)
{
    QSettings().setValue(SettingsKey::RequireSpace, on);
    m_input->loadSettings();
}

// Characters as the hook reports them; "\b" is Backspace, "\n" Enter and "<" Left.
void TestKeywordExpansion::type(const QString &keys)
{
    for (const QChar key : keys) {
        quint32 virtualKey = key.toUpper().unicode();
        QString text(key);
        if (key == QLatin1Char('\b')) {
            virtualKey = VirtualKey::Backspace;
        } else if (key == QLatin1Char('\n')) {
            virtualKey = VirtualKey::Return;
            text = QStringLiteral("\r");
        } else if (key == QLatin1Char('<')) {
            virtualKey = VirtualKey::Left;
            text.clear();
        }
        emit m_desktop->keyPressed(virtualKey, text);
        QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents(); // the expansion's own turn of the loop
}

void TestKeywordExpansion::expandsWhenTypingRests()
{
    m_desktop->hooks[IDesktop::KeyboardHook] = true;
    type(QStringLiteral("si"));
    rest();
    QVERIFY(m_desktop->events.isEmpty());
    type(QStringLiteral("g"));
    QVERIFY(m_input->isExpansionPending());
    QVERIFY(m_desktop->events.isEmpty());
    rest();
    QCOMPARE(m_desktop->keyLog(),
             QStringLiteral("+Back -Back +Back -Back +Back -Back +Ctrl +V -Ctrl -V"));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("Best, Ann"));
    QCOMPARE(m_input->typedWord(), QString());
    QVERIFY(m_desktop->hooks[IDesktop::KeyboardHook]); // back on after the expansion
    QTRY_COMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("the user's"));
}

void TestKeywordExpansion::typingOnIsCarriedIntoTheReplacement_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<int>("backspaces");
    QTest::addColumn<QString>("pasted"); // empty: the expansion was dropped
    QTest::newRow("words after it") << "sig then" << 8 << "Best, Ann then";
    QTest::newRow("corrected after it") << "sig x\b\by" << 4 << "Best, Anny";
    QTest::newRow("a second keyword") << "sig sig ok" << 10 << "Best, Ann Best, Ann ok";
    QTest::newRow("Enter") << "sig\n" << 0 << QString();
    QTest::newRow("the keyword erased") << "sig\b" << 0 << QString();
    QTest::newRow("the caret moved") << "sig x<" << 0 << QString();
    QTest::newRow("inside a word") << "xsig" << 0 << QString();
    QTest::newRow("corrected into the keyword") << "si\big" << 3 << "Best, Ann";
}

void TestKeywordExpansion::typingOnIsCarriedIntoTheReplacement()
{
    // Typed faster than the pause, as a quick typist does.
    QFETCH(QString, keys);
    QFETCH(int, backspaces);
    QFETCH(QString, pasted);
    type(keys);
    rest();
    QCOMPARE(this->backspaces(), backspaces);
    QCOMPARE(QGuiApplication::clipboard()->text(), pasted.isEmpty() ? "the user's" : pasted);
    QVERIFY(!m_input->isExpansionPending());
}

void TestKeywordExpansion::requireSpace()
{
    setRequireSpace(true);
    type(QStringLiteral("sig"));
    QCOMPARE(backspaces(), 0);
    type(QStringLiteral(" "));
    rest();
    QCOMPARE(backspaces(), 4); // the space too

    m_desktop->events.clear();
    type(QStringLiteral("sig\n "));
    rest();
    QCOMPARE(backspaces(), 0);
    QCOMPARE(m_input->typedWord(), QString());
}

// With require-space off the shorter of two keywords wins once it is complete; the rest of
// the word follows it.
void TestKeywordExpansion::theShorterKeywordWins()
{
    m_input->setKeywords({{"si", "short"}, {"sig", "long"}});
    type(QStringLiteral("sig"));
    rest();
    QCOMPARE(backspaces(), 3);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("shortg"));
}

void TestKeywordExpansion::noExpandApplicationKeepsTheWord()
{
    QSettings().setValue(SettingsKey::NoExpandApplications, QStringList{"terminal"});
    m_input->loadSettings();
    m_desktop->foregroundName = QStringLiteral("terminal");
    type(QStringLiteral("sig"));
    rest();
    QVERIFY(m_desktop->events.isEmpty());
    QCOMPARE(m_input->typedWord(), QStringLiteral("sig"));
    // The program's own windows never expand.
    m_desktop->foregroundName = QStringLiteral("Velmorin");
    emit m_input->keywordBreakerTyped();
    type(QStringLiteral("sig"));
    rest();
    QVERIFY(m_desktop->events.isEmpty());
}

void TestKeywordExpansion::delayedApplicationDropsAnExpansionTypedOver()
{
    QSettings().setValue(SettingsKey::DelayedApplications, QVariantMap{{"slow", 300}});
    m_input->loadSettings();
    m_desktop->foregroundName = QStringLiteral("slow");
    type(QStringLiteral("sig"));
    QTest::qWait(100);
    QVERIFY(m_desktop->events.isEmpty());
    QTest::ignoreMessage(QtDebugMsg, "The text was not expanded because there were characters "
                                     "typed before the delay ended");
    type(QStringLiteral("n"));
    QTest::qWait(350);
    QVERIFY(m_desktop->events.isEmpty());

    emit m_input->keywordBreakerTyped();
    type(QStringLiteral("sig"));
    QTRY_COMPARE(backspaces(), 3);
}

void TestKeywordExpansion::heldModifiersAreReleasedFirst()
{
    m_desktop->held = Qt::ShiftModifier;
    type(QStringLiteral("sig"));
    rest();
    QVERIFY2(m_desktop->keyLog().startsWith(QLatin1String("-Shift -Alt -Ctrl +Back -Back")),
             qPrintable(m_desktop->keyLog()));
}

void TestKeywordExpansion::caretMarkersSelect()
{
    m_input->setKeywords({{"dear", "Dear ⁞name⁞,"}});
    type(QStringLiteral("dear"));
    rest();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("Dear name,"));
    const QString pasted = m_desktop->keyLog();
    QTRY_VERIFY(m_desktop->keyLog().size() > pasted.size());
    QCOMPARE(m_desktop->keyLog().mid(pasted.size() + 1),
             QStringLiteral("+Left -Left +Shift +Left -Shift -Left +Shift +Left -Shift -Left "
                            "+Shift +Left -Shift -Left +Shift +Left -Shift -Left"));
}

void TestKeywordExpansion::snippetShortcutsFollowTheTree()
{
    FakeHotkeyService service;
    QHotkeyPrivate::setInstance(&service);
    SnippetItemModel model(m_profile.path(QStringLiteral("Snippets.json")));
    const QModelIndex group = model.addGroup(QStringLiteral("G"));
    const QModelIndex snippet = model.addSnippet(group, QStringLiteral("S"), QStringLiteral("⁞x"));
    m_desktop->hooks[IDesktop::KeyboardHook] = true;
    SnippetShortcuts shortcuts(&model, m_input, m_paster);
    // No keyword: no keys are watched.
    QVERIFY(!m_desktop->hooks[IDesktop::KeyboardHook]);

    model.setSnippetData(snippet, Snippet::ExpanderRole, QStringLiteral("kw"));
    QVERIFY(m_desktop->hooks[IDesktop::KeyboardHook]);
    QCOMPARE(m_input->keywords(), (QMap<QString, QString>{{"kw", "⁞x"}}));

    model.setSnippetData(snippet, Snippet::HotkeyRole, QStringLiteral("Ctrl+Alt+K"));
    QCOMPARE(service.registered.size(), 1);
    model.setTitle(snippet, QStringLiteral("Renamed")); // same shortcuts: not registered again
    QCOMPARE(service.registerCalls, 1);
    model.setSnippetData(snippet, Snippet::TextRole, QStringLiteral("pressed⁞"));
    service.press(Qt::Key_K, WinKeyMap::modifiers(Qt::ControlModifier | Qt::AltModifier));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("pressed"));
    QVERIFY2(m_desktop->keyLog().contains(QLatin1String("+Ctrl +V -Ctrl -V")),
             qPrintable(m_desktop->keyLog()));

    model.setSnippetData(snippet, Snippet::HotkeyRole, QString());
    model.setSnippetData(snippet, Snippet::ExpanderRole, QString());
    QCOMPARE(service.registered.size(), 0);
    QVERIFY(!m_desktop->hooks[IDesktop::KeyboardHook]);
    model.finishSaves();
    QHotkeyPrivate::setInstance(nullptr);
}

QTEST_MAIN(TestKeywordExpansion)
#include "testkeywordexpansion.moc"
