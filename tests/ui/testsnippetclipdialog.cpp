// The dialog that writes clipping placeholders into a snippet.
#include "base/settings.h"
#include "support/testprofile.h"
#include "ui/snippets/snippetclipdialog.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QTest>

class TestSnippetClipDialog : public QObject
{
    Q_OBJECT

private slots:
    void placeholdersAsChosen();

private:
    TestProfile m_profile;
};

void TestSnippetClipDialog::placeholdersAsChosen()
{
    m_profile.useInThisProcess();
    QSettings().setValue(SettingsKey::KeepItems, 40);
    SnippetClipDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Choose clipping type"));
    QCOMPARE(dialog.placeholder(), QStringLiteral("{CLIP}"));

    auto *number = dialog.findChild<QSpinBox *>(QStringLiteral("number"));
    QCOMPARE(number->maximum(), 40); // as many as the history keeps
    number->setValue(3);
    QVERIFY(dialog.findChild<QRadioButton *>(QStringLiteral("position"))->isChecked());
    QCOMPARE(dialog.placeholder(), QStringLiteral("{CLIP:3}"));

    auto *expression = dialog.findChild<QLineEdit *>(QStringLiteral("expression"));
    QPushButton *ok = dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    QTest::keyClicks(expression, QStringLiteral("^\\d+("));
    QVERIFY(dialog.findChild<QRadioButton *>(QStringLiteral("matching"))->isChecked());
    QVERIFY(!ok->isEnabled()); // not a valid expression
    QTest::keyClick(expression, Qt::Key_Backspace);
    QVERIFY(ok->isEnabled());
    QCOMPARE(dialog.placeholder(), QStringLiteral("{CLIP:^\\d+}"));
    QTest::keyClicks(expression, QStringLiteral("{3}"));
    QVERIFY(!ok->isEnabled()); // a brace would end the placeholder early
}

QTEST_MAIN(TestSnippetClipDialog)
#include "testsnippetclipdialog.moc"
