// The camera table's change record: which cells were written through the model while
// recording was on, as the dialog asks on OK.
#include "ChangeTrackingStandardItemModel.h"

#include <QAbstractItemModelTester>
#include <QtTest>

class tst_ChangeTrackingStandardItemModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void writeRecordsExactlyItsCell_data();
    void writeRecordsExactlyItsCell();
    void recordingSwitch();
    void onlyWritesThroughTheModelCount();

private:
    QStringList changedCells() const
    {
        QStringList cells;
        for (int row = -1; row <= model->rowCount(); ++row)
            for (int column = -1; column <= model->columnCount(); ++column)
                if (model->isChanged(row, column))
                    cells << QString("%1,%2").arg(row).arg(column);
        return cells;
    }

    std::unique_ptr<ChangeTrackingStandardItemModel> model;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

void tst_ChangeTrackingStandardItemModel::init()
{
    tester.reset();
    model.reset(new ChangeTrackingStandardItemModel(3, 40));
    tester.reset(new QAbstractItemModelTester(model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest));
    QVERIFY(model->isChangeRecordingActive());
    QCOMPARE(changedCells(), QStringList());
}

void tst_ChangeTrackingStandardItemModel::writeRecordsExactlyItsCell_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("role");

    QTest::newRow("flash intensity, edit role") << 1 << 3 << QVariant(50) << int(Qt::EditRole);
    QTest::newRow("text, display role") << 0 << 17 << QVariant("Channel 2") << int(Qt::DisplayRole);
    QTest::newRow("alignment role") << 2 << 2 << QVariant(int(Qt::AlignCenter)) << int(Qt::TextAlignmentRole);
    QTest::newRow("last column") << 2 << 39 << QVariant(true) << int(Qt::EditRole);
}

void tst_ChangeTrackingStandardItemModel::writeRecordsExactlyItsCell()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QVariant, value);
    QFETCH(int, role);

    QVERIFY(model->setData(model->index(row, column), value, role));
    QCOMPARE(model->data(model->index(row, column), role), value);
    QCOMPARE(changedCells(), QStringList{QString("%1,%2").arg(row).arg(column)});
    // Written twice, reset once: nothing is left.
    model->setData(model->index(row, column), value, role);
    model->resetChanges();
    QCOMPARE(changedCells(), QStringList());
    QVERIFY2(model->isChangeRecordingActive(), "a reset leaves the switch as it was");
}

void tst_ChangeTrackingStandardItemModel::recordingSwitch()
{
    model->setData(model->index(1, 6), true);
    model->setChangeRecordingActive(false);
    QVERIFY(!model->isChangeRecordingActive());
    model->setData(model->index(2, 6), true);
    model->markChanged(0, 30);
    QCOMPARE(model->data(model->index(2, 6)).toBool(), true);
    // Switching off keeps what was recorded; a later write of the same value counts.
    QCOMPARE(changedCells(), QStringList{"1,6"});
    model->setChangeRecordingActive(true);
    model->setData(model->index(2, 6), true);
    model->markChanged(2, 30);
    QCOMPARE(changedCells(), (QStringList{"1,6", "2,6", "2,30"}));
}

void tst_ChangeTrackingStandardItemModel::onlyWritesThroughTheModelCount()
{
    model->setItem(0, 6, new QStandardItem);
    model->resetChanges();
    QStandardItem* item = model->item(0, 6);
    item->setCheckState(Qt::Checked);
    item->setData(true, Qt::EditRole);
    QCOMPARE(model->data(model->index(0, 6)).toBool(), true);
    // Past the last row the base class stores nothing, but the write was asked for.
    const QModelIndex outside = model->index(5, 3);
    QVERIFY(!model->setData(outside, 1));
    QCOMPARE(changedCells(), QStringList{"-1,-1"});
    // The dialog's loading: all rows removed, rows inserted and filled.
    model->resetChanges();
    while (model->removeRow(0)) {
    }
    model->insertRow(0);
    model->setData(model->index(0, 3), 99);
    QCOMPARE(changedCells(), QStringList{"0,3"});
}

QTEST_GUILESS_MAIN(tst_ChangeTrackingStandardItemModel)
#include "tst_changetrackingstandarditemmodel.moc"
