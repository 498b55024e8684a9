// The module as the host sees it: the plug-in's identity and menu record, its
// parameters, host messages and orderly shut-down; and the dialog behind the menu entry
// as far as the host and the configuration lock shape it: the variant the system model
// chooses, the lock asked at each opening, and every way of closing it.
#include "dialogrig.h"

#include <ModuleInterface.h>

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QPluginLoader>
#include <QPointer>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QtTest>

namespace {

const char PluginPath[] = QUARVO_PLUGIN_DIR "/libCameraSettingsModule.so";
const QString LockQuery = get("config is_changeable");

QImage iconImage(const QIcon& icon)
{
    return icon.pixmap(QSize(16, 16)).toImage().convertToFormat(QImage::Format_ARGB32);
}

// What the operator saw of the open dialog: OK, the camera pages or the panel's
// controls, and the window icon.
struct Seen
{
    bool ok = false;
    bool panel = false;
    bool pagesEnabled = false;
    bool panelEnabled = false;
    QImage icon;
};

Seen look(DialogRig& rig)
{
    Seen seen;
    seen.ok = rig.widget("btnOk")->isEnabled();
    seen.panel = rig.widget("slider_lct_flash_intensity")->isVisible();
    seen.panelEnabled = rig.widget("checkBox_lct_modulated_flash")->isEnabled();
    QTabWidget* tabs = rig.tabs();
    seen.pagesEnabled = tabs->isVisible();
    for (int i = 0; i < tabs->count(); ++i)
        seen.pagesEnabled = seen.pagesEnabled && tabs->widget(i)->isEnabled();
    seen.icon = iconImage(rig.dialog()->windowIcon());
    return seen;
}

} // namespace

class tst_CameraSettingsModule : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void identityAndMenuRecord();
    void setParam_data();
    void setParam();
    void parametersAfterTheDialogReachNothing();
    void shutDownInOrder();
    void dialogDestroyedWithItsWindow();
    void hostMessages_data();
    void hostMessages();

    void configurationLock_data();
    void configurationLock();
    void closingTheDialog();

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

void tst_CameraSettingsModule::identityAndMenuRecord()
{
    QCOMPARE(m_loader.metaData().value("IID").toString(), QStringLiteral("com.quarvo.Quarvo2.CameraSettingsModule"));
    QCOMPARE(m_loader.metaData().value("className").toString(), QStringLiteral("CameraSettingsModule"));
    ModuleInterface* interface = module();
    QVERIFY(interface);
    QCOMPARE(interface->get_module_name(), QStringLiteral("GUI Camera Settings"));
    QCOMPARE(interface->get_module_version(), QStringLiteral("v1.13.0"));

    interface->set_param("CommandManager", QVariant::fromValue(m_fixture.channel()));
    const QList<_GuiElement*> elements = interface->get_gui_elements();
    QCOMPARE(elements.size(), 1);
    const GuiElement* element = elements.first();
    const QAction* action = element->menu_entry;
    QCOMPARE(QString("%1 %2 %3 %4").arg(element->menu_name).arg(element->menu_order_number)
                 .arg(element->menu_entry_order_number).arg(element->action_active_during_measurement),
             QString("H&ardware 200 120 0"));
    QCOMPARE(QStringList({action->text(), action->shortcut().toString(), action->statusTip(), action->whatsThis()}),
             QStringList({"C&ameras", "F7", "Change camera settings", "Change camera settings"}));
    QVERIFY2(element->content && element->content->isHidden(), "the dialog waits hidden for the menu entry");

    // A second call builds nothing new.
    QCOMPARE(interface->get_gui_elements(), elements);
    QCOMPARE(m_loader.instance()->findChildren<QAction*>().size(), 1);
    QCOMPARE(m_fixture.channel()->receivers("CameraSettingsModule").size(), 1);
    QVERIFY2(m_fixture.allRequests().isEmpty(), "building the dialog asks the controller nothing");
}

void tst_CameraSettingsModule::setParam_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("registered");
    QTest::addColumn<bool>("parented");
    QTest::addColumn<bool>("panel");

    QTest::newRow("CommandManager") << "CommandManager" << "channel" << true << false << false;
    QTest::newRow("CommandManager holding a number") << "CommandManager" << "number" << false << false << false;
    QTest::newRow("ModuleParent") << "ModuleParent" << "window" << false << true << false;
    QTest::newRow("ModuleParent holding no widget") << "ModuleParent" << "object" << false << false << false;
    QTest::newRow("BackendVersions BRISKBOX") << "BackendVersions" << "briskbox" << false << false << true;
}

