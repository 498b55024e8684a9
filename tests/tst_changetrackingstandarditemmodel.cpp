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
    void cleanup();

    void freshModelRecordsAndHoldsNothing();
    void writeRecordsExactlyItsCell_data();
    void writeRecordsExactlyItsCell();
    void writesWhileRecordingOffAreNotRecorded();
    void switchingRecordingOffKeepsEarlierEntries();
    void repeatedWritesAreAllUndoneByReset();
    void directItemWritesAreNotRecorded();
    void failedStoreIsStillRecorded();
    void markChangedObeysTheSwitch();
    void slotsReachableByName();
    void rowsAndColumnsUnderTheTester();

private:
    ChangeTrackingStandardItemModel* model = nullptr;
    QAbstractItemModelTester* tester = nullptr;
};

void tst_ChangeTrackingStandardItemModel::init()
{
    model = new ChangeTrackingStandardItemModel(3, 40, this);
    tester = new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest, model);
}

void tst_ChangeTrackingStandardItemModel::cleanup()
{
    delete model;
    model = nullptr;
    tester = nullptr;
}

void tst_ChangeTrackingStandardItemModel::freshModelRecordsAndHoldsNothing()
{
    QVERIFY(model->isChangeRecordingActive());
    QCOMPARE(model->rowCount(), 3);
    QCOMPARE(model->columnCount(), 40);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 40; ++column)
            QVERIFY2(!model->isChanged(row, column), qPrintable(QString("cell %1,%2").arg(row).arg(column)));

    ChangeTrackingStandardItemModel empty;
    QVERIFY(empty.isChangeRecordingActive());
    QCOMPARE(empty.rowCount(), 0);
    QVERIFY(!empty.isChanged(0, 0));
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
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 40; ++c)
            QVERIFY2(model->isChanged(r, c) == (r == row && c == column),
                     qPrintable(QString("cell %1,%2").arg(r).arg(c)));
    // Outside the table nothing was written, so nothing counts as changed there.
    QVERIFY(!model->isChanged(row, 40));
    QVERIFY(!model->isChanged(3, column));
    QVERIFY(!model->isChanged(-1, column));
}

void tst_ChangeTrackingStandardItemModel::writesWhileRecordingOffAreNotRecorded()
{
    model->setChangeRecordingActive(false);
    QVERIFY(!model->isChangeRecordingActive());
    QVERIFY(model->setData(model->index(0, 3), 80));
    QCOMPARE(model->data(model->index(0, 3)).toInt(), 80);
    QVERIFY(!model->isChanged(0, 3));

    // A later write of the same value with recording on still counts.
    model->setChangeRecordingActive(true);
    QVERIFY(model->setData(model->index(0, 3), 80));
    QVERIFY(model->isChanged(0, 3));
}

void tst_ChangeTrackingStandardItemModel::switchingRecordingOffKeepsEarlierEntries()
{
    model->setData(model->index(1, 6), true);
    model->setChangeRecordingActive(false);
    model->setData(model->index(2, 6), true);
    QVERIFY(model->isChanged(1, 6));
    QVERIFY(!model->isChanged(2, 6));
    model->setChangeRecordingActive(true);
    QVERIFY(model->isChanged(1, 6));
}

void tst_ChangeTrackingStandardItemModel::repeatedWritesAreAllUndoneByReset()
{
    model->setData(model->index(1, 13), 20);
    model->setData(model->index(1, 13), 20);
    model->setData(model->index(0, 13), 10);
    QVERIFY(model->isChanged(1, 13));
    QVERIFY(model->isChanged(0, 13));

    model->resetChanges();
    QVERIFY(!model->isChanged(1, 13));
    QVERIFY(!model->isChanged(0, 13));
    QVERIFY2(model->isChangeRecordingActive(), "a reset leaves the switch as it was");
}

void tst_ChangeTrackingStandardItemModel::directItemWritesAreNotRecorded()
{
    model->setItem(0, 6, new QStandardItem);
    model->resetChanges();
    QStandardItem* item = model->item(0, 6);
    item->setCheckState(Qt::Checked);
    item->setFlags(Qt::ItemIsEnabled);
    item->setData(true, Qt::EditRole);
    QCOMPARE(model->data(model->index(0, 6)).toBool(), true);
    QVERIFY(!model->isChanged(0, 6));
}

void tst_ChangeTrackingStandardItemModel::failedStoreIsStillRecorded()
{
    // Past the last row the base class stores nothing, but the write was asked for.
    const QModelIndex outside = model->index(5, 3);
    QVERIFY(!outside.isValid());
    QVERIFY(!model->setData(outside, 1));
    QVERIFY(model->isChanged(outside.row(), outside.column()));
    QVERIFY(!model->isChanged(5, 3));
}

void tst_ChangeTrackingStandardItemModel::markChangedObeysTheSwitch()
{
    model->markChanged(2, 30);
    QVERIFY(model->isChanged(2, 30));
    model->setChangeRecordingActive(false);
    model->markChanged(1, 30);
    QVERIFY(!model->isChanged(1, 30));
    // The map is keyed by column: (row 30, column 2) is another cell.
    QVERIFY(!model->isChanged(30, 2));
}

void tst_ChangeTrackingStandardItemModel::slotsReachableByName()
{
    const QMetaObject* meta = model->metaObject();
    QCOMPARE(meta->methodCount() - meta->methodOffset(), 2);
    QCOMPARE(meta->method(meta->methodOffset()).methodSignature(), QByteArray("markChanged(int,int)"));
    QCOMPARE(meta->method(meta->methodOffset() + 1).methodSignature(), QByteArray("resetChanges()"));

    model->setData(model->index(0, 0), "c01");
    QVERIFY(model->isChanged(0, 0));
    QMetaObject::invokeMethod(model, "resetChanges");
    QVERIFY(!model->isChanged(0, 0));
}

void tst_ChangeTrackingStandardItemModel::rowsAndColumnsUnderTheTester()
{
    // The dialog's loading: recording off, all rows removed, rows inserted and filled.
    model->setChangeRecordingActive(false);
    while (model->removeRow(0)) {
    }
    QCOMPARE(model->rowCount(), 0);
    for (int row = 0; row < 4; ++row) {
        model->insertRow(model->rowCount());
        model->setData(model->index(row, 0), QString("c%1").arg(row + 1, 2, 10, QChar('0')));
        model->setData(model->index(row, 3), row * 10);
    }
    model->setChangeRecordingActive(true);
    QSignalSpy dataChanged(model, &QAbstractItemModel::dataChanged);
    model->setData(model->index(3, 3), 99);
    QCOMPARE(dataChanged.count(), 1);
    QVERIFY(model->isChanged(3, 3));
    QVERIFY(!model->isChanged(2, 3));
    model->removeRows(1, 2);
    QCOMPARE(model->rowCount(), 2);
}

QTEST_GUILESS_MAIN(tst_ChangeTrackingStandardItemModel)
#include "tst_changetrackingstandarditemmodel.moc"
