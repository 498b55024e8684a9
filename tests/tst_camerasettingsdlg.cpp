// The camera settings dialog's frame, driven as the host drives it: the plug-in loaded
// by QPluginLoader, the menu entry triggered, the modal dialog handled from a timer,
// and the simulated controller's command log read for what the dialog asked.
#include "BackendVersions.h"
#include "HostMessageSink.h"
#include "IOManager.h"
#include "ModuleInterface.h"
#include "faultrule.h"
#include "inprocesslink.h"
#include "simulatedcontroller.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QMainWindow>
#include <QPluginLoader>
#include <QPointer>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

namespace {

const char kPluginPath[] = QUARVO_PLUGIN_DIR "/libCameraSettingsModule.so";
const QByteArray kLockQuery("quarvo2 get config is_changeable");
const QByteArray kShowSyncGroups("quarvo2 set camera display_show_syncgroup all yes");

const char* const kPanelWidgets[] = {
    "label_lct_flash_intensity", "label_lct_no_flash", "slider_lct_flash_intensity",
    "slider_lct_max_flash", "spinBox_lct_flash_intensity", "label_lct_space",
    "checkBox_lct_modulated_flash", "checkBox_staticReflexSuppression",
};
const char* const kPanelControls[] = {
    "slider_lct_flash_intensity", "spinBox_lct_flash_intensity",
    "checkBox_staticReflexSuppression", "checkBox_lct_modulated_flash",
};

class RecordingSink : public HostMessageSink
{
public:
    void postMessage(const char* type, const char* source, int level, const char* text) override
    {
        messages << QStringList{type, source, QString::number(level), QString::fromUtf8(text)};
    }
    QList<QStringList> messages;
};

QImage iconImage(const QIcon& icon)
{
    return icon.pixmap(QSize(16, 16)).toImage().convertToFormat(QImage::Format_ARGB32);
}

// What the operator saw while the dialog was open.
struct Seen
{
    bool opened = false;
    bool okEnabled = false;
    bool cancelEnabled = false;
    bool allPagesEnabled = false;
    bool anyPageEnabled = false;
    QImage icon;
    QMap<QString, bool> visible;
};

} // namespace

class tst_CameraSettingsDlg : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void lockQueryAndSyncDisplayFollowTheProtocol_data();
    void lockQueryAndSyncDisplayFollowTheProtocol();
    void configurationLock_data();
    void configurationLock();
    void lockIsAskedAgainAtEachOpening();
    void variantBySystemModel_data();
    void variantBySystemModel();
    void cameraTableHeaders();
    void hostMessages_data();
    void hostMessages();
    void closingTheDialog_data();
    void closingTheDialog();
    void formWidgets_data();
    void formWidgets();
    void formLayoutAndProperties();
    void tabOrder();
    void sliderAndSpinBoxStayInStep();

private:
    // The host's start-up: controller, channel, versions, then the module's menu record.
    void startHost(const VersionInfo& protocol, const QString& systemModel);
    // Runs fn on the modal dialog once exec() has shown it; closes it if fn did not.
    void onModal(std::function<void(QDialog*)> fn);
    Seen openFromMenu();
    template<typename T> T* widget(const char* name) const { return m_dialog->findChild<T*>(name); }

    QPluginLoader m_loader;
    std::unique_ptr<SimulatedController> m_controller;
    std::unique_ptr<InProcessLink> m_link;
    RecordingSink m_sink;
    std::unique_ptr<IOManager> m_channel;
    std::unique_ptr<BackendVersions> m_versions;
    std::unique_ptr<QMainWindow> m_window;
    ModuleInterface* m_module = nullptr;
    QPointer<QDialog> m_dialog;
    QAction* m_action = nullptr;
};

void tst_CameraSettingsDlg::initTestCase()
{
    m_loader.setFileName(QString::fromUtf8(kPluginPath));
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    QVERIFY2(QFile::exists(":/lock.png"), "the plug-in brings its lock icon");
}

