#ifndef PAGERIG_H
#define PAGERIG_H

// Camera pages as the dialog builds them, without the dialog: one page per present camera
// in a host dialog's tabs, each given its row of the shared table by the module's own row fill.

#include "controllerfixture.h"

#include <CameraWdg.h>
#include <ChangeTrackingStandardItemModel.h>

#include <QDialog>
#include <QVector>

#include <initializer_list>

class QAbstractItemModel;
class QTabWidget;

// What the operator sees of a control, as one text ("hidden", or "disabled"/"enabled" and
// what it shows), so that one comparison checks a whole group of controls.
QString look(QWidget* control);
// For each "name: ..." of expected, "name: " and the look of that control under root,
// so that a table row names only the controls it is about.
QStringList looksOf(QWidget* root, const QStringList& expected);

class PageRig : public ControllerFixture
{
public:
    explicit PageRig(const QString& builtInScenario = QStringLiteral("default"));

    // A page and a row per present camera, with their details shown or not; marks the log.
    void load(bool details = false);
    // Shows the host dialog and waits until it is on screen.
    void show();

    template <typename T>
    T* widget(int page, const char* name) const
    {
        return qobject_cast<T*>(childOf(pages.at(page), name));
    }
    // For each "N/object: ..." or "object: ..." (page 0) of expected, the same with the
    // look of that control of page N, so that a row names only the controls it is about.
    QStringList looks(const QStringList& expected) const;
    // The text of a cell (a double with six digits), and of cells of a row.
    QString cellText(int row, int column) const;
    QStringList cells(int row, std::initializer_list<int> columns) const;

    QDialog host;
    QTabWidget* tabs;
    ChangeTrackingStandardItemModel table;
    QVector<CameraWdg*> pages;

protected:
    // A named widget under parent; a missing one ends the suite, as a misspelt name would.
    static QWidget* childOf(QObject* parent, const char* name);
};

// The text of a cell of table (a double with six digits), and of a column's first rows (all: -1).
QString cellText(const QAbstractItemModel* table, int row, int column);
QStringList cellTexts(const QAbstractItemModel* table, int column, int rows = -1);

// The operator's move on a control: a button is clicked (a check box only where its state
// differs from value), a combo box is set to the index value (without one, its last entry)
// and activated, a slider or spin box is set to value.
void operate(QWidget* control, const QVariant& value = QVariant());

#endif // PAGERIG_H
