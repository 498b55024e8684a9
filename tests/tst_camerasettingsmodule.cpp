// The module as the host sees it: its menu record, host messages and shut-down, and the
// dialog behind the menu entry as the configuration lock shapes it.
#include "dialogrig.h"

#include <ModuleInterface.h>

#include <QAction>
#include <QComboBox>
#include <QApplication>
#include <QMainWindow>
#include <QPluginLoader>
#include <QPointer>
#include <QTabWidget>
#include <QtTest>

namespace {

const char PluginPath[] = QUARVO_PLUGIN_DIR "/libCameraSettingsModule.so";
const QString LockQuery = get("config is_changeable");

QImage iconImage(const QIcon& icon)
{
    return icon.pixmap(QSize(16, 16)).toImage().convertToFormat(QImage::Format_ARGB32);
}

} // namespace

class tst_CameraSettingsModule : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void lifeOfTheModule();
    void hostMessages();

    void configurationLock_data();
    void configurationLock();

private:
    ModuleInterface* module() { return qobject_cast<ModuleInterface*>(m_loader.instance()); }

    QPluginLoader m_loader;
    ControllerFixture m_fixture;
};

void tst_CameraSettingsModule::initTestCase()
{
    m_loader.setFileName(QString::fromUtf8(PluginPath));
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
}

// Each case starts with a new module object: the host's shut-down, then the object is gone.
void tst_CameraSettingsModule::cleanup()
{
    if (QObject* instance = m_loader.instance()) {
        if (ModuleInterface* interface = module()) {
            interface->about_to_exit_module();
            interface->exit_module();
        }
        delete instance;
    }
    QVERIFY2(m_fixture.channel()->receivers("CameraSettingsModule").isEmpty(), "a receiver was left registered");
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a window was left behind");
}

// One module's life as a host may lead it (the host's own loading and unloading are the
// host suite's), and a window that becomes the dialog's parent and takes it along.
void tst_CameraSettingsModule::lifeOfTheModule()
{
    ModuleInterface* interface = module();
    interface->set_param("CommandManager", QVariant::fromValue(m_fixture.channel()));
    interface->set_param("BackendVersions", QVariant::fromValue(m_fixture.versions()));
    const GuiElement* element = interface->get_gui_elements().first();
    QCOMPARE(QString("%1 %2 %3 %4 %5").arg(element->menu_name).arg(element->menu_order_number)
                 .arg(element->menu_entry_order_number).arg(element->action_active_during_measurement)
                 .arg(element->menu_entry->whatsThis()),
             QString("H&ardware 200 120 0 Change camera settings"));
    QVERIFY2(element->content && element->content->isHidden(), "the dialog waits hidden for the menu entry");

    QPointer<QWidget> dialog = element->content;
    QPointer<QAction> action = element->menu_entry;
    interface->about_to_exit_module();
    QVERIFY2(dialog, "about_to_exit_module only unregisters");
    interface->exit_module();
    interface->exit_module();
    QVERIFY2(dialog.isNull() && action, "exit_module deletes the dialog; the action lives as long as the module");

    // The list was only emptied, so the menu record is built again on request, under the
    // window now; the window takes the dialog along, and the module must not delete it again.
    auto* window = new QMainWindow;
    interface->set_param("CommandManager", 42);
    interface->set_param("ModuleParent", QVariant::fromValue(window));
    QCOMPARE(interface->get_gui_elements().size(), 1);
    dialog = interface->get_gui_elements().first()->content;
    QCOMPARE(dialog->parentWidget(), window);
    delete window;
    QVERIFY(dialog.isNull());
    interface->about_to_exit_module();
    interface->exit_module();
    delete m_loader.instance();
    QVERIFY(action.isNull());
}

void tst_CameraSettingsModule::hostMessages()
{
    // Camera 3 of the default system has dynamic reflex suppression off, like every other:
    // only the host's exact message shows the column, and a null text is no text. Each
    // message follows one that leaves the column the other way, so that a message that
    // changed nothing would show.
    DialogRig rig({}, {"camera dynamic_reflex_skip c03 no"});
    QVERIFY(rig.start());
    QVERIFY2(rig.allRequests().isEmpty(), "building the dialog asks the controller nothing");
    QStringList shown;
    for (const char* text : {"ShowDynReflexSuppr", static_cast<const char*>(nullptr), "ShowDynReflexSuppr", "showdynreflexsuppr"}) {
        rig.mark();
        QCOMPARE(rig.channel()->deliverMessage("CameraSettingsModule", 7, "host", text), 1);
        QVERIFY2(rig.requests().isEmpty(), "a host message asks the controller nothing");
        // Each opening offers the display settings once, whatever the openings before offered.
        rig.open([&] { shown << (rig.pageWidget<QWidget>(0, "checkBox_dynamic_reflex_skip")->isVisible() ? "shown " : "hidden ")
                                    + QString::number(rig.pageWidget<QComboBox>(0, "comboBox_displayMode")->count()); });
    }
    QCOMPARE(shown, (QStringList{"shown 4", "hidden 4", "shown 4", "hidden 4"}));
}

