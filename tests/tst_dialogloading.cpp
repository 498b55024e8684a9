// Opening the camera settings dialog: the tabs and the camera table it builds from the
// controller, and what each protocol version lets it ask and write.
#include "dialogrig.h"
#include "pagerig.h"
#include "widgetsuite.h"
#include "randomoperator.h"
#include "displaytimers.h"

#include <cameratablecolumns.h>

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

// The flags of a cell as letters: Enabled, Selectable, eDitable, or "-".
QString flagsOf(const QStandardItemModel* model, int row, int column)
{
    const Qt::ItemFlags flags = model->flags(model->index(row, column));
    const QString letters = QString(flags & Qt::ItemIsEnabled ? "E" : "") + (flags & Qt::ItemIsSelectable ? "S" : "")
        + (flags & Qt::ItemIsEditable ? "D" : "");
    return letters.isEmpty() ? QStringLiteral("-") : letters;
}

const QStringList TabsOfThreeAndTwoMissing{"All Cameras", "101", "102", "103", "KPE 5120 (disabled)", "6000 (disabled)"};

} // namespace

class tst_DialogLoading : public WidgetSuite
{
    Q_OBJECT

private slots:
    void tabsRowsAndMissingCameras();
    void everyProtocol_data();
    void everyProtocol();
};

void tst_DialogLoading::tabsRowsAndMissingCameras()
{
    DialogRig rig(DialogScenarios::ThreeAndTwoMissing);
    QVERIFY(rig.start());
    QStringList tabs;
    QList<int> stepped;
    rig.open([&] {
        tabs = tabTexts(rig.tabs());
        // F7 on the tab bar steps to the next enabled tab and stays before a disabled one.
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(rig.tabs()->tabBar(), Qt::Key_F7);
            stepped << rig.tabs()->currentIndex();
        }
    });
    QCOMPARE(tabs, TabsOfThreeAndTwoMissing);
    QCOMPARE(stepped, (QList<int>{1, 2, 3, 3, 3}));
    const QStandardItemModel* model = rig.model();
    QCOMPARE(cellTexts(model, Col::Camera), (QStringList{"c01", "c02", "c03", "c04", "c05"}));
    QCOMPARE(cellTexts(model, Col::Model), (QStringList{"LUMACAM5", "LUMACAMKP", "LUMACAM5", "LUMACAMKPE", "0x0999"}));
    QCOMPARE(cellTexts(model, Col::CameraMode), (QStringList{"Standard 180 Hz", "", "", "", ""}));
    // The flags of the five rows (the two missing ones apart), one column of each kind; camera 2
    // has no modulated flash.
    const QMap<int, QString> flags{{Col::Camera, "E E E - -"}, {Col::FlashIntensity, "ED ED ED - -"},
                                   {Col::ModFlash, "ED D ED ESD ESD"}, {Col::SyncGroup, "ESD ESD ESD ESD ESD"},
                                   {Col::RoomCal, "E E E ESD ESD"}};
    for (auto it = flags.cbegin(); it != flags.cend(); ++it) {
        QStringList shown;
        for (int row = 0; row < 5; ++row)
            shown << flagsOf(model, row, it.key());
        QVERIFY2(shown.join(' ') == it.value(), qPrintable(QString("column %1: %2").arg(it.key()).arg(shown.join(' '))));
    }
    // A second opening rebuilds the same, the details button switches the marker controls
    // of the overview and of every page, present or missing, and OK at once writes nothing
    // recorded.
    auto* button = rig.widget<QPushButton>("pushButton_showDetails");
    const auto details = [&] {
        QTabWidget* tabs = rig.tabs();
        const bool shown = tabs->widget(0)->findChild<QWidget*>("comboBox_globalMarkerMode")->isVisibleTo(tabs->widget(0));
        for (int tab = 1; tab < tabs->count(); ++tab) {
            if (tabs->widget(tab)->findChild<QWidget*>("spinBox_markerMaxNumber")->isVisibleTo(tabs->widget(tab)) != shown)
                return QStringLiteral("mixed");
        }
        return QString(shown ? "shown" : "hidden") + " under " + button->text();
    };
    QStringList states;
    rig.open([&] {
        tabs = tabTexts(rig.tabs());
        for (int i = 0; i < 3; ++i) {
            states << details();
            button->click();
        }
        rig.mark();
        rig.click("btnOk");
    });
    QCOMPARE(tabs, TabsOfThreeAndTwoMissing);
    QCOMPARE(rig.requests(), QStringList{set("camera display_show_syncgroup all no")});
    // The third starts with the details hidden again. The first missing camera, unreadable,
    // is skipped; the second takes row 4 and keeps its model word.
    rig.fail(get("tracking missing_camera c01"));
    rig.fail(get("camera model_desc *"));
    rig.mark();
    rig.open([&] { states << details(); });
    QCOMPARE(states, (QStringList{"hidden under Show &details", "shown under Hide &details",
                                  "hidden under Show &details", "hidden under Show &details"}));
    QCOMPARE(cellTexts(rig.model(), Col::Camera), (QStringList{"c01", "c02", "c03", "c04"}));
    QCOMPARE(rig.cell(3, Col::Model).toString() + ' ' + rig.cell(3, Col::Serial).toString(), QString("0x0999 6000"));
    QVERIFY(rig.messages().isEmpty());
    // The configuration lock is asked anew at each opening.
    QCOMPARE(rig.allRequests().count(get("config is_changeable")), 3);
}