void tst_CameraSettingsDlg::startHost(const VersionInfo& protocol, const QString& systemModel)
{
    m_controller.reset(new SimulatedController);
    if (systemModel == "BRISKBOX")
        QVERIFY(m_controller->loadBuiltInScenario("briskbox"));
    m_controller->setProtocolVersion(protocol);
    m_controller->setSystemModel(systemModel);
    m_link.reset(new InProcessLink(m_controller.get()));
    m_channel.reset(new IOManager(m_link.get(), &m_sink));
    m_versions.reset(new BackendVersions(m_controller->backendVersions()));
    QCOMPARE(m_versions->protocol(), protocol);
    m_window.reset(new QMainWindow);
    QPixmap magenta(16, 16);
    magenta.fill(Qt::magenta);
    m_window->setWindowIcon(QIcon(magenta));

    m_module = qobject_cast<ModuleInterface*>(m_loader.instance());
    QVERIFY(m_module);
    m_module->set_param("CommandManager", QVariant::fromValue(m_channel.get()));
    m_module->set_param("ModuleParent", QVariant::fromValue(m_window.get()));
    m_module->set_param("BackendVersions", QVariant::fromValue(m_versions.get()));
    m_module->set_param("ObserverMode", false);
    const QList<_GuiElement*> elements = m_module->get_gui_elements();
    QCOMPARE(elements.size(), 1);
    m_dialog = qobject_cast<QDialog*>(elements.first()->content);
    m_action = elements.first()->menu_entry;
    QVERIFY(m_dialog && m_action);
    if (systemModel == "BRISKBOX") {
        // The all-in-one panel makes its cameras agree when it is built; that is its own suite's subject.
        m_controller->clearLog();
    } else {
        QVERIFY2(m_controller->requests().isEmpty(), "building the dialog asks the controller nothing yet");
    }
}

void tst_CameraSettingsDlg::cleanup()
{
    if (QObject* instance = m_loader.instance()) {
        if (auto* module = qobject_cast<ModuleInterface*>(instance)) {
            module->about_to_exit_module();
            module->exit_module();
        }
        delete instance;
    }
    QVERIFY(m_dialog.isNull());
    if (m_channel)
        QVERIFY2(m_channel->receivers("CameraSettingsModule").isEmpty(), "the receiver was unregistered");
    m_window.reset();
    m_versions.reset();
    m_channel.reset();
    m_link.reset();
    m_controller.reset();
    m_sink.messages.clear();
    m_module = nullptr;
    m_action = nullptr;
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a window was left behind");
}

// exec() shows the dialog before it runs its event loop, so a zero timer finds it; a few
// retries cover a slow start, and the dialog is closed in any case so no loop is left running.
static void runOnModal(std::function<void(QDialog*)> fn, int triesLeft)
{
    auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!modal) {
        if (triesLeft > 0)
            QTimer::singleShot(10, [fn, triesLeft] { runOnModal(fn, triesLeft - 1); });
        return;
    }
    fn(modal);
    if (modal->isVisible())
        modal->reject();
}

void tst_CameraSettingsDlg::onModal(std::function<void(QDialog*)> fn)
{
    QTimer::singleShot(0, [fn] { runOnModal(fn, 100); });
}

Seen tst_CameraSettingsDlg::openFromMenu()
{
    Seen seen;
    onModal([&seen, this](QDialog* modal) {
        seen.opened = modal == m_dialog.data();
        seen.okEnabled = widget<QPushButton>("btnOk")->isEnabled();
        seen.cancelEnabled = widget<QPushButton>("btnCancel")->isEnabled();
        const QTabWidget* tabs = widget<QTabWidget>("tabWidget");
        seen.allPagesEnabled = tabs->count() > 0;
        for (int i = 0; i < tabs->count(); ++i) {
            seen.allPagesEnabled = seen.allPagesEnabled && tabs->widget(i)->isEnabled();
            seen.anyPageEnabled = seen.anyPageEnabled || tabs->widget(i)->isEnabled();
        }
        seen.icon = iconImage(modal->windowIcon());
        for (QWidget* child : modal->findChildren<QWidget*>()) {
            if (!child->objectName().isEmpty())
                seen.visible.insert(child->objectName(), child->isVisible());
        }
        widget<QPushButton>("btnCancel")->click();
    });
    m_action->trigger();
    return seen;
}

