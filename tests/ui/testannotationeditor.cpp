// The annotation editor: what each tool puts in the pixels, crop geometry, undo and redo, the
// mouse on the canvas, saving as a new clipping, and leaving with unsaved changes.
#include "base/settings.h"
#include "history/clipping.h"
#include "history/historyitemmodel.h"
#include "support/modalanswer.h"
#include "support/testprofile.h"
#include "ui/annotation/annotationcanvas.h"
#include "ui/annotation/annotationdocument.h"
#include "ui/annotation/annotationeditor.h"
#include "ui/history/historyitemview.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QUndoStack>

namespace {

QImage white(int width = 200, int height = 100)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

Annotation mark(Annotation::Kind kind, QPointF start, QPointF end, QColor color = Qt::red)
{
    Annotation annotation;
    annotation.kind = kind;
    annotation.start = start;
    annotation.end = end;
    annotation.color = color;
    return annotation;
}

bool isWhite(QRgb pixel)
{
    return qRed(pixel) > 245 && qGreen(pixel) > 245 && qBlue(pixel) > 245;
}

int coloured(const QImage &image, const QRect &area)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            count += !isWhite(image.pixel(x, y));
    return count;
}

} // namespace

class TestAnnotationEditor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void eachToolMarksThePixels();
    void cropKeepsThePartAndMarksMoveWithIt();
    void undoAndRedo();
    void savingAddsANewClipping();

private:
    TestProfile m_profile;
};

void TestAnnotationEditor::initTestCase()
{
    m_profile.useInThisProcess();
    QSettings settings;
    Settings::writeDefaults(settings);
}

void TestAnnotationEditor::eachToolMarksThePixels()
{
    AnnotationDocument document(white());
    document.append(mark(Annotation::Rectangle, {20, 20}, {80, 60}));
    QImage image = document.render();
    QCOMPARE(QColor(image.pixel(20, 40)), QColor(Qt::red)); // on the edge
    QVERIFY(isWhite(image.pixel(50, 40)));                  // inside stays clear

    document.append(mark(Annotation::Arrow, {10, 90}, {190, 90}, Qt::blue));
    image = document.render();
    QCOMPARE(QColor(image.pixel(100, 90)), QColor(Qt::blue));
    // The head is wider than the shaft.
    QVERIFY(coloured(image, QRect(180, 82, 6, 16)) > coloured(image, QRect(100, 82, 6, 16)));

    document.append(mark(Annotation::Highlight, {100, 10}, {180, 50}, Qt::yellow));
    image = document.render();
    const QColor blended(image.pixel(140, 30));
    QVERIFY(blended.red() > 240 && blended.green() > 240); // yellow over white...
    QVERIFY(blended.blue() > 100 && blended.blue() < 240); // ...seen through

    QCOMPARE(document.nextMarkerNumber(), 1);
    Annotation marker = mark(Annotation::Marker, {150, 75}, {150, 75}, Qt::darkGreen);
    marker.number = document.nextMarkerNumber();
    document.append(marker);
    QCOMPARE(document.nextMarkerNumber(), 2);
    image = document.render();
    QVERIFY(!isWhite(image.pixel(150 - 12, 75)));
    QVERIFY(isWhite(image.pixel(150 - 25, 75)));

    Annotation text = mark(Annotation::Text, {30, 64}, {30, 64}, Qt::black);
    text.text = QStringLiteral("Hi");
    const int before = coloured(document.render(), QRect(30, 64, 30, 24));
    document.append(text);
    QVERIFY(coloured(document.render(), QRect(30, 64, 30, 24)) > before + 20);
    QCOMPARE(document.original().pixel(20, 40), white().pixel(20, 40)); // the original stays
}