void tst_CameraSettingsModule::setParam()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, registered);
    QFETCH(bool, parented);
    QFETCH(bool, panel);

    QMainWindow window;
    QObject plainObject;
    BackendVersions briskbox(VersionInfo(), VersionInfo(1, 27, 0), VersionInfo(), "BRISKBOX");
    const QMap<QString, QVariant> values{{"channel", QVariant::fromValue(m_fixture.channel())}, {"number", 42},
                                         {"window", QVariant::fromValue(&window)},
                                         {"object", QVariant::fromValue(&plainObject)},
                                         {"briskbox", QVariant::fromValue(&briskbox)}};
    ModuleInterface* interface = module();
    interface->set_param(key, values.value(value));
    QWidget* dialog = interface->get_gui_elements().first()->content;
    QCOMPARE(m_fixture.channel()->receivers("CameraSettingsModule").size(), registered ? 1 : 0);
    QCOMPARE(dialog->parentWidget(), parented ? static_cast<QWidget*>(&window) : nullptr);
    QCOMPARE(dialog->findChild<QTabWidget*>("tabWidget")->isHidden(), panel);
    // The window must outlive nothing of the module's: end before it goes.
    interface->about_to_exit_module();
    interface->exit_module();
}

void tst_CameraSettingsModule::parametersAfterTheDialogReachNothing()
{
    ModuleInterface* interface = module();
    const GuiElement* element = interface->get_gui_elements().first();
    interface->set_param("CommandManager", QVariant::fromValue(m_fixture.channel()));
    interface->set_param("BackendVersions", QVariant::fromValue(m_fixture.versions()));
    ModalDriver modals;
    modals.whenModal<QDialog>([](QDialog* dialog) { dialog->reject(); });
    element->menu_entry->trigger();
    QVERIFY2(element->content->isHidden(), "the dialog was opened and closed again");
    QVERIFY(m_fixture.allRequests().isEmpty());
    QVERIFY(m_fixture.channel()->receivers("CameraSettingsModule").isEmpty());
}

void tst_CameraSettingsModule::shutDownInOrder()
{
    ModuleInterface* interface = module();
    interface->set_param("CommandManager", QVariant::fromValue(m_fixture.channel()));
    const GuiElement* element = interface->get_gui_elements().first();
    QPointer<QWidget> dialog = element->content;
    QPointer<QAction> action = element->menu_entry;

    interface->about_to_exit_module();
    QCOMPARE(m_fixture.channel()->deliverMessage("CameraSettingsModule", 0, "host", "ShowDynReflexSuppr"), 0);
    QVERIFY2(dialog, "about_to_exit_module only unregisters");
    interface->exit_module();
    QVERIFY2(dialog.isNull(), "exit_module deletes the dialog");
    QVERIFY2(action, "the action lives as long as the module");
    interface->exit_module();
    // The list was only emptied, so the menu record is built again on request.
    QCOMPARE(interface->get_gui_elements().size(), 1);
    interface->about_to_exit_module();
    interface->exit_module();
    delete m_loader.instance();
    QVERIFY(action.isNull());
}

void tst_CameraSettingsModule::dialogDestroyedWithItsWindow()
{
    ModuleInterface* interface = module();
    auto* window = new QMainWindow;
    interface->set_param("ModuleParent", QVariant::fromValue(window));
    QPointer<QWidget> dialog = interface->get_gui_elements().first()->content;
    delete window;
    QVERIFY(dialog.isNull());
    // The host's window took the dialog with it; the module must not delete it again.
    interface->about_to_exit_module();
    interface->exit_module();
}

void tst_CameraSettingsModule::hostMessages_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("nullText");
    QTest::addColumn<bool>("shown");

    QTest::newRow("ShowDynReflexSuppr") << QByteArray("ShowDynReflexSuppr") << false << true;
    QTest::newRow("other case") << QByteArray("showdynreflexsuppr") << false << false;
    QTest::newRow("with a blank") << QByteArray("ShowDynReflexSuppr ") << false << false;
    QTest::newRow("empty") << QByteArray("") << false << false;
    QTest::newRow("null text") << QByteArray() << true << false;
}

void tst_CameraSettingsModule::hostMessages()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, nullText);
    QFETCH(bool, shown);

    // Camera 3 of the default system has dynamic reflex suppression off, like every other:
    // only the host's message shows the column.
    DialogRig rig;
    rig.poke("camera dynamic_reflex_skip c03 no");
    QVERIFY(rig.start());
    IOManager* channel = rig.channel();
    // The flag before is the opposite, so that a message that changed nothing would show.
    channel->deliverMessage("CameraSettingsModule", 7, "host", shown ? "other" : "ShowDynReflexSuppr");
    QCOMPARE(channel->deliverMessage("CameraSettingsModule", 7, "host", nullText ? nullptr : text.constData()), 1);
    QCOMPARE(channel->deliverMessage("OtherModule", 7, "host", "ShowDynReflexSuppr"), 0);
    QVERIFY2(rig.requests().isEmpty(), "a host message asks the controller nothing");
    bool columnShown = false;
    rig.open([&] { columnShown = rig.pageWidget<QWidget>(0, "checkBox_dynamic_reflex_skip")->isVisible(); });
    QCOMPARE(columnShown, shown);
}

