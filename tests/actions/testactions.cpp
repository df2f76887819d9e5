// The action runner, the built-in actions on real input, and the action files: naming,
// tombstones, order and the listing the menus read.
#include "actions/actionapi.h"
#include "actions/actionfiles.h"
#include "base/settings.h"
#include "support/actionfixtures.h"
#include "support/testprofile.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSettings>
#include <QTest>

using ActionFixtures::builtIn;
using ActionFixtures::writeUserAction;

class TestActions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void runnerContract_data();
    void runnerContract();
    void everyRunStartsAfresh();
    void parameterValuesComeFromTheSettingsInOrder();
    void unreadableActionFiles();
    void runawayScriptIsStopped_data();
    void runawayScriptIsStopped();
    void builtIns_data();
    void builtIns();
    void builtInsAcceptEmptyText();
    void jsonPrettyPrintOfInvalidJson();
    void generatedTextsHaveTheirShape();
    void dateAndValueRoundTrip_data();
    void dateAndValueRoundTrip();

private:
    QStringList run(const QString &path, const QString &text, QString *error = nullptr);

    TestProfile m_profile;
};

void TestActions::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorin"));
    QCoreApplication::setApplicationName(QStringLiteral("Velmorin"));
    m_profile.useInThisProcess();
    // The date actions read dates the way the user's locale writes them; the cases below are
    // written for the C locale, whatever the machine's.
    QLocale::setDefault(QLocale::c());
}

void TestActions::init()
{
    QDir(ActionFiles::userFolder()).removeRecursively();
    QSettings().clear();
}

QStringList TestActions::run(const QString &path, const QString &text, QString *error)
{
    QString runError;
    const QStringList result = ActionAPI::runActionFile(path, text, QString(), runError);
    if (error)
        *error = runError;
    else
        [&] { QVERIFY2(runError.isEmpty(), qPrintable(runError)); }();
    return result;
}

void TestActions::runnerContract_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QString>("error"); // a pattern

    QTest::newRow("array of mixed elements") << "((clipping) => ['a', { plainText: 'b' }, 3])"
                                             << QStringList{"a", "b", "3"} << QString();
    QTest::newRow("empty array") << "(() => [])" << QStringList() << QString();
    QTest::newRow("object") << "(() => ({ plainText: 'x', other: 1 }))" << QStringList{"x"}
                            << QString();
    QTest::newRow("no return statement")
        << "(function (clipping) { clipping.plainText; })" << QStringList{"undefined"} << QString();
    QTest::newRow("clipping properties")
        << "((c) => c.application + ':' + c.plainText)" << QStringList{"Editor:text"} << QString();
    QTest::newRow("velmorin.test()")
        << "(() => velmorin.test())" << QStringList{"Hello world"} << QString();
    QTest::newRow("syntax error on line 1")
        << "((clipping) => {" << QStringList() << "Failure at line 1: .+";
    QTest::newRow("syntax error on line 3")
        << "(() => {\n  return 1;\n  return )\n})" << QStringList() << "Failure at line 3: .+";
    QTest::newRow("not a function")
        << "42" << QStringList() << "The action script is not a function\\.";
    QTest::newRow("thrown error") << "((clipping) => {\n    throw new Error('broken');\n})"
                                  << QStringList() << "Failure at line 2: broken";
    QTest::newRow("thrown string") << "(() => { throw 'plain words'; })" << QStringList()
                                   << "The action script threw: plain words";
    QTest::newRow("reference error")
        << "(() => missing.value)" << QStringList() << "Failure at line 1: .*missing.*";
}

void TestActions::runnerContract()
{
    QFETCH(QString, script);
    QFETCH(QStringList, expected);
    QFETCH(QString, error);
    if (script.contains(QLatin1String("velmorin")))
        QTest::ignoreMessage(QtDebugMsg, "Called test()");

    QString actual = QStringLiteral("not cleared");
    const QStringList result =
        ActionAPI::runScript(script, QStringLiteral("text"), QStringLiteral("Editor"), {}, actual);
    QCOMPARE(result, expected);
    if (error.isEmpty())
        QCOMPARE(actual, QString());
    else
        QVERIFY2(
            QRegularExpression(QRegularExpression::anchoredPattern(error)).match(actual).hasMatch(),
            qPrintable(actual));
}

