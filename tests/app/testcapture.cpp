// Copies made in real applications on a real X server reach the history file of the running
// program: one clipping each, named after the application's executable, shaped by its rules.
#include "clipboard/clipboardmarks.h"
#include "history/clipping.h"
#include "history/historyfile.h"
#include "support/appprocess.h"
#include "support/targetwindow.h"
#include "support/testprofile.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QMimeData>
#include <QTest>

class TestCapture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void textRichTextAndImageBecomeOneClippingEach();
    void passwordsAndFileLists();
    void hugeContentAndVanishingOwners();

private:
    // A copy of the editor under another executable name: another application to the rules.
    QString editorCopy(const QString &name);
    QList<HistoryFile::Record> clippings() const;
    // Waits until the history holds count clippings; false on time-out.
    bool waitForClippings(int count);
    HistoryFile::Record newest() const;
    // A copy that is recorded, to know that the copies before it have been dealt with.
    void copyMarker(const QString &text);

    TestProfile m_profile;
    TargetWindow m_editor;
    TargetWindow m_plainEditor;
    TargetWindow m_excludedEditor;
    AppProcess *m_velmorin = nullptr;
    QString m_historyPath;
};

QString TestCapture::editorCopy(const QString &name)
{
    const QString path = m_profile.path(name);
    QFile::copy(TargetWindow::editorPath(), path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
    return path;
}

void TestCapture::initTestCase()
{
    QVERIFY(m_profile.isValid());
    m_profile.setSetting(QStringLiteral("ReleaseNotesVersion"), QStringLiteral("1.9"));
    m_profile.setSetting(QStringLiteral("TextOnlyApplications"), QStringList{"plaineditor"});
    m_profile.setSetting(QStringLiteral("ExcludedApplications"), QStringList{"secreteditor"});
    m_historyPath = m_profile.path(QStringLiteral("data/Velmorin/Velmorin/History.json"));

    if (!m_editor.start())
        QSKIP(qPrintable(m_editor.error()));
    QVERIFY2(m_plainEditor.start(editorCopy(QStringLiteral("plaineditor"))),
             qPrintable(m_plainEditor.error()));
    QVERIFY2(m_excludedEditor.start(editorCopy(QStringLiteral("secreteditor"))),
             qPrintable(m_excludedEditor.error()));

    m_velmorin = new AppProcess(QStringLiteral(VELMORIN_BINARY), m_profile, this);
    m_velmorin->setEnvironmentValue(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    m_velmorin->start({QStringLiteral("--debug")});
    QVERIFY(m_velmorin->waitForOutput(QStringLiteral("Main thread:")));
}

void TestCapture::cleanupTestCase()
{
    if (m_velmorin)
        m_velmorin->terminate();
}

QList<HistoryFile::Record> TestCapture::clippings() const
{
    QFile file(m_historyPath);
    HistoryFile::Document document;
    if (!file.open(QIODevice::ReadOnly) || !HistoryFile::decode(file.readAll(), &document))
        return {};
    return document.records;
}

bool TestCapture::waitForClippings(int count)
{
    // Generous: an 8192 x 8192 image crosses the X server and is decoded on a busy machine.
    return QTest::qWaitFor([&] { return clippings().size() == count; }, 30000);
}

HistoryFile::Record TestCapture::newest() const
{
    const QList<HistoryFile::Record> all = clippings();
    return all.isEmpty() ? HistoryFile::Record() : all.first();
}

void TestCapture::copyMarker(const QString &text)
{
    QVERIFY(m_editor.activate());
    QVERIFY(m_editor.clear());
    QVERIFY(TargetWindow::xdotool({QStringLiteral("type"), text}));
    QVERIFY(TargetWindow::press({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")}));
}

void TestCapture::textRichTextAndImageBecomeOneClippingEach()
{
    copyMarker(QStringLiteral("Copied with Ctrl+C"));
    QVERIFY2(waitForClippings(1), qPrintable(m_velmorin->output().right(2000)));
    QCOMPARE(newest().text, QStringLiteral("Copied with Ctrl+C"));
    QCOMPARE(newest().application, QFileInfo(TargetWindow::editorPath()).fileName());

    // The same text again is the same clipping.
    QVERIFY(TargetWindow::press({QStringLiteral("ctrl+c")}));
    QVERIFY(m_editor.copy("copy-rich Rich words"));
    QVERIFY2(waitForClippings(2), qPrintable(m_velmorin->output().right(2000)));
    QCOMPARE(newest().text, QStringLiteral("Rich words"));
    QVERIFY(newest().html.contains(QStringLiteral("<b>Rich words</b>")));

    QVERIFY(m_editor.copy("copy-image 1920 1080"));
    QVERIFY2(waitForClippings(3), qPrintable(m_velmorin->output().right(2000)));
    QCOMPARE(newest().type, int(Clipping::ImageType));
    const QString cached = m_profile.path(QStringLiteral("data/Velmorin/Velmorin/images/")) +
                           newest().id.toString(QUuid::WithBraces) + QLatin1Char('/') +
                           newest().filename;
    QTRY_COMPARE(QImage(cached).size(), QSize(1920, 1080));
}

void TestCapture::passwordsAndFileLists()
{
    const QString folder = m_profile.path(QStringLiteral("files"));
    QVERIFY(QDir().mkpath(folder));
    const QString photo = folder + QStringLiteral("/holiday.png");
    const QString other = folder + QStringLiteral("/notes.png");
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QVERIFY(image.save(photo) && image.save(other));

    const int before = int(clippings().size());
    QVERIFY(m_editor.activate());
    QVERIFY(m_editor.copy("copy-secret hunter2-password"));
    QVERIFY(m_velmorin->waitForOutput(QStringLiteral("marked as private")));
    QVERIFY(
        m_editor.copy("copy-files " + QFile::encodeName(photo) + ';' + QFile::encodeName(other)));
    QVERIFY(m_velmorin->waitForOutput(QStringLiteral("Too many files copied to clipboard 2")));
    QVERIFY(m_editor.copy("copy-files " + QFile::encodeName(photo)));
    QVERIFY2(waitForClippings(before + 1), qPrintable(m_velmorin->output().right(2000)));
    QCOMPARE(newest().type, int(Clipping::ImageType));
    QCOMPARE(newest().filename, QStringLiteral("holiday.png"));
    for (const HistoryFile::Record &clipping : clippings())
        QVERIFY(!clipping.text.contains(QStringLiteral("hunter2")));
    QVERIFY(!m_velmorin->output().contains(QStringLiteral("hunter2")));
}

void TestCapture::hugeContentAndVanishingOwners()
{
    const int before = int(clippings().size());
    QVERIFY(m_editor.activate());
    QVERIFY(m_editor.copy("copy-image 8192 8192"));
    QVERIFY(waitForClippings(before + 1));
    const QString cached = m_profile.path(QStringLiteral("data/Velmorin/Velmorin/images/")) +
                           newest().id.toString(QUuid::WithBraces) + QLatin1Char('/') +
                           newest().filename;
    QTRY_COMPARE_WITH_TIMEOUT(QImageReader(cached).size(), QSize(8192, 8192), 20000);

    // Far beyond the length limit: read, refused, and the program carries on.
    QVERIFY(m_editor.copy("copy-long 5000000"));
    QVERIFY(m_velmorin->waitForOutput(QStringLiteral("New clipboard content from"), 15000,
                                      m_velmorin->outputCount("New clipboard content from") + 1));

    // An owner that is gone while its content is read leaves nothing half made.
    TargetWindow vanishing;
    QVERIFY2(vanishing.start(editorCopy(QStringLiteral("vanishingeditor"))),
             qPrintable(vanishing.error()));
    QVERIFY(vanishing.copy("copy-image 3000 2000"));
    vanishing.kill();
    copyMarker(QStringLiteral("After the vanished owner"));
    QTRY_COMPARE_WITH_TIMEOUT(newest().text, QStringLiteral("After the vanished owner"), 15000);
    for (const HistoryFile::Record &clipping : clippings()) {
        QVERIFY(clipping.text.size() < 5000000);
        if (clipping.application == QLatin1String("vanishingeditor")) {
            const QString file = m_profile.path(QStringLiteral("data/Velmorin/Velmorin/images/")) +
                                 clipping.id.toString(QUuid::WithBraces) + QLatin1Char('/') +
                                 clipping.filename;
            QTRY_COMPARE(QImageReader(file).size(), QSize(3000, 2000));
        }
    }
    QVERIFY(m_velmorin->isRunning());
}

QTEST_MAIN(TestCapture)
#include "testcapture.moc"
