// The plug-in as the host sees it: loaded by QPluginLoader, cast to ModuleInterface,
// given its parameters, asked for its menu record and shut down in order.
#include "BackendVersions.h"
#include "ControllerLink.h"
#include "IOManager.h"
#include "ModuleInterface.h"

#include <QAction>
#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMainWindow>
#include <QPluginLoader>
#include <QPointer>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

namespace {

const char kPluginPath[] = QUARVO_PLUGIN_DIR "/libCameraSettingsModule.so";

// A controller that refuses everything and remembers what it was asked.
class RecordingLink : public ControllerLink
{
public:
    bool transact(const QByteArray& request, QByteArray* reply) override
    {
        requests << request;
        *reply = "quarvo2 err 1 \"not connected\"";
        return true;
    }
    QList<QByteArray> requests;
};

QList<QWidget*> dialogsAlive()
{
    QList<QWidget*> dialogs;
    for (QWidget* widget : QApplication::allWidgets()) {
        if (qstrcmp(widget->metaObject()->className(), "CameraSettingsDlg") == 0)
            dialogs << widget;
    }
    return dialogs;
}

// Closes the modal dialog that the next exec() opens, as the operator's Escape would.
void closeNextModal()
{
    QTimer::singleShot(0, [] {
        if (QWidget* modal = QApplication::activeModalWidget())
            modal->close();
    });
}

} // namespace

class tst_CameraSettingsModule : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void metaData();
    void interfaceAndIdentity();
    void oneInstancePerProcess();
    void menuRecord();
    void secondCallBuildsNothing();
    void setParam_data();
    void setParam();
    void shutDownInOrder();
    void shutDownWithoutDialog();
    void dialogDestroyedWithItsWindow();
    void guiElementsBeforeSetParam();

private:
    ModuleInterface* module();
    QObject* moduleObject() { return m_loader.instance(); }

    QPluginLoader m_loader;
    RecordingLink m_link;
    IOManager m_channel{&m_link};
    BackendVersions m_versions{VersionInfo(2, 1, 0), VersionInfo(1, 27, 0), VersionInfo(2, 1, 0), "QUARVO"};
    BackendVersions m_briskbox{VersionInfo(2, 1, 0), VersionInfo(1, 27, 0), VersionInfo(2, 1, 0), "BRISKBOX"};
};

void tst_CameraSettingsModule::initTestCase()
{
    m_loader.setFileName(QString::fromUtf8(kPluginPath));
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
}

ModuleInterface* tst_CameraSettingsModule::module()
{
    auto* interface = qobject_cast<ModuleInterface*>(m_loader.instance());
    if (!interface)
        qWarning("no ModuleInterface: %s", qPrintable(m_loader.errorString()));
    return interface;
}

// Each case starts with a new module object: the host's shut-down, then the object is gone.
void tst_CameraSettingsModule::cleanup()
{
    if (QObject* instance = m_loader.instance()) {
        if (auto* interface = qobject_cast<ModuleInterface*>(instance)) {
            interface->about_to_exit_module();
            interface->exit_module();
        }
        delete instance;
    }
    QVERIFY2(dialogsAlive().isEmpty(), "a dialog was left behind");
    QVERIFY2(m_channel.receivers("CameraSettingsModule").isEmpty(), "a receiver was left registered");
    m_link.requests.clear();
}

void tst_CameraSettingsModule::metaData()
{
    const QJsonObject meta = m_loader.metaData();
    QStringList keys = meta.keys();
    // Qt 5.15's moc adds its architecture requirements, and leaves an empty "MetaData"
    // object out: a host reading it gets the same empty object either way.
    keys.removeOne(QStringLiteral("archreq"));
    keys.removeOne(QStringLiteral("MetaData"));
    keys.sort();
    QCOMPARE(keys, (QStringList{"IID", "className", "debug", "version"}));
    QCOMPARE(meta.value("IID").toString(), QStringLiteral("com.quarvo.Quarvo2.CameraSettingsModule"));
    QCOMPARE(meta.value("className").toString(), QStringLiteral("CameraSettingsModule"));
    const QJsonValue pluginData = meta.value("MetaData");
    QVERIFY2(pluginData.isUndefined() || pluginData.isObject(), "MetaData is an object");
    QVERIFY2(pluginData.toObject().isEmpty(), QJsonDocument(pluginData.toObject()).toJson().constData());
    // Qt writes the major and minor version it was built against, the patch as 0.
    QCOMPARE(meta.value("version").toInt(), (QT_VERSION_MAJOR << 16) | (QT_VERSION_MINOR << 8));
#ifdef QT_NO_DEBUG
    const bool debugBuild = false;
#else
    const bool debugBuild = true;
#endif
    QVERIFY(meta.value("debug").isBool());
    QCOMPARE(meta.value("debug").toBool(), debugBuild);
}