void TestActions::everyRunStartsAfresh()
{
    QString error;
    ActionAPI::runScript(QStringLiteral("var left = 1; (() => 0)"), {}, {}, {}, error);
    QCOMPARE(error, QString());
    const QStringList second =
        ActionAPI::runScript(QStringLiteral("(() => typeof left)"), {}, {}, {}, error);
    QCOMPARE(second, QStringList{"undefined"});
}

void TestActions::parameterValuesComeFromTheSettingsInOrder()
{
    // Three arguments, two parameters; only the second has a stored value.
    const QString path = writeUserAction(
        QStringLiteral("Params.json"),
        {{"script", "((clipping, first, second) => [clipping.plainText, '[' + first + ']', "
                    "'[' + second + ']', typeof first])"},
         {"params", QJsonArray{"first", "second"}}});
    ActionFiles::setParameterValues(path, {{"second", "2nd"}, {"unrelated", "x"}});
    QCOMPARE(run(path, QStringLiteral("text")), (QStringList{"text", "[]", "[2nd]", "string"}));

    // A file without params passes none, whatever the settings hold.
    const QString plain =
        writeUserAction(QStringLiteral("Plain.json"), {{"script", "((c, extra) => typeof extra)"}});
    ActionFiles::setParameterValues(plain, {{"extra", "x"}});
    QCOMPARE(run(plain, QString()), QStringList{"undefined"});
}

void TestActions::unreadableActionFiles()
{
    QString error;
    const QString missing = ActionFiles::userFolder() + QStringLiteral("/missing.json");
    QCOMPARE(run(missing, QStringLiteral("x"), &error), QStringList());
    QCOMPARE(error, "Failed to open: " + missing);

    QDir().mkpath(ActionFiles::userFolder());
    const QString broken = ActionFiles::userFolder() + QStringLiteral("/broken.json");
    QFile file(broken);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{\"script\": \"(() => 1)\"");
    file.close();
    QCOMPARE(run(broken, QStringLiteral("x"), &error), QStringList());
    QCOMPARE(error, "Failed to parse json: " + broken);
}

void TestActions::runawayScriptIsStopped_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("in the function") << "((clipping) => { for (;;) {} })";
    QTest::newRow("while evaluating") << "while (true) {}";
    QTest::newRow("in a result getter") << "(() => ({ get plainText() { for (;;) {} } }))";
}

void TestActions::runawayScriptIsStopped()
{
    QFETCH(QString, script);
    QElapsedTimer elapsed;
    elapsed.start();
    QString error;
    QTest::ignoreMessage(QtWarningMsg, "Stopped a script that ran longer than 300 ms");
    const QStringList result = ActionAPI::runScript(script, {}, {}, {}, error, 300);
    QCOMPARE(result, QStringList());
    QCOMPARE(error, "Failure: the script was stopped because it ran longer than 300 ms.");
    // Stopped, not finished: far below what a wait for the default limit would take.
    QVERIFY2(elapsed.elapsed() < ActionAPI::DefaultTimeLimitMs,
             qPrintable(QString::number(elapsed.elapsed())));

    // The next run is not affected.
    QCOMPARE(ActionAPI::runScript(QStringLiteral("(() => 'ok')"), {}, {}, {}, error, 300),
             QStringList{"ok"});
    QCOMPARE(error, QString());
}

