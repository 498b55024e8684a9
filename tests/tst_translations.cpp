// The module and the stand-in host in German: the host's translators load the
// catalogues beside the plug-in folder for a locale, the dialog opened from the host's
// menu shows German labels, and the texts the module sets untranslated stay English,
// the details button's among them, which the module reads back to know its state.
#include "cameratablecolumns.h"
#include "controllersession.h"
#include "hosttranslations.h"
#include "hostwindow.h"
#include "modaldriver.h"

#include <QtTest>
#include <QtWidgets>

namespace {

QString pluginDir()
{
    return QStringLiteral(QUARVO_PLUGIN_DIR);
}

QString textOf(const QWidget* widget)
{
    if (auto* button = qobject_cast<const QAbstractButton*>(widget))
        return button->text();
    if (auto* label = qobject_cast<const QLabel*>(widget))
        return label->text();
    return QStringLiteral("(no widget)");
}

} // namespace

class tst_Translations : public QObject
{
    Q_OBJECT

private slots:
    void cataloguesForTheLocale_data();
    void cataloguesForTheLocale();
    void dialogInGerman();
};

void tst_Translations::cataloguesForTheLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("loaded");
    const QStringList german{"camerasettings_de.qm", "quarvo2-host_de.qm"};
    QTest::newRow("German") << "de" << german;
    QTest::newRow("Austrian German takes German") << "de_AT" << german;
    QTest::newRow("English needs none") << "en_US" << QStringList();
}

void tst_Translations::cataloguesForTheLocale()
{
    QFETCH(QString, locale);
    QFETCH(QStringList, loaded);
    HostTranslations translations;
    // Qt's own catalogue comes with it where the system has one.
    const QStringList ours = translations.install(QLocale(locale), HostTranslations::folderBeside(pluginDir()))
                                 .filter(QRegularExpression(QStringLiteral("^(?!qt)")));
    QCOMPARE(ours, loaded);
}

void tst_Translations::dialogInGerman()
{
    HostTranslations translations;
    translations.install(QLocale(QStringLiteral("de")), HostTranslations::folderBeside(pluginDir()));
    ControllerSession session;
    HostWindow window(&session, pluginDir());
    QCOMPARE(window.loadModules(), 1);

    QMenu* hardware = window.findMenu(QStringLiteral("H&ardware"));
    QVERIFY(hardware);
    QAction* cameras = hardware->actions().first();
    QCOMPARE(cameras->text(), QStringLiteral("K&ameras"));
    QCOMPARE(cameras->statusTip(), QStringLiteral("Kameraeinstellungen ändern"));
    QCOMPARE(window.findChild<QMenu*>(QStringLiteral("helpMenu"))->title(), QStringLiteral("&Hilfe"));

    QStringList seen;
    ModalDriver modals;
    modals.whenModal<QDialog>([&](QDialog* dialog) {
        seen << dialog->windowTitle();
        for (const char* name : {"btnOk", "btnCancel", "checkBox_flash_intensity"})
            seen << textOf(dialog->findChild<QWidget*>(QLatin1String(name)));
        auto* tabs = dialog->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
        seen << tabs->tabText(0) << tabs->tabText(1);
        seen << textOf(tabs->widget(1)->findChild<QLabel*>(QStringLiteral("label_markerThreshold")));
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
                                 << "OK" << "Abbrechen" << "&Globale Blitzintensität "
                                 // The overview's tab is named by the module as it is.
                                 << "All Cameras" << "4711"
                                 << "Markersch&welle"
                                 << "Blitzintensität"
                                 // Channel names are the module's own, read back as they are.
                                 << "Channel 1"
                                 << "Show &details" << "Hide &details");
}

QTEST_MAIN(tst_Translations)
#include "tst_translations.moc"