void tst_CameraSettingsDlg::lockQueryAndSyncDisplayFollowTheProtocol_data()
{
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::addColumn<int>("patch");
    QTest::addColumn<bool>("lockQueried");
    QTest::addColumn<bool>("syncShown");

    QTest::newRow("1.8.99") << 1 << 8 << 99 << false << false;
    QTest::newRow("1.9.-1") << 1 << 9 << -1 << true << false;
    QTest::newRow("1.9.0") << 1 << 9 << 0 << true << false;
    QTest::newRow("1.26.99") << 1 << 26 << 99 << true << false;
    QTest::newRow("1.27.-1") << 1 << 27 << -1 << true << true;
    QTest::newRow("1.27.0") << 1 << 27 << 0 << true << true;
    QTest::newRow("2.0.0") << 2 << 0 << 0 << true << true;
}

void tst_CameraSettingsDlg::lockQueryAndSyncDisplayFollowTheProtocol()
{
    QFETCH(int, major);
    QFETCH(int, minor);
    QFETCH(int, patch);
    QFETCH(bool, lockQueried);
    QFETCH(bool, syncShown);

    startHost(VersionInfo(major, minor, patch), "QUARVO");
    const Seen seen = openFromMenu();
    QVERIFY(seen.opened);

    const QList<QByteArray> requests = m_controller->requests();
    QCOMPARE(requests.count(kLockQuery), lockQueried ? 1 : 0);
    QCOMPARE(requests.count(kShowSyncGroups), syncShown ? 1 : 0);
    if (lockQueried && syncShown) {
        QVERIFY2(requests.indexOf(kShowSyncGroups) < requests.indexOf(kLockQuery),
                 "the cameras show their sync groups while loading, before the lock is asked");
    }
    QVERIFY2(seen.okEnabled && seen.allPagesEnabled, "an unlocked controller leaves everything usable");
    QVERIFY2(m_sink.messages.isEmpty(), "opening reports nothing to the operator");
}

void tst_CameraSettingsDlg::configurationLock_data()
{
    QTest::addColumn<QString>("systemModel");
    QTest::addColumn<QString>("controller");
    QTest::addColumn<bool>("locked");

    QTest::newRow("locked") << "QUARVO" << "state:no" << true;
    QTest::newRow("changeable") << "QUARVO" << "state:yes" << false;
    QTest::newRow("No in other case") << "QUARVO" << "reply:quarvo2 set config is_changeable No" << false;
    QTest::newRow("no with a blank") << "QUARVO" << "reply:quarvo2 set config is_changeable no " << false;
    QTest::newRow("no in quotes") << "QUARVO" << "reply:quarvo2 set config is_changeable \"no\"" << false;
    QTest::newRow("empty value") << "QUARVO" << "reply:quarvo2 set config is_changeable" << false;
    QTest::newRow("garbage") << "QUARVO" << "reply:\x01\xff no" << false;
    QTest::newRow("refused") << "QUARVO" << "fail" << false;
    QTest::newRow("connection dropped") << "QUARVO" << "drop" << false;
    QTest::newRow("BRISKBOX locked") << "BRISKBOX" << "state:no" << true;
    QTest::newRow("BRISKBOX changeable") << "BRISKBOX" << "state:yes" << false;
}