void TestActions::builtIns_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QVariantMap>("parameters");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("lower case") << builtIn("01-tolower.json") << "MiXed ÄÖ Case" << QVariantMap()
                                << QStringList{"mixed äö case"};
    QTest::newRow("upper case") << builtIn("02-toupper.json") << "abc" << QVariantMap()
                                << QStringList{"ABC"};
    QTest::newRow("JSON pretty print")
        << builtIn("03-jsonprettyprint.json") << R"({"a":[1,{"b":"x, y"}],"c":null})"
        << QVariantMap()
        << QStringList{"{\n  \"a\": [\n    1,\n    {\n      \"b\": \"x, y\"\n    }\n  ],\n"
                       "  \"c\": null\n}"};
    QTest::newRow("HTML tags stripped")
        << builtIn("04-stripthtml.json")
        << "<html><head><style>p { color: red; }</style></head><body>"
           "<p>Read <a href=\"https://example.org/a?b=1\">the <b>guide</b></a>.<!-- note --></p>"
           "<script type=\"text/javascript\">alert('<p>');</script>"
           "<ul><li>one</li><li>two &amp; three</li></ul>Line<br/>break &lt;ok&gt;</body></html>"
        << QVariantMap()
        << QStringList{"Read the guide (https://example.org/a?b=1).\n\none\ntwo & three\n"
                       "Line\nbreak <ok>"};
    QTest::newRow("HTML links of every quoting keep their targets")
        << builtIn("04-stripthtml.json")
        << "<a href='https://a.example/'>single</a>, <a href=https://b.example/x>bare</a>, "
           "<A HREF=\"mailto:c@example.org\" target=\"_blank\">mail</A>"
        << QVariantMap()
        << QStringList{"single (https://a.example/), bare (https://b.example/x), mail "
                       "(mailto:c@example.org)"};
    QTest::newRow("hex dump of multibyte UTF-8")
        << builtIn("07-hexdump.json") << QStringLiteral("aé€\U0001F600 line one\n") << QVariantMap()
        << QStringList{
               "00000000  61 c3 a9 e2 82 ac f0 9f  98 80 20 6c 69 6e 65 20  |a......... line |\n"
               "00000010  6f 6e 65 0a                                       |one.|"};
    QTest::newRow("date to value, ISO") << builtIn("08-datetovalue.json") << "2024-03-01T12:30:00Z"
                                        << QVariantMap() << QStringList{"1709296200000"};
    QTest::newRow("date to value, day.month.year")
        << builtIn("08-datetovalue.json") << " 1.3.2024 12:30:15 " << QVariantMap()
        << QStringList{QString::number(
               QDateTime(QDate(2024, 3, 1), QTime(12, 30, 15)).toMSecsSinceEpoch())};
    QTest::newRow("date to value, month/day/year")
        << builtIn("08-datetovalue.json") << "3/1/24, 1:05 PM" << QVariantMap()
        << QStringList{
               QString::number(QDateTime(QDate(2024, 3, 1), QTime(13, 5)).toMSecsSinceEpoch())};
    QTest::newRow("word wrap at 80 by default")
        << builtIn("11-wordwrap.json")
        << QString(18, QLatin1Char('x')) + " " + QStringList(20, QStringLiteral("word")).join(' ')
        << QVariantMap()
        << QStringList{QString(18, QLatin1Char('x')) + " " +
                       QStringList(12, QStringLiteral("word")).join(' ') + "\n" +
                       QStringList(8, QStringLiteral("word")).join(' ')};
    QTest::newRow("word wrap at length, keeping line breaks")
        << builtIn("11-wordwrap.json") << "The quick brown fox\njumps over the lazy dog"
        << QVariantMap{{"length", "10"}}
        << QStringList{"The quick\nbrown fox\njumps over\nthe lazy\ndog"};
    QTest::newRow("word wrap keeps what it does not wrap")
        << builtIn("11-wordwrap.json")
        << QStringLiteral("    indented\u00a0line\n\tcode();\nwrap these words")
        << QVariantMap{{"length", "12"}}
        << QStringList{QStringLiteral("    indented\u00a0line\n\tcode();\nwrap these\nwords")};
    QTest::newRow("word wrap of a word longer than the line")
        << builtIn("11-wordwrap.json") << "a abcdefghijkl b" << QVariantMap{{"length", "5"}}
        << QStringList{"a\nabcdefghijkl\nb"};
    QTest::newRow("split lines by the separator with most pieces")
        << builtIn("12-splitlines.json") << "a/b, c,d;e , f" << QVariantMap()
        << QStringList{"a/b", " c", "d;e ", " f"};
    QTest::newRow("split lines keeps empty pieces")
        << builtIn("12-splitlines.json") << "a,,b," << QVariantMap()
        << QStringList{"a", "", "b", ""};
    QTest::newRow("split lines by tab") << builtIn("12-splitlines.json") << "x\ty\tz.w"
                                        << QVariantMap() << QStringList{"x", "y", "z.w"};
    QTest::newRow("split lines by the parameter's characters")
        << builtIn("12-splitlines.json") << "1-2-3,4" << QVariantMap{{"separator", "-"}}
        << QStringList{"1", "2", "3,4"};
}