void tst_CameraSettingsModule::interfaceAndIdentity()
{
    QObject* instance = moduleObject();
    QVERIFY(instance);
    QCOMPARE(instance->metaObject()->className(), "CameraSettingsModule");
    QCOMPARE(instance->parent(), nullptr);
    // No signals or slots of its own.
    QCOMPARE(instance->metaObject()->methodCount(), instance->metaObject()->methodOffset());

    ModuleInterface* interface = module();
    QVERIFY(interface);
    QCOMPARE(instance->qt_metacast("ModuleInterface"), static_cast<void*>(interface));
    QCOMPARE(instance->qt_metacast(ModuleInterface_iid), static_cast<void*>(interface));
    QCOMPARE(instance->qt_metacast("CameraSettingsModule"), static_cast<void*>(instance));

    QCOMPARE(interface->get_module_name(), QStringLiteral("GUI Camera Settings"));
    QCOMPARE(interface->get_module_version(), QStringLiteral("v1.13.0"));
}

void tst_CameraSettingsModule::oneInstancePerProcess()
{
    QPointer<QObject> first = m_loader.instance();
    QVERIFY(first);
    first->setObjectName("first");
    QCOMPARE(m_loader.instance(), first.data());
    QPluginLoader second(QString::fromUtf8(kPluginPath));
    QCOMPARE(second.instance(), first.data());

    delete first.data();
    QVERIFY(first.isNull());
    QObject* next = m_loader.instance();
    QVERIFY2(next, "a new module after the first was destroyed");
    QVERIFY2(next->objectName().isEmpty(), "the new module is a fresh object");
    QCOMPARE(second.instance(), next);
}

void tst_CameraSettingsModule::menuRecord()
{
    ModuleInterface* interface = module();
    interface->set_param("CommandManager", QVariant::fromValue(&m_channel));
    interface->set_param("BackendVersions", QVariant::fromValue(&m_versions));
    const QList<_GuiElement*> elements = interface->get_gui_elements();
    QCOMPARE(elements.size(), 1);
    const GuiElement* element = elements.first();
    QVERIFY(element);
    QCOMPARE(element->menu_name, QStringLiteral("H&ardware"));
    QCOMPARE(element->menu_order_number, 200);
    QCOMPARE(element->menu_entry_order_number, 120);
    QCOMPARE(element->action_active_during_measurement, 0);
    QVERIFY(element->content);
    QCOMPARE(element->content->metaObject()->className(), "CameraSettingsDlg");
    QVERIFY2(element->content->isHidden(), "the dialog waits hidden until the entry is triggered");

    const QAction* action = element->menu_entry;
    QVERIFY(action);
    QCOMPARE(action->parent(), moduleObject());
    QCOMPARE(action->text(), QStringLiteral("C&ameras"));
    QCOMPARE(action->shortcut(), QKeySequence(Qt::Key_F7));
    QCOMPARE(action->statusTip(), QStringLiteral("Change camera settings"));
    QCOMPARE(action->whatsThis(), QStringLiteral("Change camera settings"));
}

void tst_CameraSettingsModule::secondCallBuildsNothing()
{
    ModuleInterface* interface = module();
    interface->set_param("CommandManager", QVariant::fromValue(&m_channel));
    const QList<_GuiElement*> first = interface->get_gui_elements();
    const QList<_GuiElement*> second = interface->get_gui_elements();
    QCOMPARE(second, first);
    QCOMPARE(second.first()->menu_entry, first.first()->menu_entry);
    QCOMPARE(second.first()->content, first.first()->content);
    QCOMPARE(dialogsAlive().size(), 1);
    QCOMPARE(moduleObject()->findChildren<QAction*>().size(), 1);
    QCOMPARE(m_channel.receivers("CameraSettingsModule").size(), 1);
}