// The lock as each protocol and answer leaves it, and each way of closing the dialog:
// Enter on a locked dialog or on a page's controls clicks nothing.
void tst_CameraSettingsModule::configurationLock_data()
{
    QTest::addColumn<QByteArray>("scenario"); // JSON, or none for the default system
    QTest::addColumn<QByteArrayList>("changes"); // as applyChanges() takes them
    QTest::addColumn<bool>("locked");
    QTest::addColumn<QString>("how");

    const QByteArray no = "config is_changeable no";
    QTest::newRow("locked at 1.9, Enter") << QByteArray() << QByteArrayList{no, "protocol 1.9.0"} << true << "enter";
    QTest::newRow("no lock before 1.9, OK") << QByteArray() << QByteArrayList{no, "protocol 1.8.99"} << false << "btnOk";
    QTest::newRow("No in other case, Enter") << QByteArray() << QByteArrayList{"answer config is_changeable=No"} << false
                                             << "enter";
    QTest::newRow("refused, Escape") << QByteArray() << QByteArrayList{"fail " + LockQuery.toLatin1()} << false << "escape";
    QTest::newRow("Enter on a page") << QByteArray() << QByteArrayList{"answer config is_changeable=yes"} << false
                                     << "enter on a page";
    QTest::newRow("BRISKBOX locked, Escape") << DialogScenarios::briskbox(2) << QByteArrayList{no} << true << "escape";
}

void tst_CameraSettingsModule::configurationLock()
{
    QFETCH(QByteArray, scenario);
    QFETCH(QByteArrayList, changes);
    QFETCH(bool, locked);
    QFETCH(QString, how);

    DialogRig rig(scenario, changes);
    QVERIFY(rig.start());
    QString seen;
    QImage icon;
    bool stillOpen = false;
    rig.open([&] {
        // Whether OK and the camera pages (or the panel's controls) can be used.
        QTabWidget* tabs = rig.tabs();
        bool usable = tabs->isVisible() || rig.widget("checkBox_lct_modulated_flash")->isEnabled();
        for (int i = 0; i < tabs->count() && tabs->isVisible(); ++i)
            usable = usable && tabs->widget(i)->isEnabled();
        seen = QString(rig.widget("btnOk")->isEnabled() ? "OK" : "no OK") + (usable ? ", usable" : ", locked");
        icon = iconImage(rig.dialog()->windowIcon());
        if (how == "enter") {
            QTest::keyClick(rig.dialog(), Qt::Key_Return);
        } else if (how == "enter on a page") {
            // OK is the dialog's default button, but not for the keys the overview and a page's controls take.
            QTest::keyClick(rig.tabs()->currentWidget(), Qt::Key_Return);
            rig.tabs()->setCurrentIndex(1);
            for (const char* name : {"horizontalSlider", "spinBox_markerMaxNumber"})
                QTest::keyClick(rig.pageWidget<QWidget>(1, name), Qt::Key_Enter);
            QTest::keyClick(rig.tabs()->currentWidget(), Qt::Key_Return);
        } else if (how == "escape") {
            // From the overview, which hands Escape on to the dialog, or from the panel.
            QTest::keyClick(tabs->isVisible() ? tabs->currentWidget() : rig.dialog(), Qt::Key_Escape);
        } else {
            rig.click(how.toLatin1());
        }
        stillOpen = rig.dialog()->isVisible();
        if (stillOpen)
            QTest::keyClick(rig.dialog(), Qt::Key_Escape);
    });

    QCOMPARE(rig.requests().count(LockQuery), changes.contains("protocol 1.8.99") ? 0 : 1);
    QCOMPARE(seen, locked ? "no OK, locked" : "OK, usable");
    QCOMPARE(icon == iconImage(QIcon(":/lock.png")), locked);
    QCOMPARE(stillOpen, (locked && how == "enter") || how == "enter on a page");
    QCOMPARE(rig.lastResult(), !locked && (how == "enter" || how == "btnOk") ? 1 : 0);
    // A locked controller refuses the pages' write-back of a display setting at loading,
    // which the pages report; the dialog itself reports nothing.
    QCOMPARE(rig.messages().filter(QRegularExpression("^standard(?!.*display mode$)")), QStringList());
}

QTEST_MAIN(tst_CameraSettingsModule)
#include "tst_camerasettingsmodule.moc"