void tst_CameraSettingsDlg::configurationLock()
{
    QFETCH(QString, systemModel);
    QFETCH(QString, controller);
    QFETCH(bool, locked);

    startHost(VersionInfo(1, 27, 0), systemModel);
    const QString how = controller.section(':', 0, 0);
    const QByteArray what = controller.section(':', 1).toLatin1();
    FaultRule rule;
    rule.match = QString::fromLatin1(kLockQuery);
    if (how == "state") {
        QVERIFY(m_controller->poke("config is_changeable " + what));
    } else if (how == "reply") {
        rule.action = FaultRule::Reply;
        rule.text = what;
        m_controller->addFault(rule);
    } else {
        rule.action = how == "fail" ? FaultRule::Fail : FaultRule::Drop;
        m_controller->addFault(rule);
    }

    const Seen seen = openFromMenu();
    QVERIFY(seen.opened);
    QCOMPARE(m_controller->requests().count(kLockQuery), 1);
    QCOMPARE(seen.okEnabled, !locked);
    QVERIFY2(seen.cancelEnabled, "Cancel stays usable to leave a locked dialog");
    const QImage lockIcon = iconImage(QIcon(":/lock.png"));
    const QImage parentIcon = iconImage(m_window->windowIcon());
    QVERIFY(lockIcon != parentIcon);
    QVERIFY2(seen.icon == (locked ? lockIcon : parentIcon), locked ? "lock icon" : "the parent's icon");

    if (systemModel == "BRISKBOX") {
        for (const char* name : kPanelControls)
            QVERIFY2(widget<QWidget>(name)->isEnabled() == !locked, name);
    } else {
        QCOMPARE(seen.allPagesEnabled, !locked);
        QCOMPARE(seen.anyPageEnabled, !locked);
    }
    // A locked controller refuses the camera pages' write-back of a display setting at
    // loading, which the pages report; the dialog itself reports nothing.
    for (const QStringList& message : qAsConst(m_sink.messages))
        QCOMPARE(message.last(), locked ? QStringLiteral("Error: Unable to set camera display mode") : QString());
}

void tst_CameraSettingsDlg::lockIsAskedAgainAtEachOpening()
{
    startHost(VersionInfo(1, 27, 0), "QUARVO");
    QVERIFY(m_controller->poke("config is_changeable no"));
    Seen seen = openFromMenu();
    QVERIFY(!seen.okEnabled && !seen.anyPageEnabled);
    QVERIFY(seen.icon == iconImage(QIcon(":/lock.png")));

    QVERIFY(m_controller->poke("config is_changeable yes"));
    seen = openFromMenu();
    QVERIFY(seen.okEnabled && seen.allPagesEnabled);
    QVERIFY(seen.icon == iconImage(m_window->windowIcon()));
    QCOMPARE(m_controller->requests().count(kLockQuery), 2);
}

void tst_CameraSettingsDlg::variantBySystemModel_data()
{
    QTest::addColumn<QString>("systemModel");
    QTest::addColumn<bool>("panel");

    QTest::newRow("BRISKBOX") << "BRISKBOX" << true;
    QTest::newRow("briskbox") << "briskbox" << false;
    QTest::newRow("QUARVO") << "QUARVO" << false;
}

void tst_CameraSettingsDlg::variantBySystemModel()
{
    QFETCH(QString, systemModel);
    QFETCH(bool, panel);

    startHost(VersionInfo(1, 27, 0), systemModel);
    const Seen seen = openFromMenu();
    QVERIFY(seen.opened);
    for (const char* name : kPanelWidgets)
        QVERIFY2(seen.visible.value(name) == panel, name);
    QCOMPARE(seen.visible.value("tabWidget"), !panel);
    QCOMPARE(seen.visible.value("pushButton_showDetails"), !panel);
    QVERIFY(seen.visible.value("btnOk") && seen.visible.value("btnCancel") && seen.visible.value("line"));

    QCOMPARE(m_dialog->isSizeGripEnabled(), !panel);
    if (panel) {
        QCOMPARE(m_dialog->minimumSize(), QSize(530, 220));
        QCOMPARE(m_dialog->maximumSize(), QSize(530, 220));
    }
    const auto models = m_dialog->findChildren<QStandardItemModel*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(models.size(), panel ? 0 : 1);
}

void tst_CameraSettingsDlg::cameraTableHeaders()
{
    startHost(VersionInfo(1, 27, 0), "QUARVO");
    const auto* model = m_dialog->findChild<QStandardItemModel*>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(model);
    QCOMPARE(model->metaObject()->className(), "ChangeTrackingStandardItemModel");
    QCOMPARE(model->parent(), m_dialog.data());
    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(model->columnCount(), 40);

    const QStringList expected{
        "Camera", "Model", "Serial", "Flash intensity", "MaxFlash", "HasModFlash", "Mod. flash",
        "Static reflex suppr.", "Dyn. reflex suppr.", "CameraOrientation", "Has static reflex suppr.",
        "Has dyn. reflex suppr.", "Marker mode", "Marker max number", "", "Marker max size",
        "Marker min size", "Sync group", "Cascaded System", "", "Marker size limit", "Chipsize",
        "Has camera mode", "Camera mode data", "Camera mode", "Has display intensity",
        "Display intensity", "Has display mode", "Display mode", "Room cal", "Missing",
        "Has marker threshold", "Marker threshold", "Sensor gain", "Has sensor gain",
        "Has exposure time", "Exposure time", "Auto exposure time", "Has ring display intensity",
        "Ring display intensity"};
    QCOMPARE(expected.size(), 40);
    for (int column = 0; column < 40; ++column) {
        const QVariant header = model->headerData(column, Qt::Horizontal, Qt::EditRole);
        if (expected.at(column).isEmpty())
            QVERIFY2(!header.isValid(), qPrintable(QString("column %1 has no header").arg(column)));
        else
            QCOMPARE(header.toString(), expected.at(column));
    }
}

