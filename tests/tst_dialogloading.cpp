// Opening the camera settings dialog as the stand-in host does: the tabs and the camera
// table it builds from the controller, the rows of missing cameras, the cell flags, a
// second opening, the protocol gates of loading, F7 and the details button.
#include "dialogrig.h"
#include "dialogscenarios.h"

#include <cameratablecolumns.h>
#include <simulatedcontroller.h>

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

namespace Col = CameraTable;

namespace {

QStringList tabTexts(const QTabWidget* tabs)
{
    QStringList texts;
    for (int i = 0; i < tabs->count(); ++i)
        texts << tabs->tabText(i) + (tabs->isTabEnabled(i) ? "" : " (disabled)");
    return texts;
}

QStringList columnTexts(const QStandardItemModel* model, int column)
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts << model->data(model->index(row, column)).toString();
    return texts;
}

bool has(const QStandardItemModel* model, int row, int column, Qt::ItemFlag flag)
{
    return model->item(row, column)->flags().testFlag(flag);
}

} // namespace

class tst_DialogLoading : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void tabsRowsAndMissingCameras();
    void cellFlags();
    void openingTwiceRebuildsAndRecordsNothing();
    void protocolGatesOfLoading_data();
    void protocolGatesOfLoading();
    void missingCameraReadFailures();
    void f7StepsThroughEnabledTabs_data();
    void f7StepsThroughEnabledTabs();
    void detailsButtonSwitchesEveryPage();
};

void tst_DialogLoading::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a window was left behind");
}

void tst_DialogLoading::tabsRowsAndMissingCameras()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::ThreeAndTwoMissing));
    QVERIFY(rig.start());
    QStringList tabs;
    rig.open([&] { tabs = tabTexts(rig.tabs()); });

    QCOMPARE(tabs, (QStringList{"All Cameras", "101", "102", "103", "KPE 5120 (disabled)", "6000 (disabled)"}));
    const QStandardItemModel* model = rig.model();
    QCOMPARE(columnTexts(model, Col::Camera), (QStringList{"c01", "c02", "c03", "c04", "c05"}));
    QCOMPARE(columnTexts(model, Col::Model), (QStringList{"LUMACAM5", "LUMACAMKP", "LUMACAM5", "LUMACAMKPE", "0x0999"}));
    QCOMPARE(columnTexts(model, Col::SyncGroup), (QStringList{"Channel 1", "Channel 2", "Channel 1", "", ""}));
    QCOMPARE(columnTexts(model, Col::Missing), (QStringList{"false", "false", "false", "true", "true"}));
    QCOMPARE(rig.cell(0, Col::FlashIntensity), QVariant(30));
    QCOMPARE(rig.cell(0, Col::ModFlash), QVariant(true));
    QCOMPARE(rig.cell(0, Col::HasCameraMode), QVariant(true));
    QCOMPARE(rig.cell(0, Col::CameraMode), QVariant("Standard 180 Hz"));
    QCOMPARE(rig.cell(1, Col::HasCameraMode), QVariant(false));
    QCOMPARE(rig.cell(2, Col::StaticReflexSuppr), QVariant(true));
    QCOMPARE(rig.cell(2, Col::DisplayIntensity), QVariant(50));
    for (int row = 3; row < 5; ++row) {
        QCOMPARE(rig.cell(row, Col::FlashIntensity), QVariant(0));
        for (int column = 0; column < Col::ColumnCount; ++column) {
            const bool filled = column <= Col::FlashIntensity || column == Col::Missing;
            QVERIFY2((model->item(row, column) != nullptr) == filled, qPrintable(QString::number(column)));
        }
    }
    for (int row = 0; row < 5; ++row) {
        QCOMPARE(model->item(row, Col::Serial)->textAlignment(), row < 3 ? Qt::AlignCenter : Qt::Alignment());
        QCOMPARE(model->item(row, Col::FlashIntensity)->textAlignment(), Qt::AlignCenter);
    }
    QCOMPARE(rig.lastResult(), 0);
    QVERIFY(rig.requests().contains(get("tracking missing_camera c02")));
    QVERIFY(rig.requests().contains(get("camera serial_desc 0x0802 5120")));
}

