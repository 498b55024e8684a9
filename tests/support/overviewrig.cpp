#include "overviewrig.h"

#include <CameraSettingsDlg.h>
#include <OverviewWdg.h>
#include <camerasettingshelpers.h>
#include <cameratablecolumns.h>

#include <QComboBox>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QtTest>

namespace Col = CameraTable;

OverviewRig::OverviewRig(const QString& builtInScenario)
    : PageRig(builtInScenario), m_tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest)
{
}

OverviewRig::~OverviewRig() = default;

OverviewWdg* OverviewRig::open(bool showDynReflexSuppr)
{
    if (pages.isEmpty())
        load();
    // A missing camera's row holds what the dialog fills for one: the first columns.
    if (!controller()->state().missingCameras.isEmpty()) {
        const int row = table.rowCount();
        table.setChangeRecordingActive(false);
        table.insertRow(row);
        const QVariant missing[] = {CameraSettings::cameraId(row + 1), QStringLiteral("LUMACAMKPE"), QStringLiteral("5120"), 0};
        for (int column = Col::Camera; column <= Col::FlashIntensity; ++column)
            table.setData(table.index(row, column), missing[column]);
        table.setData(table.index(row, Col::Missing), true);
        table.setChangeRecordingActive(true);
    }

    overview = new OverviewWdg(channel(), &host, versions());
    overview->setModel(&table);
    overview->setVisibleDynReflexSuppr(showDynReflexSuppr);
    overview->update_from_module(pages);
    overview->showDetails(true);
    tabs->insertTab(0, overview, QStringLiteral("All Cameras"));
    tabs->setCurrentIndex(0);
    show();
    mark();
    return overview;
}

QWidget* OverviewRig::overviewChild(const char* name) const
{
    return childOf(overview, name);
}

void OverviewRig::pressCell(int row, int column)
{
    auto* view = widget<QTableView>("tableView");
    const QPoint centre = view->visualRect(table.index(row, column)).center();
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
}

QString OverviewRig::editCell(int row, int column)
{
    auto* view = widget<QTableView>("tableView");
    // The table opens a cell's editor when the operator makes it the current one.
    view->setCurrentIndex(table.index(row, column));
    QWidget* editor = view->indexWidget(table.index(row, column));
    QStringList offer;
    if (auto* spin = qobject_cast<QSpinBox*>(editor)) {
        offer << QStringLiteral("%1..%2").arg(spin->minimum()).arg(spin->maximum());
        spin->setValue(spin->maximum());
    } else if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        // The item the editor opened on is marked: it must be the cell's own.
        for (int i = 0; i < combo->count(); ++i)
            offer << (i == combo->currentIndex() ? QLatin1Char('*') : QLatin1Char(' ')) + combo->itemText(i);
        combo->setCurrentIndex(combo->count() - 1);
    }
    if (editor) {
        // What the delegate asks of the view when the operator confirms: keep and close.
        QAbstractItemDelegate* delegate = view->itemDelegate(table.index(row, column));
        emit delegate->commitData(editor);
        emit delegate->closeEditor(editor);
    }
    return offer.join(QLatin1String(", "));
}
