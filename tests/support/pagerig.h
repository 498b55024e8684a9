#ifndef PAGERIG_H
#define PAGERIG_H

// Camera pages as the dialog builds them, without the dialog: a host dialog with a tab
// widget, the shared camera table, and one page per present camera, loaded from the
// simulated controller and given its table row by the module's own row fill.

#include "controllerfixture.h"

#include <ChangeTrackingStandardItemModel.h>

#include <QByteArrayList>
#include <QDialog>
#include <QVector>

class CameraWdg;
class QTabWidget;

class PageRig : public ControllerFixture
{
public:
    explicit PageRig(const QString& builtInScenario = QStringLiteral("default"));
    ~PageRig() override;

    // A page and a row per present camera, with their details shown or not; the log is
    // marked afterwards.
    void load(bool details = false);
    // The page of camera cam + 1 loaded alone, without a table row, log not marked.
    CameraWdg* loadPage(int cam);
    // Shows the host dialog and waits until it is on screen.
    void show();

    template <typename T>
    T* widget(int page, const char* name) const
    {
        return qobject_cast<T*>(pageChild(page, name));
    }
    QVariant cell(int row, int column) const;
    // Writes a cell as loading does: not recorded as a change.
    void setCellQuietly(int row, int column, const QVariant& value);

    QDialog host;
    QTabWidget* tabs;
    ChangeTrackingStandardItemModel table;
    QVector<CameraWdg*> pages;

protected:
    // A named widget under parent; a missing one ends the suite, as a misspelt name would.
    static QWidget* childOf(QObject* parent, const char* name);

private:
    QWidget* pageChild(int page, const char* name) const;
};

// Scenario changes before loading, one a line: "fail <glob>" makes matching requests
// fail, "answer <path>=<value>" answers the get of path with value, anything else is a
// poke ("camera flash_intensity c01 50").
void applyChanges(ControllerFixture& fixture, const QByteArrayList& changes);

#endif // PAGERIG_H
