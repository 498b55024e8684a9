#include "dialogrig.h"

#include <modulehost.h>

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QAction>
#include <QDialog>
#include <QMainWindow>
#include <QPointer>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QtTest>

DialogRig::DialogRig(const QByteArray& scenarioJson, const QByteArrayList& changes)
{
    if (!scenarioJson.isEmpty())
        useScenarioJson(scenarioJson);
    applyChanges(*this, changes);
}

DialogRig::~DialogRig()
{
    m_tester.reset();
    if (m_host)
        m_host->shutDown();
}

bool DialogRig::start()
{
    mark();
    m_window.reset(new QMainWindow);
    m_host.reset(new ModuleHost);
    ModuleHost::Context context;
    context.commandManager = channel();
    context.moduleParent = m_window.get();
    context.backendVersions = versions();
    if (m_host->loadModules(QStringLiteral(QUARVO_PLUGIN_DIR), context) != 1 || m_host->guiElements().size() != 1)
        return false;
    const _GuiElement* element = m_host->guiElements().first();
    m_dialog = qobject_cast<QDialog*>(element->content);
    m_action = element->menu_entry;
    if (!m_dialog || !m_action)
        return false;
    QObject::connect(m_dialog, &QDialog::finished, [this](int result) { m_result = result; });
    if (QStandardItemModel* table = model())
        m_tester.reset(new QAbstractItemModelTester(table, QAbstractItemModelTester::FailureReportingMode::QtTest));
    return true;
}

void DialogRig::open(const std::function<void()>& fn)
{
    m_result = -1;
    QPointer<QDialog> dialog = m_dialog;
    m_modals.whenModalWidget([dialog](QWidget* modal) { return modal == dialog; }, [dialog, fn](QWidget*) {
        if (fn)
            fn();
        if (dialog && dialog->isVisible())
            dialog->reject();
    });
    m_action->trigger();
}

void DialogRig::click(const char* name)
{
    if (auto* button = widget<QAbstractButton>(name))
        button->click();
    else
        QTest::qFail(qPrintable(QStringLiteral("no button ") + QLatin1String(name)), __FILE__, __LINE__);
}

QStandardItemModel* DialogRig::model() const
{
    // The camera table is the dialog's own; the pages keep small models of their own.
    return m_dialog ? m_dialog->findChild<QStandardItemModel*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

QTabWidget* DialogRig::tabs() const
{
    return widget<QTabWidget>("tabWidget");
}

QWidget* DialogRig::widget(const char* name) const
{
    return m_dialog ? m_dialog->findChild<QWidget*>(QLatin1String(name)) : nullptr;
}

void DialogRig::edit(int row, int column, const QVariant& value)
{
    QStandardItemModel* table = model();
    table->setData(table->index(row, column), value, Qt::EditRole);
}

QVariant DialogRig::cell(int row, int column) const
{
    QStandardItemModel* table = model();
    return table->data(table->index(row, column));
}