void tst_CameraSettingsDlg::hostMessages_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("nullText");
    QTest::addColumn<bool>("shown");

    QTest::newRow("ShowDynReflexSuppr") << QByteArray("ShowDynReflexSuppr") << false << true;
    QTest::newRow("other case") << QByteArray("showdynreflexsuppr") << false << false;
    QTest::newRow("with a blank") << QByteArray("ShowDynReflexSuppr ") << false << false;
    QTest::newRow("other message") << QByteArray("HideEverything") << false << false;
    QTest::newRow("empty") << QByteArray("") << false << false;
    QTest::newRow("null text") << QByteArray() << true << false;
}

void tst_CameraSettingsDlg::hostMessages()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, nullText);
    QFETCH(bool, shown);

    startHost(VersionInfo(1, 27, 0), "QUARVO");
    QObject* receiver = nullptr;
    for (QObject* child : m_dialog->findChildren<QObject*>()) {
        if (qstrcmp(child->metaObject()->className(), "CameraSettingsMessagereceiver") == 0)
            receiver = child;
    }
    QVERIFY2(receiver, "the dialog owns its receiver");
    QCOMPARE(m_channel->receivers("CameraSettingsModule").size(), 1);
    QSignalSpy spy(receiver, SIGNAL(sendShowDynReflexSuppr(bool)));

    // The flag before is the opposite, so that a message that changed nothing would show.
    m_channel->deliverMessage("CameraSettingsModule", 7, "host", shown ? "other" : "ShowDynReflexSuppr");
    QCOMPARE(m_channel->deliverMessage("CameraSettingsModule", 7, "host", nullText ? nullptr : text.constData()), 1);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(0).at(0).toBool(), !shown);
    QCOMPARE(spy.at(1).at(0).toBool(), shown);
    QCOMPARE(m_channel->deliverMessage("OtherModule", 7, "host", "ShowDynReflexSuppr"), 0);
    QCOMPARE(spy.count(), 2);
    QVERIFY2(m_controller->requests().isEmpty(), "a host message asks the controller nothing");
}

void tst_CameraSettingsDlg::closingTheDialog_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<bool>("locked");
    QTest::addColumn<int>("result");

    QTest::newRow("OK") << "ok" << false << 1;
    QTest::newRow("Enter clicks OK") << "enter" << false << 1;
    QTest::newRow("Cancel") << "cancel" << false << 0;
    QTest::newRow("Escape") << "escape" << false << 0;
    QTest::newRow("window closed") << "close" << false << 0;
    QTest::newRow("Enter on a locked dialog, then Escape") << "enter" << true << 0;
    QTest::newRow("Cancel on a locked dialog") << "cancel" << true << 0;
}

void tst_CameraSettingsDlg::closingTheDialog()
{
    QFETCH(QString, how);
    QFETCH(bool, locked);
    QFETCH(int, result);

    startHost(VersionInfo(1, 27, 0), "QUARVO");
    if (locked)
        QVERIFY(m_controller->poke("config is_changeable no"));
    bool stillOpen = false;
    onModal([&](QDialog* modal) {
        if (how == "ok")
            widget<QPushButton>("btnOk")->click();
        else if (how == "cancel")
            widget<QPushButton>("btnCancel")->click();
        else if (how == "enter")
            QTest::keyClick(modal, Qt::Key_Return);
        else if (how == "escape")
            QTest::keyClick(modal, Qt::Key_Escape);
        else
            modal->close();
        stillOpen = modal->isVisible();
        if (stillOpen)
            QTest::keyClick(modal, Qt::Key_Escape);
    });
    int code = -1;
    QVERIFY(QMetaObject::invokeMethod(m_dialog, "update_and_exec", Qt::DirectConnection, Q_RETURN_ARG(int, code)));
    QCOMPARE(code, result);
    QCOMPARE(stillOpen, locked && how == "enter");
    QVERIFY(m_dialog->isHidden());
}

