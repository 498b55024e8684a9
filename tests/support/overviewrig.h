#ifndef OVERVIEWRIG_H
#define OVERVIEWRIG_H

// The "All Cameras" page as the dialog builds it, without the dialog: the camera pages
// and their rows, a row for the scenario's missing camera, and the overview in the
// first tab on that table, checked by QAbstractItemModelTester.

#include "pagerig.h"

#include <QAbstractItemModelTester>

class OverviewWdg;

class OverviewRig : public PageRig
{
public:
    explicit OverviewRig(const QString& builtInScenario = QStringLiteral("default"));
    ~OverviewRig() override;

    // Loads the pages unless load() ran, builds the overview, shows it and marks the log.
    OverviewWdg* open(bool showDynReflexSuppr = false);

    template <typename T>
    T* widget(const char* name) const
    {
        return qobject_cast<T*>(overviewChild(name));
    }
    // The operator's press and release on a cell of the overview's table.
    void pressCell(int row, int column);
    // The operator opens the cell's editor, takes its top value or last item and confirms;
    // returns what it offered ("0..60", or the items joined by ", "), or nothing.
    QString editCell(int row, int column);

    OverviewWdg* overview = nullptr;

private:
    QWidget* overviewChild(const char* name) const;

    QAbstractItemModelTester m_tester;
};

#endif // OVERVIEWRIG_H
