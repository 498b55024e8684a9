#include "pagerig.h"

#include "displaytimers.h"

#include <CameraSettingsDlg.h>
#include <CameraWdg.h>
#include <cameratablecolumns.h>

#include <QTabWidget>
#include <QVBoxLayout>
#include <QtTest>

PageRig::PageRig(const QString& builtInScenario)
    : ControllerFixture(builtInScenario), tabs(new QTabWidget(&host)), table(0, CameraTable::ColumnCount)
{
    new QVBoxLayout(&host);
    host.layout()->addWidget(tabs);
}

PageRig::~PageRig() = default;

QWidget* PageRig::childOf(QObject* parent, const char* name)
{
    QWidget* found = parent->findChild<QWidget*>(QLatin1String(name));
    if (!found)
        qFatal("no widget %s", name);
    return found;
}

QWidget* PageRig::pageChild(int page, const char* name) const
{
    return childOf(pages.at(page), name);
}

CameraWdg* PageRig::loadPage(int cam)
{
    auto* page = new CameraWdg(channel(), &host, versions());
    page->setModel(&table);
    page->update_from_module(cam);
    return page;
}

void PageRig::load(bool details)
{
    table.setChangeRecordingActive(false);
    int cameras = 0;
    channel()->getInt(&cameras, "camera number_of_cameras");
    for (int i = 0; i < cameras; ++i) {
        CameraWdg* page = loadPage(i);
        page->showDetails(details);
        pages << page;
        tabs->addTab(page, page->getSerial());
        table.insertRow(i);
        CameraSettingsDlg::addCameraRow(&table, page, i);
    }
    table.setChangeRecordingActive(true);
    mark();
}

void PageRig::show()
{
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
}

QVariant PageRig::cell(int row, int column) const
{
    return table.data(table.index(row, column));
}

void PageRig::setCellQuietly(int row, int column, const QVariant& value)
{
    table.setChangeRecordingActive(false);
    table.setData(table.index(row, column), value);
    table.setChangeRecordingActive(true);
}

void applyChanges(ControllerFixture& fixture, const QByteArrayList& changes)
{
    for (const QByteArray& change : changes) {
        if (change.startsWith("fail "))
            fixture.fail(QString::fromLatin1(change.mid(5)));
        else if (change.startsWith("answer ")) {
            const int equals = change.indexOf('=');
            fixture.answerGet(QString::fromLatin1(change.mid(7, equals - 7)), change.mid(equals + 1));
        }
        else
            fixture.poke(change);
    }
}