void tst_DialogLoading::cellFlags()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::ThreeAndTwoMissing));
    QVERIFY(rig.start());
    rig.open();
    const QStandardItemModel* model = rig.model();

    for (int row = 0; row < 3; ++row) {
        for (int column : {Col::Camera, Col::Model, Col::Serial, Col::CascadedSystem, Col::RoomCal}) {
            QVERIFY(!has(model, row, column, Qt::ItemIsEditable));
            QVERIFY(!has(model, row, column, Qt::ItemIsSelectable));
        }
        for (int column : {Col::FlashIntensity, Col::MaxFlash}) {
            QVERIFY(has(model, row, column, Qt::ItemIsEditable));
            QVERIFY(!has(model, row, column, Qt::ItemIsSelectable));
        }
        QVERIFY(has(model, row, Col::RoomCal, Qt::ItemIsEnabled));
        QVERIFY(has(model, row, Col::SyncGroup, Qt::ItemIsEnabled) && has(model, row, Col::SyncGroup, Qt::ItemIsSelectable));
        QVERIFY(!has(model, row, Col::ModFlash, Qt::ItemIsSelectable));
        QVERIFY(!has(model, row, Col::StaticReflexSuppr, Qt::ItemIsSelectable));
    }
    // Camera 2 has neither modulated flash nor static reflex suppression.
    QCOMPARE(has(model, 0, Col::ModFlash, Qt::ItemIsEnabled), true);
    QCOMPARE(has(model, 1, Col::ModFlash, Qt::ItemIsEnabled), false);
    QCOMPARE(has(model, 1, Col::StaticReflexSuppr, Qt::ItemIsEnabled), false);
    QCOMPARE(has(model, 2, Col::StaticReflexSuppr, Qt::ItemIsEnabled), true);
    for (int row = 3; row < 5; ++row) {
        for (int column = Col::Camera; column <= Col::FlashIntensity; ++column)
            QCOMPARE(model->item(row, column)->flags(), Qt::NoItemFlags);
    }
}

void tst_DialogLoading::openingTwiceRebuildsAndRecordsNothing()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::ThreeAndTwoMissing));
    QVERIFY(rig.start());
    rig.open();
    rig.mark();
    QStringList tabs;
    int rows = 0;
    // OK at once, before the pages' display timers: with nothing recorded nothing is written.
    rig.open([&] {
        tabs = tabTexts(rig.tabs());
        rows = rig.model()->rowCount();
        rig.mark();
        rig.widget<QPushButton>("btnOk")->click();
    });
    QCOMPARE(tabs, (QStringList{"All Cameras", "101", "102", "103", "KPE 5120 (disabled)", "6000 (disabled)"}));
    QCOMPARE(rows, 5);
    QCOMPARE(rig.dialog()->findChildren<QWidget*>("CameraWidget").size(), 5);
    QCOMPARE(rig.lastResult(), 1);
    QCOMPARE(rig.requests(), QStringList{set("camera display_show_syncgroup all no")});
}

void tst_DialogLoading::protocolGatesOfLoading_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<int>("rows");
    QTest::addColumn<bool>("syncDisplay");
    QTest::addColumn<QString>("missingSerial");

    QTest::newRow("1.17") << VersionInfo(1, 17, 0) << 3 << false << "";
    QTest::newRow("1.18") << VersionInfo(1, 18, 0) << 5 << false << "5120";
    QTest::newRow("1.23") << VersionInfo(1, 23, 0) << 5 << false << "KPE 5120";
    QTest::newRow("1.27") << VersionInfo(1, 27, 0) << 5 << true << "KPE 5120";
}

void tst_DialogLoading::protocolGatesOfLoading()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(int, rows);
    QFETCH(bool, syncDisplay);
    QFETCH(QString, missingSerial);

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::ThreeAndTwoMissing));
    rig.setProtocol(protocol);
    QVERIFY(rig.start());
    rig.open();
    const QStringList sent = rig.requests();
    QCOMPARE(rig.model()->rowCount(), rows);
    QCOMPARE(sent.contains(get("tracking number_of_missing_cameras")), rows > 3);
    QCOMPARE(sent.count(set("camera display_show_syncgroup all yes")), syncDisplay ? 1 : 0);
    QCOMPARE(sent.count(set("camera display_show_syncgroup all no")), syncDisplay ? 1 : 0);
    if (rows > 3)
        QCOMPARE(rig.cell(3, Col::Serial).toString(), missingSerial);
}

