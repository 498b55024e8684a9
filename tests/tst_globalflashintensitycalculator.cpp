// One flash slider for all cameras: slider position to per-camera flash values,
// proportional to each camera's maximum, and back.
#include "cameratablecolumns.h"
#include "globalflashintensitycalculator.h"

#include <QStandardItemModel>
#include <QtTest>

namespace {

// A camera table holding just the two columns the calculator uses.
void fillCameras(QStandardItemModel* model, const QVector<int>& maxFlash, const QVector<int>& flash)
{
    model->setColumnCount(CameraTable::ColumnCount);
    model->setRowCount(maxFlash.size());
    for (int row = 0; row < maxFlash.size(); ++row) {
        model->setData(model->index(row, CameraTable::MaxFlash), maxFlash.at(row));
        model->setData(model->index(row, CameraTable::FlashIntensity), flash.value(row));
    }
}

QVector<int> flashColumn(const QStandardItemModel& model)
{
    QVector<int> values;
    for (int row = 0; row < model.rowCount(); ++row)
        values << model.data(model.index(row, CameraTable::FlashIntensity)).toInt();
    return values;
}

} // namespace

class tst_GlobalFlashIntensityCalculator : public QObject
{
    Q_OBJECT

private slots:
    void positionToFlashValues_data();
    void positionToFlashValues();
    void flashValuesToPosition_data();
    void flashValuesToPosition();
    void tableFollowsTheLastInit();
};

void tst_GlobalFlashIntensityCalculator::positionToFlashValues_data()
{
    QTest::addColumn<QVector<int>>("maxFlash");
    QTest::addColumn<int>("position");
    QTest::addColumn<QVector<int>>("expected");

    const QVector<int> maxima{100, 255};
    QTest::newRow("position 0") << maxima << 0 << QVector<int>{0, 0};
    QTest::newRow("position 100 rounds 126.87 up") << maxima << 100 << QVector<int>{50, 127};
    QTest::newRow("position 200 is 200/201 of the maximum") << maxima << 200 << QVector<int>{100, 254};
    QTest::newRow("position 250 writes the top row") << maxima << 250 << QVector<int>{100, 254};
    QTest::newRow("position 1: 1.5 and 0.998 truncate") << QVector<int>{201, 100} << 1 << QVector<int>{1, 0};
    QTest::newRow("maximum 0 stays 0") << QVector<int>{0, 40} << 150 << QVector<int>{0, 30};
    QTest::newRow("no camera") << QVector<int>{} << 100 << QVector<int>{};
}

void tst_GlobalFlashIntensityCalculator::positionToFlashValues()
{
    QFETCH(QVector<int>, maxFlash);
    QFETCH(int, position);
    QFETCH(QVector<int>, expected);

    QStandardItemModel model;
    fillCameras(&model, maxFlash, QVector<int>(maxFlash.size(), 7));
    GlobalFlashIntensityCalculator calculator;
    calculator.initValues(&model);
    QVector<int> notified; // rows, in order
    connect(&model, &QStandardItemModel::itemChanged, this, [&notified](QStandardItem* item) { notified << item->row(); });
    calculator.setCamFlashValues(position, &model);
    QCOMPARE(flashColumn(model), expected);
    QCOMPARE(notified.size(), expected.size());
    // What was written maps back to a position: the lowest one with the same values.
    const int back = calculator.getSliderPosition(&model);
    QVERIFY2(back >= 0 && back <= qMin(position, 200), qPrintable(QString::number(back)));
    calculator.setCamFlashValues(back, &model);
    QCOMPARE(flashColumn(model), expected);
}

void tst_GlobalFlashIntensityCalculator::flashValuesToPosition_data()
{
    QTest::addColumn<QVector<int>>("maxFlash");
    QTest::addColumn<QVector<int>>("flash");
    QTest::addColumn<int>("position");

    QTest::newRow("50 and 127 are position 100") << QVector<int>{100, 255} << QVector<int>{50, 127} << 100;
    QTest::newRow("50 and 128 are position 101") << QVector<int>{100, 255} << QVector<int>{50, 128} << 101;
    QTest::newRow("50 and 129 match no position") << QVector<int>{100, 255} << QVector<int>{50, 129} << -1;
    QTest::newRow("all off is position 0") << QVector<int>{100, 255} << QVector<int>{0, 0} << 0;
    QTest::newRow("top") << QVector<int>{100, 255} << QVector<int>{100, 254} << 200;
    QTest::newRow("full maximum is not on the slider") << QVector<int>{100, 255} << QVector<int>{100, 255} << -1;
    QTest::newRow("small maximum: lowest of equal rows") << QVector<int>{2} << QVector<int>{1} << 51;
    QTest::newRow("flash on a camera with maximum 0") << QVector<int>{0, 100} << QVector<int>{1, 0} << -1;
    QTest::newRow("no camera") << QVector<int>{} << QVector<int>{} << 0;
}

void tst_GlobalFlashIntensityCalculator::flashValuesToPosition()
{
    QFETCH(QVector<int>, maxFlash);
    QFETCH(QVector<int>, flash);
    QFETCH(int, position);

    QStandardItemModel model;
    fillCameras(&model, maxFlash, flash);
    GlobalFlashIntensityCalculator calculator;
    calculator.initValues(&model);
    QCOMPARE(calculator.getSliderPosition(&model), position);
}

void tst_GlobalFlashIntensityCalculator::tableFollowsTheLastInit()
{
    QStandardItemModel model;
    fillCameras(&model, {100}, {0});
    GlobalFlashIntensityCalculator calculator;
    calculator.initValues(&model);
    // A camera added after initValues is not covered: only the first one is written.
    fillCameras(&model, {100, 200}, {0, 3});
    calculator.setCamFlashValues(200, &model);
    QCOMPARE(flashColumn(model), (QVector<int>{100, 3}));
    calculator.initValues(&model);
    calculator.setCamFlashValues(200, &model);
    QCOMPARE(flashColumn(model), (QVector<int>{100, 199}));
    // Rows removed since initValues are not written past the model's end; cells that
    // are no number read as 0.
    model.removeRow(1);
    model.setData(model.index(0, CameraTable::MaxFlash), "lots");
    calculator.setCamFlashValues(0, &model);
    QCOMPARE(flashColumn(model), (QVector<int>{0}));
    calculator.initValues(&model);
    QCOMPARE(calculator.getSliderPosition(&model), 0);
}

QTEST_GUILESS_MAIN(tst_GlobalFlashIntensityCalculator)
#include "tst_globalflashintensitycalculator.moc"