void tst_DialogLoading::everyProtocol_data()
{
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<QString>("missingSerial"); // of the missing camera's row; "-": no row

    QTest::newRow("1.5") << VersionInfo(1, 5, 0) << "-";
    QTest::newRow("1.9") << VersionInfo(1, 9, 0) << "-";
    QTest::newRow("1.15") << VersionInfo(1, 15, 0) << "-";
    QTest::newRow("1.18") << VersionInfo(1, 18, -1) << "5120";
    QTest::newRow("1.23") << VersionInfo(1, 23, 0) << "KPE 5120";
    QTest::newRow("1.24") << VersionInfo(1, 24, 0) << "KPE 5120";
    QTest::newRow("1.27") << VersionInfo(1, 27, 0) << "KPE 5120";
}

void tst_DialogLoading::everyProtocol()
{
    QFETCH(VersionInfo, protocol);
    QFETCH(QString, missingSerial);

    // Every feature on every camera: what the protocol lacks is all the dialog may leave out.
    DialogRig rig(DialogScenarios::EveryFeature);
    rig.setProtocol(protocol);
    QVERIFY(rig.start());
    // From 1.15 on the cameras' two modes are offered: a page writes its choice at once,
    // OK the table's.
    rig.open([&] {
        rig.tabs()->setCurrentIndex(2);
        rig.pageWidget<QComboBox>(2, "comboBox_cameraMode")->setCurrentIndex(1);
        rig.pageWidget<QCheckBox>(2, "checkBox_autoExposureCtrl")->click();
        rig.edit(0, Col::CameraModeData, "m02");
        rig.modals().answerMessageBox(QMessageBox::Yes); // camera 2's modulated flash in channel 2
        rig.click("btnOk");
    });
    const QStringList modes{set("camera mode c02 m02"), set("camera mode c01 m02"), set("camera mode c02 m02")};
    QCOMPARE(rig.requests().filter("set camera mode "), protocol >= VersionInfo(1, 15, -1) ? modes : QStringList());
    // Exposure control from 1.24 on: the page switches automatic control off at once.
    QCOMPARE(rig.requests().filter("set camera sensor_exposure c02"), protocol >= VersionInfo(1, 24, -1) ?
             QStringList{set("camera sensor_exposure c02 default")} : QStringList());
    rig.mark();
    for (const char* ending : {"btnOk", "btnCancel"}) {
        rig.open([&] {
            RandomOperator person(protocol.minor());
            for (int i = 0; i < 10; ++i)
                person.act(rig);
            fireDisplayTimers(rig.dialog());
            rig.modals().answerEveryMessageBox([] { return QMessageBox::Yes; });
            rig.click(ending);
            rig.modals().stopAnswering();
        });
    }
    const QStringList unknown = rig.unknownToTheController();
    QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join("\n")));
    QCOMPARE(rig.model()->rowCount(), missingSerial == "-" ? 2 : 3);
    if (missingSerial != "-")
        QCOMPARE(rig.cell(2, Col::Serial).toString(), missingSerial);
    // The cameras show their sync groups while the dialog is open, from 1.27 on.
    const bool syncDisplay = protocol >= VersionInfo(1, 27, -1);
    QCOMPARE(rig.requests().count(set("camera display_show_syncgroup all yes")), syncDisplay ? 2 : 0);
    QCOMPARE(rig.requests().count(set("camera display_show_syncgroup all no")), syncDisplay ? 2 : 0);
}

QTEST_MAIN(tst_DialogLoading)
#include "tst_dialogloading.moc"