void tst_CameraSettingsModule::setParam_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("registered");
    QTest::addColumn<bool>("parented");
    QTest::addColumn<bool>("panel");

    QTest::newRow("CommandManager") << "CommandManager" << "channel" << true << false << false;
    QTest::newRow("commandmanager, other case") << "commandmanager" << "channel" << false << false << false;
    QTest::newRow("CommandManager holding a number") << "CommandManager" << "number" << false << false << false;
    QTest::newRow("ModuleParent") << "ModuleParent" << "window" << false << true << false;
    QTest::newRow("ModuleParent holding no widget") << "ModuleParent" << "object" << false << false << false;
    QTest::newRow("BackendVersions BRISKBOX") << "BackendVersions" << "briskbox" << false << false << true;
    QTest::newRow("BackendVersion, unknown") << "BackendVersion" << "briskbox" << false << false << false;
    QTest::newRow("unknown key with a channel") << "Channel" << "channel" << false << false << false;
    QTest::newRow("ObserverMode") << "ObserverMode" << "true" << false << false << false;
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
    QVariant variant;
    if (value == "channel")
        variant = QVariant::fromValue(&m_channel);
    else if (value == "number")
        variant = 42;
    else if (value == "window")
        variant = QVariant::fromValue(&window);
    else if (value == "object")
        variant = QVariant::fromValue(&plainObject);
    else if (value == "briskbox")
        variant = QVariant::fromValue(&m_briskbox);
    else
        variant = true;

    ModuleInterface* interface = module();
    interface->set_param(key, variant);
    QWidget* dialog = interface->get_gui_elements().first()->content;
    QVERIFY(dialog);
    QCOMPARE(m_channel.receivers("CameraSettingsModule").size(), registered ? 1 : 0);
    QCOMPARE(dialog->parentWidget(), parented ? static_cast<QWidget*>(&window) : nullptr);
    auto* tabs = dialog->findChild<QTabWidget*>("tabWidget");
    QVERIFY(tabs);
    QCOMPARE(tabs->isHidden(), panel);
    // The window must outlive nothing of the module's: end before it goes.
    interface->about_to_exit_module();
    interface->exit_module();
}

void tst_CameraSettingsModule::shutDownInOrder()
{
    ModuleInterface* interface = module();
    interface->set_param("CommandManager", QVariant::fromValue(&m_channel));
    interface->set_param("BackendVersions", QVariant::fromValue(&m_versions));
    const GuiElement* element = interface->get_gui_elements().first();
    QPointer<QWidget> dialog = element->content;
    QPointer<QAction> action = element->menu_entry;
    QCOMPARE(m_channel.receivers("CameraSettingsModule").size(), 1);

    interface->about_to_exit_module();
    QVERIFY(m_channel.receivers("CameraSettingsModule").isEmpty());
    QCOMPARE(m_channel.deliverMessage("CameraSettingsModule", 0, "host", "ShowDynReflexSuppr"), 0);
    QVERIFY2(dialog, "about_to_exit_module only unregisters");

    interface->exit_module();
    QVERIFY2(dialog.isNull(), "exit_module deletes the dialog");
    QVERIFY2(action, "the action lives as long as the module");
    interface->exit_module();

    delete moduleObject();
    QVERIFY(action.isNull());
    QVERIFY2(m_link.requests.isEmpty(), "building and shutting down asks the controller nothing");
}

void tst_CameraSettingsModule::shutDownWithoutDialog()
{
    ModuleInterface* interface = module();
    interface->set_param("CommandManager", QVariant::fromValue(&m_channel));
    interface->about_to_exit_module();
    interface->exit_module();
    QVERIFY(dialogsAlive().isEmpty());
    // The list was only emptied, so the menu record is still built on request.
    QCOMPARE(interface->get_gui_elements().size(), 1);
    QCOMPARE(dialogsAlive().size(), 1);
}

void tst_CameraSettingsModule::dialogDestroyedWithItsWindow()
{
    ModuleInterface* interface = module();
    auto* window = new QMainWindow;
    interface->set_param("ModuleParent", QVariant::fromValue(window));
    QPointer<QWidget> dialog = interface->get_gui_elements().first()->content;
    QCOMPARE(dialog->parentWidget(), window);
    delete window;
    QVERIFY(dialog.isNull());
    // The host's window took the dialog with it; the module must not delete it again.
    interface->about_to_exit_module();
    interface->exit_module();
}

void tst_CameraSettingsModule::guiElementsBeforeSetParam()
{
    ModuleInterface* interface = module();
    const GuiElement* element = interface->get_gui_elements().first();
    QVERIFY(element->content);
    QVERIFY(m_channel.receivers("CameraSettingsModule").isEmpty());

    // Parameters given later do not reach the dialog that already exists.
    interface->set_param("CommandManager", QVariant::fromValue(&m_channel));
    interface->set_param("BackendVersions", QVariant::fromValue(&m_versions));
    closeNextModal();
    element->menu_entry->trigger();
    QVERIFY2(element->content->isHidden(), "the dialog was opened and closed again");
    closeNextModal();
    element->menu_entry->trigger();
    QVERIFY(m_link.requests.isEmpty());
    QVERIFY(m_channel.receivers("CameraSettingsModule").isEmpty());
}

QTEST_MAIN(tst_CameraSettingsModule)
#include "tst_camerasettingsmodule.moc"