void tst_DialogLoading::missingCameraReadFailures()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::ThreeAndTwoMissing));
    FaultRule failFirst;
    failFirst.match = "quarvo2 get tracking missing_camera c01";
    rig.controller()->addFault(failFirst);
    FaultRule failDesc;
    failDesc.match = "quarvo2 get camera model_desc *";
    rig.controller()->addFault(failDesc);
    QVERIFY(rig.start());
    rig.open();
    // The first missing camera is skipped; the second takes row 4 and keeps its model word.
    QCOMPARE(columnTexts(rig.model(), Col::Camera), (QStringList{"c01", "c02", "c03", "c04"}));
    QCOMPARE(rig.cell(3, Col::Model), QVariant("0x0999"));
    QCOMPARE(rig.cell(3, Col::Serial), QVariant("6000"));
    QVERIFY(rig.messages().isEmpty());
}

void tst_DialogLoading::f7StepsThroughEnabledTabs_data()
{
    QTest::addColumn<QByteArray>("scenario");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QList<int>>("visited");

    QTest::newRow("tab bar, wraps around") << DialogScenarios::Three << "tabBar" << QList<int>{1, 2, 3, 0, 1};
    QTest::newRow("OK button") << DialogScenarios::Three << "btnOk" << QList<int>{1, 2, 3, 0};
    QTest::newRow("details button") << DialogScenarios::Three << "pushButton_showDetails" << QList<int>{1, 2, 3, 0};
    QTest::newRow("disabled tab next: stays") << DialogScenarios::ThreeAndTwoMissing << "tabBar" << QList<int>{1, 2, 3, 3, 3};
}

void tst_DialogLoading::f7StepsThroughEnabledTabs()
{
    QFETCH(QByteArray, scenario);
    QFETCH(QString, from);
    QFETCH(QList<int>, visited);

    DialogRig rig;
    QVERIFY(rig.useScenarioJson(scenario));
    QVERIFY(rig.start());
    QList<int> seen;
    rig.open([&] {
        QTabWidget* tabs = rig.tabs();
        QWidget* target = from == "tabBar" ? static_cast<QWidget*>(tabs->tabBar()) : rig.widget(from.toLatin1());
        for (int i = 0; i < visited.size(); ++i) {
            QTest::keyClick(target, Qt::Key_F7);
            seen << tabs->currentIndex();
        }
    });
    QCOMPARE(seen, visited);
}

void tst_DialogLoading::detailsButtonSwitchesEveryPage()
{
    DialogRig rig;
    QVERIFY(rig.useScenarioJson(DialogScenarios::ThreeAndTwoMissing));
    QVERIFY(rig.start());
    auto* button = rig.widget<QPushButton>("pushButton_showDetails");
    const auto press = [&] { button->click(); };
    // Marker controls of the overview and of every page, present or missing.
    const auto shown = [&](bool expected) {
        QTabWidget* tabs = rig.tabs();
        QWidget* overview = tabs->widget(0);
        bool same = overview->findChild<QWidget*>("comboBox_globalMarkerMode")->isVisibleTo(overview) == expected;
        for (int tab = 1; tab < tabs->count(); ++tab) {
            QWidget* page = tabs->widget(tab);
            same = same && page->findChild<QWidget*>("spinBox_markerMaxNumber")->isVisibleTo(page) == expected;
        }
        return same;
    };
    QStringList texts;
    QList<bool> states;
    rig.open([&] {
        states << shown(false);
        press();
        texts << button->text();
        states << shown(true);
        press();
        texts << button->text();
        states << shown(false);
        press();
    });
    QCOMPARE(texts, (QStringList{"Hide &details", "Show &details"}));
    QCOMPARE(states, (QList<bool>{true, true, true}));
    QCOMPARE(button->text(), QStringLiteral("Hide &details"));

    // The next opening starts with the details hidden again.
    bool hiddenAgain = false;
    rig.open([&] { hiddenAgain = shown(false) && button->text() == "Show &details"; });
    QVERIFY(hiddenAgain);
}

QTEST_MAIN(tst_DialogLoading)
#include "tst_dialogloading.moc"
