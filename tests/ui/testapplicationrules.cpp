#include "base/settings.h"
#include "base/settingsevents.h"
#include "history/applicationrules.h"
#include "history/historyitemmodel.h"
#include "support/testprofile.h"
#include "ui/settings/applicationslist.h"
#include "ui/settings/delaydialog.h"

#include <QMenu>
#include <QSettings>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

namespace {

QPixmap icon(const QColor &colour)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(colour);
    return pixmap;
}

QStringList actionTexts(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        if (!action->isSeparator())
            texts.append(action->text());
    }
    return texts;
}

} // namespace

class TestApplicationRules final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void listShowsAndChangesTheRules();
    void delayDialog();

private:
    TestProfile m_profile;
};

void TestApplicationRules::initTestCase()
{
    QVERIFY(m_profile.isValid());
    m_profile.useInThisProcess();
}

void TestApplicationRules::init()
{
    QSettings settings;
    settings.clear();
    Settings::writeDefaults(settings);
}

void TestApplicationRules::listShowsAndChangesTheRules()
{
    ApplicationRules::recordApplication(QStringLiteral("mail.exe"), icon(Qt::red));
    ApplicationRules::recordApplication(QStringLiteral("paint.exe"), icon(Qt::blue));
    QSettings().setValue(SettingsKey::NoImagesApplications,
                         QStringList{QStringLiteral("mail.exe")});
    QSettings().setValue(SettingsKey::DelayedApplications,
                         QVariantMap{{QStringLiteral("paint.exe"), 300}});

    ApplicationsList list;
    list.load();
    QCOMPARE(list.count(), 2);
    QCOMPARE(list.item(0)->text(), QStringLiteral("mail.exe"));
    QVERIFY(list.hasRule(0, ApplicationRules::NoImages));
    QCOMPARE(list.delay(1), 300);

    QMenu *context = list.createContextMenu(1, &list);
    QCOMPARE(actionTexts(context), (QStringList{QStringLiteral("Don't add copied items to history"),
                                                QStringLiteral("Never copy images to clipboard"),
                                                QStringLiteral("Always copy as plain text only"),
                                                QStringLiteral("Clear style from text"),
                                                QStringLiteral("Do not expand keywords"),
                                                QStringLiteral("Delay text expansion for 300 ms"),
                                                QStringLiteral("Paste with")}));
    QVERIFY(context->actions().at(5)->isChecked());
    QVERIFY(!context->actions().at(0)->isChecked());
    context->actions().at(0)->trigger(); // exclude paint.exe
    QVERIFY(list.hasRule(1, ApplicationRules::Excluded));
    // One choice of keys at a time; automatic until one is made.
    const QList<QAction *> keys = context->actions().at(6)->menu()->actions();
    QCOMPARE(keys.size(), 4);
    QVERIFY(keys.at(0)->isChecked());
    keys.at(3)->trigger();
    QVERIFY(keys.at(3)->isChecked() && !keys.at(0)->isChecked());
    QCOMPARE(list.pasteKey(1), PasteKeys::ControlShiftV);

    list.setCurrentRow(0);
    emit list.actionMenu()->aboutToShow();
    QCOMPARE(actionTexts(list.actionMenu()),
             (QStringList{QStringLiteral("Exclude from history"), QStringLiteral("Ignore images"),
                          QStringLiteral("Plain text only"), QStringLiteral("Clear style"),
                          QStringLiteral("Don't expand keywords"),
                          QStringLiteral("Set text expansion delay..."),
                          QStringLiteral("Paste with"), QStringLiteral("Remove")}));
    QVERIFY(list.actionMenu()->actions().at(1)->isChecked()); // mail.exe ignores images
    list.actionMenu()->actions().at(1)->trigger();
    QVERIFY(!list.hasRule(0, ApplicationRules::NoImages));

    list.save();
    QCOMPARE(ApplicationRules::names(ApplicationRules::Excluded),
             QSet<QString>{QStringLiteral("paint.exe")});
    QCOMPARE(ApplicationRules::pasteKey(QStringLiteral("paint.exe")), PasteKeys::ControlShiftV);
    list.load();
    QCOMPARE(list.pasteKey(1), PasteKeys::ControlShiftV);
    QVERIFY(ApplicationRules::names(ApplicationRules::NoImages).isEmpty());
}

void TestApplicationRules::delayDialog()
{
    DelayDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Set delay"));
    QCOMPARE(dialog.size(), QSize(400, 129));
    QCOMPARE(dialog.slider()->minimum(), 0);
    QCOMPARE(dialog.slider()->maximum(), 2000);
    QCOMPARE(dialog.slider()->singleStep(), 10);
    QCOMPARE(dialog.slider()->pageStep(), 100);
    QCOMPARE(dialog.slider()->tickPosition(), QSlider::TicksBelow);
    QCOMPARE(dialog.slider()->tickInterval(), 100);
    QCOMPARE(dialog.spinBox()->maximum(), 2000);
    QCOMPARE(dialog.spinBox()->suffix(), QStringLiteral("ms"));
    dialog.slider()->setValue(730);
    QCOMPARE(dialog.delay(), 730);
    dialog.spinBox()->setValue(40);
    QCOMPARE(dialog.slider()->value(), 40);

    // From the list: OK stores the value; 0 drops the application from the delay map.
    ApplicationRules::recordApplication(QStringLiteral("slow.exe"), icon(Qt::gray));
    QSettings().setValue(SettingsKey::DelayedApplications,
                         QVariantMap{{QStringLiteral("slow.exe"), 500}});
    ApplicationsList list;
    list.load();
    list.editDelay(0);
    auto *opened = list.findChild<DelayDialog *>();
    QVERIFY(opened);
    QCOMPARE(opened->delay(), 500);
    opened->setDelay(0);
    opened->accept();
    QCOMPARE(list.delay(0), 0);
    list.save();
    QVERIFY(QSettings().value(SettingsKey::DelayedApplications).toMap().isEmpty());
    QVERIFY(ApplicationRules::delays().isEmpty());
}

QTEST_MAIN(TestApplicationRules)
#include "testapplicationrules.moc"