void tst_CameraSettingsModule::configurationLock_data()
{
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<VersionInfo>("protocol");
    QTest::addColumn<QByteArray>("answer"); // empty: the controller's own "no"
    QTest::addColumn<bool>("locked");

    QTest::newRow("locked") << "default" << VersionInfo(1, 27, 0) << QByteArray() << true;
    QTest::newRow("locked at 1.9") << "default" << VersionInfo(1, 9, -1) << QByteArray() << true;
    QTest::newRow("no lock before 1.9") << "default" << VersionInfo(1, 8, 99) << QByteArray() << false;
    QTest::newRow("No in other case") << "default" << VersionInfo(1, 27, 0) << QByteArray("quarvo2 set config is_changeable No") << false;
    QTest::newRow("garbage") << "default" << VersionInfo(1, 27, 0) << QByteArray("\x01\xff no") << false;
    QTest::newRow("refused") << "default" << VersionInfo(1, 27, 0) << QByteArray("quarvo2 err 7 \"busy\"") << false;
    QTest::newRow("BRISKBOX locked") << "briskbox" << VersionInfo(1, 27, 0) << QByteArray() << true;
}

void tst_CameraSettingsModule::configurationLock()
{
    QFETCH(QString, scenario);
    QFETCH(VersionInfo, protocol);
    QFETCH(QByteArray, answer);
    QFETCH(bool, locked);

    DialogRig rig;
    rig.useScenario(scenario);
    rig.setProtocol(protocol);
    if (answer.isEmpty())
        rig.poke("config is_changeable no");
    else
        rig.answer(LockQuery, answer);
    QPixmap magenta(16, 16);
    magenta.fill(Qt::magenta);
    QVERIFY(rig.start());
    rig.window()->setWindowIcon(QIcon(magenta));
    Seen seen;
    rig.open([&] { seen = look(rig); });

    QCOMPARE(rig.requests().count(LockQuery), protocol >= VersionInfo(1, 9, -1) ? 1 : 0);
    QCOMPARE(seen.ok, !locked);
    QCOMPARE(seen.panel, scenario == "briskbox");
    QCOMPARE(seen.panel ? seen.panelEnabled : seen.pagesEnabled, !locked);
    QVERIFY2(seen.icon == iconImage(locked ? QIcon(":/lock.png") : QIcon(magenta)), "lock icon or the window's own");
    // A locked controller refuses the pages' write-back of a display setting at loading,
    // which the pages report; the dialog itself reports nothing.
    QCOMPARE(rig.messages().filter(QRegularExpression("^standard(?!.*display mode$)")), QStringList());
}

void tst_CameraSettingsModule::closingTheDialog()
{
    // One dialog opened again and again, each time closed another way; the lock is asked
    // at each opening, and Enter on a locked dialog clicks nothing.
    struct Way
    {
        QString how;
        bool locked;
        int result;
    };
    const QList<Way> ways{{"btnOk", false, 1}, {"enter", false, 1}, {"btnCancel", false, 0}, {"escape", false, 0},
                          {"close", false, 0}, {"enter", true, 0}, {"btnCancel", true, 0}, {"enter", false, 1}};
    DialogRig rig;
    QVERIFY(rig.start());
    for (const Way& way : ways) {
        rig.poke(way.locked ? "config is_changeable no" : "config is_changeable yes");
        Seen seen;
        bool stillOpen = false;
        rig.open([&] {
            seen = look(rig);
            if (way.how == "enter")
                QTest::keyClick(rig.dialog(), Qt::Key_Return);
            else if (way.how == "escape")
                QTest::keyClick(rig.dialog(), Qt::Key_Escape);
            else if (way.how == "close")
                rig.dialog()->close();
            else
                rig.click(way.how.toLatin1());
            stillOpen = rig.dialog()->isVisible();
            if (stillOpen)
                QTest::keyClick(rig.dialog(), Qt::Key_Escape);
        });
        const QString what = way.how + (way.locked ? " locked" : "");
        QVERIFY2(seen.ok != way.locked && seen.pagesEnabled != way.locked, qPrintable(what));
        QVERIFY2(rig.lastResult() == way.result, qPrintable(what));
        QVERIFY2(stillOpen == (way.locked && way.how == "enter"), qPrintable(what));
    }
    QCOMPARE(rig.requests().count(LockQuery), ways.size());
    QCOMPARE(rig.dialog()->windowTitle(), QStringLiteral("Camera Settings"));
}

QTEST_MAIN(tst_CameraSettingsModule)
#include "tst_camerasettingsmodule.moc"