void TestAnnotationEditor::cropKeepsThePartAndMarksMoveWithIt()
{
    AnnotationEditor editor(white());
    AnnotationDocument *document = editor.document();
    editor.canvas()->setTool(AnnotationCanvas::CropTool);
    QTest::mousePress(editor.canvas(), Qt::LeftButton, {}, QPoint(10, 10));
    QTest::mouseMove(editor.canvas(), QPoint(110, 60));
    QTest::mouseRelease(editor.canvas(), Qt::LeftButton, {}, QPoint(110, 60));
    QCOMPARE(document->crop(), QRect(10, 10, 100, 50));
    document->append(mark(Annotation::Rectangle, {20, 20}, {60, 40}));
    const QImage cropped = document->render();
    QCOMPARE(cropped.size(), QSize(100, 50));
    QCOMPARE(QColor(cropped.pixel(10, 20)), QColor(Qt::red)); // (20, 30) of the original
    document->removeLast();

    // A second crop is inside the first, in the shown image's coordinates.
    QTest::mousePress(editor.canvas(), Qt::LeftButton, {}, QPoint(1, 1));
    QTest::mouseRelease(editor.canvas(), Qt::LeftButton, {}, QPoint(300, 20));
    QCOMPARE(document->crop(), QRect(11, 11, 99, 19));
    editor.undoStack()->undo();
    QCOMPARE(document->crop(), QRect(10, 10, 100, 50));
    editor.undoStack()->undo();
    QCOMPARE(document->render().size(), QSize(200, 100));
}

void TestAnnotationEditor::undoAndRedo()
{
    AnnotationEditor editor(white());
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    editor.canvas()->setTool(AnnotationCanvas::MarkerTool);
    for (int x : {20, 60, 100})
        QTest::mouseClick(editor.canvas(), Qt::LeftButton, {},
                          (QPointF(x, 50) * editor.canvas()->zoom()).toPoint());
    QCOMPARE(editor.document()->annotations().size(), 3);
    QCOMPARE(editor.document()->annotations().last().number, 3);

    QTest::keyClick(&editor, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&editor, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.document()->annotations().size(), 1);
    QTest::keyClick(&editor, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(editor.document()->annotations().size(), 2);
    QCOMPARE(editor.document()->annotations().last().number, 2);
    // A new mark after an undo drops what could have been redone; numbering goes on.
    QTest::mouseClick(editor.canvas(), Qt::LeftButton, {},
                      (QPointF(150, 50) * editor.canvas()->zoom()).toPoint());
    QCOMPARE(editor.document()->annotations().last().number, 3);
    QVERIFY(!editor.undoStack()->canRedo());
    editor.findChild<QAction *>(QStringLiteral("undo"))->trigger();
    QCOMPARE(editor.document()->annotations().size(), 2);
    editor.findChild<QAction *>(QStringLiteral("redo"))->trigger();
    QCOMPARE(editor.document()->annotations().size(), 3);
    ModalAnswer::whenOpens([](QWidget *dialog) {
        qobject_cast<QMessageBox *>(dialog)->button(QMessageBox::Yes)->click();
    });
    editor.reject();
}

void TestAnnotationEditor::savingAddsANewClipping()
{
    HistoryItemModel history(m_profile.path(QStringLiteral("data/History.json")));
    QVERIFY(history.addImage(QUrl(), white(), QPixmap(), QStringLiteral("paint.exe"),
                             QDateTime::currentDateTime().addSecs(-5)));
    const QString originalId = history.item(0)->data(Clipping::IdRole).toString();
    const auto fileOf = [](const QStandardItem *item) {
        return Clipping::imageFolder(item->data(Clipping::IdRole).toUuid()) + QLatin1Char('/') +
               item->data(Clipping::FilenameRole).toString();
    };
    QTRY_VERIFY(QFileInfo::exists(fileOf(history.item(0))));

    HistoryItemView view;
    view.setModels(&history, nullptr);
    AnnotationEditor *editor = view.annotate(view.model()->index(0, 0));
    QVERIFY(editor);
    editor->document()->append(mark(Annotation::Rectangle, {10, 10}, {50, 50}));
    editor->undoStack()->resetClean();
    editor->save();
    QCOMPARE(history.rowCount(), 2);
    const QStandardItem *added = history.item(0);
    QVERIFY(added->data(Clipping::IdRole).toString() != originalId);
    QCOMPARE(history.item(1)->data(Clipping::IdRole).toString(), originalId);
    QCOMPARE(added->data(Clipping::ApplicationRole).toString(), QStringLiteral("paint.exe"));
    QTRY_VERIFY(QFileInfo::exists(fileOf(added)));
    QTRY_VERIFY(!added->data(Clipping::ThumbnailRole).value<QImage>().isNull());
    QCOMPARE(QColor(QImage(fileOf(added)).pixel(10, 30)), QColor(Qt::red));
    QVERIFY(isWhite(QImage(fileOf(history.item(1))).pixel(10, 30)));
    history.finishSaves();
}

QTEST_MAIN(TestAnnotationEditor)
#include "testannotationeditor.moc"
