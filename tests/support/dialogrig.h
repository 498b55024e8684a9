#ifndef DIALOGRIG_H
#define DIALOGRIG_H

// The camera settings dialog as the stand-in host runs it: the real plug-in from the plug-in
// folder, its menu entry triggered, the modal dialog driven by the modal driver, and its
// camera table checked by QAbstractItemModelTester throughout.

#include "controllerfixture.h"
#include "dialogscenarios.h"
#include "displaytimers.h"
#include "modaldriver.h"

#include <QTabWidget>

#include <functional>
#include <memory>

class ModuleHost;
class QAbstractItemModelTester;
class QAction;
class QDialog;
class QMainWindow;
class QStandardItemModel;
class QWidget;

class DialogRig : public ControllerFixture
{
public:
    // The system the host connects to: scenario JSON, or the built-in default one, with
    // changes as applyChanges() takes them.
    explicit DialogRig(const QByteArray& scenarioJson = QByteArray(), const QByteArrayList& changes = {});
    ~DialogRig() override;

    // The host loads the module, hands it its context and takes its menu entry; what
    // building the dialog asks counts from the mark set here.
    bool start();
    // Triggers the menu entry; fn runs inside the open dialog. A dialog fn left open is
    // cancelled.
    void open(const std::function<void()>& fn = {});
    int lastResult() const { return m_result; }
    // Clicks a button of the dialog by its object name.
    void click(const char* name);

    ModalDriver& modals() { return m_modals; }
    QDialog* dialog() const { return m_dialog; }
    QMainWindow* window() const { return m_window.get(); }
    QStandardItemModel* model() const;
    QTabWidget* tabs() const;
    QWidget* widget(const char* name) const;
    template <typename T> T* widget(const char* name) const { return qobject_cast<T*>(widget(name)); }
    // A widget of the page in tab `tab`.
    template <typename T> T* pageWidget(int tab, const char* name) const
    {
        QWidget* page = tabs() ? tabs()->widget(tab) : nullptr;
        return page ? qobject_cast<T*>(page->findChild<QWidget*>(QLatin1String(name))) : nullptr;
    }
    // Writes a cell as the overview's editors do: through the model, recorded.
    void edit(int row, int column, const QVariant& value);
    QVariant cell(int row, int column) const;

private:

    ModalDriver m_modals;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<ModuleHost> m_host;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    QDialog* m_dialog = nullptr;
    QAction* m_action = nullptr;
    int m_result = -1;
};

#endif // DIALOGRIG_H