void tst_CameraSettingsDlg::formWidgets_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("whatsThis");

    QTest::newRow("tabWidget") << "tabWidget" << "QTabWidget" << "" << "";
    QTest::newRow("flash label") << "label_lct_flash_intensity" << "QLabel" << "&flash intensity:" << "";
    QTest::newRow("no flash") << "label_lct_no_flash" << "QLabel" << "no flash" << "";
    QTest::newRow("slider") << "slider_lct_flash_intensity" << "QSlider" << "" << "Adjust the flash intensity";
    QTest::newRow("max flash label") << "slider_lct_max_flash" << "QLabel" << "max. flash" << "";
    QTest::newRow("spin box") << "spinBox_lct_flash_intensity" << "QSpinBox" << "" << "Adjust the flash intensity";
    QTest::newRow("static reflex") << "checkBox_staticReflexSuppression" << "QCheckBox" << "&static reflex suppression" << "";
    QTest::newRow("modulated flash") << "checkBox_lct_modulated_flash" << "QCheckBox" << "&modulated flash" << "Use modulated flash";
    QTest::newRow("gap") << "label_lct_space" << "QLabel" << "" << "";
    QTest::newRow("line") << "line" << "QFrame" << "" << "";
    QTest::newRow("details") << "pushButton_showDetails" << "QPushButton" << "Show &details" << "Show or hide the details of camera info";
    QTest::newRow("OK") << "btnOk" << "QPushButton" << "OK" << "Accept changes and close dialog";
    QTest::newRow("Cancel") << "btnCancel" << "QPushButton" << "Cancel" << "Discard changes and close dialog";
}

void tst_CameraSettingsDlg::formWidgets()
{
    QFETCH(QString, name);
    QFETCH(QString, className);
    QFETCH(QString, text);
    QFETCH(QString, whatsThis);

    startHost(VersionInfo(1, 27, 0), "QUARVO");
    QWidget* found = widget<QWidget>(name.toLatin1().constData());
    QVERIFY2(found, qPrintable(name));
    QCOMPARE(QString(found->metaObject()->className()), className);
    QCOMPARE(found->whatsThis(), whatsThis);
    if (auto* label = qobject_cast<QLabel*>(found))
        QCOMPARE(label->text(), text);
    else if (auto* button = qobject_cast<QAbstractButton*>(found))
        QCOMPARE(button->text(), text);
}

