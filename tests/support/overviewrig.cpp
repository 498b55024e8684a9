#include "overviewrig.h"

#include <CameraSettingsDlg.h>
#include <OverviewWdg.h>
#include <camerasettingshelpers.h>
#include <cameratablecolumns.h>

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

QStringList OverviewRig::sets() const
{
    QStringList lines;
    for (const QString& line : requests()) {
        if (line.startsWith(QLatin1String("quarvo2 set ")))
            lines << line.mid(12);
    }
    return lines;
}
