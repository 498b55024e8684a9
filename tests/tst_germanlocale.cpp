// On a German desktop (LC_NUMERIC de_DE, decimal comma) the dialog still writes and reads
// numbers with a decimal point and leaves the process locale alone; its labels are German,
// while the texts the module sets stay English, the details button's among them, which the
// module reads back to know its state. The locale is generated for the run when the system
// has none (localedef from the locales package, into LOCPATH).
#include "dialogrig.h"
#include "widgetsuite.h"

#include <cameratablecolumns.h>
#include <controllersession.h>
#include <hosttranslations.h>
#include <hostwindow.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>
#include <QtWidgets>

#include <cstdio>
#include <cstdlib>
#include <locale.h>

namespace Col = CameraTable;

namespace {

const char GermanLocale[] = "de_DE.UTF-8";

// What the C library writes for 0.7 under the process locale.
QByteArray processWrites()
{
    char text[32];
    snprintf(text, sizeof text, "%f", 0.7);
    return text;
}

// Makes the German locale available and chosen for numbers, before the application
// object adopts the environment's locale; false when it cannot be had.
bool chooseGermanNumbers(const QTemporaryDir& scratch)
{
    qunsetenv("LC_ALL");
    qputenv("LC_NUMERIC", GermanLocale);
    const locale_t installed = newlocale(LC_NUMERIC_MASK, GermanLocale, locale_t(nullptr));
    if (installed) {
        freelocale(installed);
        return true;
    }
    const QByteArray command = "localedef -i de_DE -f UTF-8 '" + scratch.filePath(GermanLocale).toLocal8Bit()
        + "' >/dev/null 2>&1";
    if (std::system(command.constData()) != 0)
        return false;
    // The application object's setlocale finds it there (initTestCase checks that it
    // did); newlocale is not asked again, since with LOCPATH set it leaks its path list.
    qputenv("LOCPATH", scratch.path().toLocal8Bit());
    return QFileInfo(scratch.filePath(GermanLocale)).isDir();
}

const QString PluginDir = QStringLiteral(QUARVO_PLUGIN_DIR);

} // namespace

class tst_GermanLocale : public WidgetSuite
{
    Q_OBJECT

private slots:
    void initTestCase() { QCOMPARE(processWrites(), QByteArray("0,700000")); }
    void cleanupTestCase() { QCOMPARE(processWrites(), QByteArray("0,700000")); }
    void dialogWritesDecimalPoints();
    void dialogInGerman();
};

// The channel formats every request and parses every reply in one place each: one
// number read into a cell, one written live and one written back by Cancel prove them.
void tst_GermanLocale::dialogWritesDecimalPoints()
{
    DialogRig rig(DialogScenarios::Five, {"camera sensor_gain c01 2.5"});
    QVERIFY(rig.start());
    QVariant read;
    QStringList live;
    rig.open([&] {
        read = rig.cell(0, Col::SensorGain);
        rig.tabs()->setCurrentIndex(1);
        rig.mark();
        rig.pageWidget<QSlider>(1, "horizontalSlider_displayIntensity")->setValue(70);
        fireDisplayTimers(rig.dialog());
        rig.pageWidget<QPushButton>(1, "pushButton_defaultSensorGain")->click();
        live = rig.requests();
        rig.mark();
        rig.click("btnCancel");
    });
    QCOMPARE(read, QVariant(2.5));
    QCOMPARE(live.filter(set("camera display_intensity")), QStringList{set("camera display_intensity c01 0.700000")});
    QCOMPARE(rig.requests().filter("sensor_gain"), QStringList{set("camera sensor_gain c01 2.500000")});
}

void tst_GermanLocale::dialogInGerman()
{
    HostTranslations translations;
    // Qt's own catalogue comes along where the system has one; the fall-back from a
    // regional locale to its language is QTranslator's.
    QCOMPARE(translations.install(QLocale(QStringLiteral("de")), HostTranslations::folderBeside(PluginDir))
                 .filter(QRegularExpression(QStringLiteral("^(?!qt)"))),
             (QStringList{"camerasettings_de.qm", "quarvo2-host_de.qm"}));
    ControllerSession session;
    HostWindow window(&session, PluginDir);
    QCOMPARE(window.loadModules(), 1);

    QMenu* hardware = window.findMenu(QStringLiteral("H&ardware"));
    QVERIFY(hardware);
    QAction* cameras = hardware->actions().first();
    QCOMPARE(cameras->text(), QStringLiteral("K&ameras"));

    QStringList seen;
    ModalDriver modals;
    modals.whenModal<QDialog>([&](QDialog* dialog) {
        seen << dialog->windowTitle();
        // One text of the form stands for all: the form translates them in one place.
        seen << dialog->findChild<QAbstractButton*>(QStringLiteral("checkBox_flash_intensity"))->text();
        auto* tabs = dialog->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
        seen << tabs->tabText(0) << tabs->tabText(1);
        auto* table = dialog->findChild<QStandardItemModel*>(QString(), Qt::FindDirectChildrenOnly);
        seen << table->headerData(CameraTable::FlashIntensity, Qt::Horizontal).toString()
             << table->data(table->index(0, CameraTable::SyncGroup)).toString();
        auto* details = dialog->findChild<QPushButton*>(QStringLiteral("pushButton_showDetails"));
        seen << details->text();
        details->click();
        seen << details->text();
        dialog->reject();
    });
    cameras->trigger();
    QCOMPARE(seen, QStringList() << "Kameraeinstellungen"
                                 << "&Globale Blitzintensität "
                                 // The overview's tab is named by the module as it is.
                                 << "All Cameras" << "4711"
                                 << "Blitzintensität"
                                 // Channel names are the module's own, read back as they are.
                                 << "Channel 1"
                                 << "Show &details" << "Hide &details");
}

int main(int argc, char** argv)
{
    const QTemporaryDir scratch;
    if (!scratch.isValid() || !chooseGermanNumbers(scratch)) {
        fprintf(stderr, "The German locale %s is neither installed nor can localedef make it "
                        "(the locales package, scripts/deps.sh).\n", GermanLocale);
        return 1;
    }
    // The application object adopts the environment's locale for the whole process, as
    // the frontend does on a German desktop.
    QApplication app(argc, argv);
    tst_GermanLocale test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_germanlocale.moc"