void tst_CameraSettingsDlg::formLayoutAndProperties()
{
    startHost(VersionInfo(1, 27, 0), "QUARVO");
    QCOMPARE(m_dialog->objectName(), QStringLiteral("CameraSettingsDialog"));
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Camera Settings"));
    QCOMPARE(m_dialog->whatsThis(), QStringLiteral("Camera settings dialog"));
    QCOMPARE(m_dialog->size(), QSize(525, 288));
    QCOMPARE(m_dialog->sizePolicy().horizontalPolicy(), QSizePolicy::MinimumExpanding);
    QCOMPARE(m_dialog->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    QVERIFY(m_dialog->isSizeGripEnabled());
    QCOMPARE(m_dialog->parentWidget(), m_window.get());

    // Top to bottom: tabs, gap, flash row, static reflex box, modulated flash row, gap
    // label, line, button row.
    auto* layout = m_dialog->findChild<QVBoxLayout*>("verticalLayout");
    QVERIFY(layout);
    QCOMPARE(m_dialog->layout(), layout);
    QStringList order;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (item->widget())
            order << item->widget()->objectName();
        else if (item->layout())
            order << item->layout()->objectName();
        else if (QSpacerItem* spacer = item->spacerItem())
            order << QString("spacer %1x%2").arg(spacer->sizeHint().width()).arg(spacer->sizeHint().height());
    }
    QCOMPARE(order, (QStringList{"tabWidget", "spacer 20x16", "horizontalLayout_3",
                                 "checkBox_staticReflexSuppression", "horizontalLayout_lct_modulated_flash",
                                 "label_lct_space", "line", "horizontalLayout"}));
    auto* buttons = m_dialog->findChild<QHBoxLayout*>("horizontalLayout");
    QCOMPARE(buttons->itemAt(0)->widget(), widget<QWidget>("pushButton_showDetails"));
    QVERIFY(buttons->itemAt(1)->spacerItem());
    QCOMPARE(buttons->itemAt(2)->widget(), widget<QWidget>("btnOk"));
    QCOMPARE(buttons->itemAt(3)->widget(), widget<QWidget>("btnCancel"));

    auto* tabs = widget<QTabWidget>("tabWidget");
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->tabText(0), QStringLiteral("Tab 1"));
    QCOMPARE(tabs->tabText(1), QStringLiteral("Tab 2"));
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(tabs->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);

    auto* label = widget<QLabel>("label_lct_flash_intensity");
    QCOMPARE(label->buddy(), widget<QWidget>("spinBox_lct_flash_intensity"));
    auto* slider = widget<QSlider>("slider_lct_flash_intensity");
    QCOMPARE(slider->orientation(), Qt::Horizontal);
    QCOMPARE(slider->pageStep(), 1);
    QCOMPARE(slider->minimumSize(), QSize(100, 0));
    QCOMPARE(widget<QLabel>("label_lct_space")->maximumHeight(), 10);
    auto* line = widget<QFrame>("line");
    QCOMPARE(line->frameShape(), QFrame::HLine);
    QCOMPARE(line->frameShadow(), QFrame::Sunken);

    auto* details = widget<QPushButton>("pushButton_showDetails");
    auto* ok = widget<QPushButton>("btnOk");
    auto* cancel = widget<QPushButton>("btnCancel");
    QCOMPARE(details->shortcut(), QKeySequence("Alt+D"));
    QVERIFY(ok->isDefault());
    QVERIFY(!details->isDefault() && !details->autoDefault());
    QVERIFY(!cancel->isDefault() && !cancel->autoDefault());
}

void tst_CameraSettingsDlg::tabOrder()
{
    startHost(VersionInfo(1, 27, 0), "QUARVO");
    const QStringList expected{"tabWidget", "slider_lct_flash_intensity", "spinBox_lct_flash_intensity",
                               "checkBox_staticReflexSuppression", "checkBox_lct_modulated_flash",
                               "pushButton_showDetails", "btnOk", "btnCancel"};
    QStringList chain;
    QWidget* start = widget<QWidget>("tabWidget");
    QWidget* current = start;
    do {
        if (expected.contains(current->objectName()) && !chain.contains(current->objectName()))
            chain << current->objectName();
        current = current->nextInFocusChain();
    } while (current && current != start);
    QCOMPARE(chain, expected);
}

void tst_CameraSettingsDlg::sliderAndSpinBoxStayInStep()
{
    startHost(VersionInfo(1, 27, 0), "BRISKBOX");
    auto* slider = widget<QSlider>("slider_lct_flash_intensity");
    auto* spin = widget<QSpinBox>("spinBox_lct_flash_intensity");
    QSignalSpy sliderMoved(slider, &QSlider::valueChanged);
    QSignalSpy spinChanged(spin, QOverload<int>::of(&QSpinBox::valueChanged));

    spin->setValue(7);
    QCOMPARE(slider->value(), 7);
    QCOMPARE(sliderMoved.count(), 1);
    QCOMPARE(spinChanged.count(), 1);

    slider->setValue(3);
    QCOMPARE(spin->value(), 3);
    QCOMPARE(sliderMoved.count(), 2);
    QCOMPARE(spinChanged.count(), 2);
    QVERIFY2(m_controller->requests().isEmpty(), "moving the flash controls sends nothing");
}

QTEST_MAIN(tst_CameraSettingsDlg)
#include "tst_camerasettingsdlg.moc"