void TestActions::builtIns()
{
    QFETCH(QString, path);
    QFETCH(QString, input);
    QFETCH(QVariantMap, parameters);
    QFETCH(QStringList, expected);
    ActionFiles::setParameterValues(path, parameters);
    QCOMPARE(run(path, input), expected);
}

void TestActions::builtInsAcceptEmptyText()
{
    // The editor checks a script by running it on an empty text; none may fail there.
    const auto actions = ActionFiles::listedActions();
    QCOMPARE(actions.size(), 12);
    for (const auto &[path, action] : actions) {
        QString error;
        run(path, QString(), &error);
        QVERIFY2(error.isEmpty(), qPrintable(path + ": " + error));
    }
}

void TestActions::jsonPrettyPrintOfInvalidJson()
{
    QTest::ignoreMessage(QtWarningMsg,
                         "The JSON is invalid. Trying an alternative way to format it...");
    QCOMPARE(run(builtIn("03-jsonprettyprint.json"), "{a: [1,2], 'b': \"}, {\" }"),
             QStringList{"{\n  a: [\n    1,\n    2\n  ],\n  'b': \"}, {\"\n}"});
}

void TestActions::generatedTextsHaveTheirShape()
{
    const QRegularExpression guid(
        QStringLiteral("^[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}$"));
    const QString punctuation = QStringLiteral("!#$%&()*+,-./:;<=>?@[]^_{|}~");
    QSet<QString> seen;
    for (int i = 0; i < 50; ++i) {
        const QStringList id = run(builtIn("10-createguid.json"), QStringLiteral("ignored"));
        QCOMPARE(id.size(), 1);
        QVERIFY2(guid.match(id.first()).hasMatch(), qPrintable(id.first()));
        seen.insert(id.first());

        const QStringList password = run(builtIn("06-generatepassword.json"), QString());
        QCOMPARE(password.size(), 1);
        const QString p = password.first();
        QCOMPARE(p.size(), 16);
        bool lower = false, upper = false, digit = false, mark = false;
        for (const QChar ch : p) {
            const bool ascii = ch.unicode() < 0x80;
            lower |= ascii && ch.isLower();
            upper |= ascii && ch.isUpper();
            digit |= ascii && ch.isDigit();
            mark |= punctuation.contains(ch);
            QVERIFY2(ascii && (ch.isLetterOrNumber() || punctuation.contains(ch)), qPrintable(p));
        }
        QVERIFY2(lower && upper && digit && mark, qPrintable(p));
        seen.insert(p);
    }
    QCOMPARE(seen.size(), 100); // nothing repeats

    const QStringList now = run(builtIn("05-currenttime.json"), QStringLiteral("ignored"));
    QCOMPARE(now.size(), 1);
    QString error;
    const QStringList value = run(builtIn("08-datetovalue.json"), now.first(), &error);
    QVERIFY2(error.isEmpty(), qPrintable(now.first() + ": " + error));
    QVERIFY(qAbs(value.first().toLongLong() - QDateTime::currentMSecsSinceEpoch()) < 60'000);
}

void TestActions::dateAndValueRoundTrip_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("C") << "C";
    QTest::newRow("en_US") << "en_US";
    QTest::newRow("de_DE") << "de_DE";
    QTest::newRow("en_GB") << "en_GB";
    QTest::newRow("fr_FR") << "fr_FR";
}

void TestActions::dateAndValueRoundTrip()
{
    QFETCH(QString, locale);
    const QLocale before;
    QLocale::setDefault(QLocale(locale));
    // A day that could be read as a month, and seconds and milliseconds that must survive.
    const qint64 value = QDateTime(QDate(2023, 11, 5), QTime(17, 4, 9, 250)).toMSecsSinceEpoch();
    const QStringList date = run(builtIn("09-valuetodate.json"), QString::number(value));
    const QStringList back = run(builtIn("08-datetovalue.json"), date.value(0));
    QLocale::setDefault(before);
    QCOMPARE(back, QStringList{QString::number(value)});

    QString error;
    QCOMPARE(run(builtIn("09-valuetodate.json"), QStringLiteral("soon"), &error), QStringList());
    QVERIFY(error.contains(QLatin1String("soon")));
}

QTEST_GUILESS_MAIN(TestActions)
#include "testactions.moc"
