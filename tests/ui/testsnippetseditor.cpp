// The snippets editor: what its fields and commands do to the snippet tree.
#include "base/settings.h"
#include "snippets/snippet.h"
#include "snippets/snippetitemmodel.h"
#include "support/modalanswer.h"
#include "support/testprofile.h"
#include "ui/customkeysequenceedit.h"
#include "ui/snippets/snippetclipdialog.h"
#include "ui/snippets/snippetitemdelegate.h"
#include "ui/snippets/snippetseditor.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QStandardItem>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

class TestSnippetsEditor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void duplicateKeywordIsPointedOut();
    void shortcutFieldTakesOnlyShortcuts_data();
    void shortcutFieldTakesOnlyShortcuts();
    void cursorMarkersAndPlaceholders();
    void newMoveAndDelete();

private:
    template <typename T> T *child(const char *name)
    {
        return m_editor->findChild<T *>(QLatin1String(name));
    }

    TestProfile m_profile;
    SnippetItemModel *m_model = nullptr;
    SnippetsEditor *m_editor = nullptr;
    QModelIndex m_first;
    QModelIndex m_second;
};

void TestSnippetsEditor::init()
{
    m_model = new SnippetItemModel(m_profile.path(QStringLiteral("Snippets.json")));
    const QModelIndex group = m_model->addGroup(QStringLiteral("Group"));
    m_first = m_model->addSnippet(group, QStringLiteral("First"), QStringLiteral("one"));
    m_second = m_model->addSnippet(group, QStringLiteral("Second"), QStringLiteral("two"));
    m_model->setSnippetData(m_first, Snippet::ExpanderRole, QStringLiteral("kw"));
    m_editor = new SnippetsEditor(m_model);
}

void TestSnippetsEditor::cleanup()
{
    delete m_editor;
    m_model->finishSaves();
    delete m_model;
}

void TestSnippetsEditor::duplicateKeywordIsPointedOut()
{
    m_editor->select(m_second);
    auto *warning = child<QLabel>("keywordWarning");
    QVERIFY(warning->isHidden());
    QTest::keyClicks(child<QLineEdit>("keyword"), QStringLiteral("kw"));
    QVERIFY(!warning->isHidden());
    QVERIFY(warning->text().contains(QLatin1String("\"First\"")));
    child<QLineEdit>("keyword")->selectAll();
    QTest::keyClick(child<QLineEdit>("keyword"), Qt::Key_Backspace);
    QVERIFY(warning->isHidden());
}

void TestSnippetsEditor::shortcutFieldTakesOnlyShortcuts_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("expected"); // the field afterwards; it held Ctrl+J
    QTest::newRow("plain letter") << int(Qt::Key_X) << int(Qt::NoModifier) << "Ctrl+J";
    QTest::newRow("shifted letter") << int(Qt::Key_X) << int(Qt::ShiftModifier) << "Ctrl+J";
    QTest::newRow("control letter") << int(Qt::Key_X) << int(Qt::ControlModifier) << "Ctrl+X";
    QTest::newRow("alt shift letter")
        << int(Qt::Key_X) << int(Qt::AltModifier | Qt::ShiftModifier) << "Alt+Shift+X";
    QTest::newRow("function key") << int(Qt::Key_F7) << int(Qt::NoModifier) << "F7";
    QTest::newRow("backspace clears") << int(Qt::Key_Backspace) << int(Qt::NoModifier) << "";
    QTest::newRow("delete clears") << int(Qt::Key_Delete) << int(Qt::NoModifier) << "";
    QTest::newRow("enter") << int(Qt::Key_Return) << int(Qt::NoModifier) << "Ctrl+J";
}

void TestSnippetsEditor::shortcutFieldTakesOnlyShortcuts()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, expected);
    m_editor->show();
    QVERIFY(QTest::qWaitForWindowActive(m_editor));
    m_editor->select(m_second);
    auto *hotkey = child<CustomKeySequenceEdit>("hotkey");
    hotkey->setKeySequence(QKeySequence(QStringLiteral("Ctrl+J")));
    hotkey->setFocus();
    QTest::keyClick(hotkey, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QTRY_COMPARE(hotkey->keySequence().toString(), expected);
    QTRY_COMPARE(m_second.data(Snippet::HotkeyRole).toString(), expected);

    // Tab moves on, as in any field; the Clear button empties it.
    QTest::keyClick(hotkey, Qt::Key_Tab);
    QVERIFY(!hotkey->hasFocus());
    QCOMPARE(hotkey->keySequence().toString(), expected);
    child<QToolButton>("hotkeyClear")->click();
    QTRY_COMPARE(m_second.data(Snippet::HotkeyRole).toString(), QString());
}

void TestSnippetsEditor::cursorMarkersAndPlaceholders()
{
    m_editor->select(m_second);
    auto *text = child<QPlainTextEdit>("text");
    text->setPlainText(QStringLiteral("Dear name,\nbye"));
    QTextCursor cursor = text->textCursor();
    cursor.setPosition(5);
    cursor.setPosition(9, QTextCursor::KeepAnchor);
    text->setTextCursor(cursor);
    child<QToolButton>("cursor")->click();
    QCOMPARE(text->toPlainText(), QStringLiteral("Dear ⁞name⁞,\nbye"));
    QCOMPARE(text->textCursor().selectedText(), QStringLiteral("name"));

    cursor.movePosition(QTextCursor::End);
    text->setTextCursor(cursor);
    child<QToolButton>("cursor")->click();
    QCOMPARE(text->toPlainText(), QStringLiteral("Dear ⁞name⁞,\nbye⁞"));

    ModalAnswer::whenOpens([](QWidget *dialog) {
        dialog->findChild<QRadioButton *>(QStringLiteral("position"))->setChecked(true);
        qobject_cast<QDialog *>(dialog)->accept();
    });
    child<QToolButton>("placeholder")->click();
    QCOMPARE(text->toPlainText(), QStringLiteral("Dear ⁞name⁞,\nbye⁞{CLIP:1}"));
    QTRY_COMPARE(m_second.data(Snippet::TextRole).toString(), text->toPlainText());
}

void TestSnippetsEditor::newMoveAndDelete()
{
    m_editor->select(m_first);
    child<QToolButton>("newSnippet")->click();
    QStandardItem *group = m_model->item(0);
    QCOMPARE(group->rowCount(), 3);
    QCOMPARE(m_editor->tree()->currentIndex().data().toString(), QStringLiteral("New snippet"));

    m_editor->moveCurrent(-1);
    QCOMPARE(group->child(1)->text(), QStringLiteral("New snippet"));
    QCOMPARE(m_editor->tree()->currentIndex().row(), 1);

    child<QToolButton>("newGroup")->click();
    QCOMPARE(m_model->rowCount(), 2);

    m_editor->select(m_first);
    ModalAnswer::whenOpens(
        [](QWidget *box) { qobject_cast<QMessageBox *>(box)->button(QMessageBox::Yes)->click(); });
    m_editor->removeCurrent();
    QCOMPARE(group->rowCount(), 2);
    QCOMPARE(m_model->removedItems().size(), 1);
}

QTEST_MAIN(TestSnippetsEditor)
#include "testsnippetseditor.moc"
