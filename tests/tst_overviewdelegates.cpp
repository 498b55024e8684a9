// The overview table's cell editors, used the way the table view uses them: an editor is
// created for a cell, loaded from it, and written back into the camera table.
#include "ChangeTrackingStandardItemModel.h"
#include "SpinBoxDelegate.h"
#include "checkboxdelegate.h"
#include "cameratablecolumns.h"
#include "comboboxdelegate.h"
#include "combocammodedelegate.h"
#include "controllerfixture.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QSpinBox>
#include <QStyleOptionViewItem>
#include <QtTest>

#include <memory>

namespace Col = CameraTable;

class tst_OverviewDelegates : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void flashEditor_data();
    void flashEditor();
    void checkBoxOnlyWhereTheCameraHasIt();
    void syncGroupEditor();
    void cameraModeEditor_data();
    void cameraModeEditor();

private:
    QModelIndex cell(int row, int column) const { return m_table->index(row, column); }
    void set(int row, int column, const QVariant& value) { m_table->setData(cell(row, column), value); }
    template <typename T> std::unique_ptr<T> editor(QItemDelegate& delegate, int row, int column)
    {
        return std::unique_ptr<T>(qobject_cast<T*>(delegate.createEditor(&m_parent, m_option, cell(row, column))));
    }

    std::unique_ptr<ChangeTrackingStandardItemModel> m_table;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    QWidget m_parent;
    QStyleOptionViewItem m_option;
};

void tst_OverviewDelegates::init()
{
    m_tester.reset();
    m_table.reset(new ChangeTrackingStandardItemModel(2, Col::ColumnCount));
    m_tester.reset(new QAbstractItemModelTester(m_table.get(), QAbstractItemModelTester::FailureReportingMode::QtTest));
    m_option.rect = QRect(0, 0, 40, 24);
}

void tst_OverviewDelegates::flashEditor_data()
{
    QTest::addColumn<int>("maxFlash");
    QTest::addColumn<int>("flash");
    QTest::newRow("no flash allowed: no editor") << 0 << 0;
    QTest::newRow("full range") << 255 << 100;
    QTest::newRow("low maximum") << 1 << 1;
}

void tst_OverviewDelegates::flashEditor()
{
    QFETCH(int, maxFlash);
    QFETCH(int, flash);
    set(1, Col::MaxFlash, maxFlash);
    set(1, Col::FlashIntensity, flash);
    m_table->resetChanges();

    SpinBoxDelegate delegate;
    auto spin = editor<QSpinBox>(delegate, 1, Col::FlashIntensity);
    QCOMPARE(spin != nullptr, maxFlash > 0);
    if (!spin)
        return;
    delegate.setEditorData(spin.get(), cell(1, Col::FlashIntensity));
    QCOMPARE(QString("%1..%2: %3").arg(spin->minimum()).arg(spin->maximum()).arg(spin->value()),
             QString("0..%1: %2").arg(maxFlash).arg(flash));
    spin->setValue(maxFlash + 10); // the spin box holds the operator at the camera's maximum
    delegate.setModelData(spin.get(), m_table.get(), cell(1, Col::FlashIntensity));
    QCOMPARE(m_table->data(cell(1, Col::FlashIntensity)).toInt(), maxFlash);
    QVERIFY(m_table->isChanged(1, Col::FlashIntensity));
}

void tst_OverviewDelegates::checkBoxOnlyWhereTheCameraHasIt()
{
    CheckboxDelegate delegate;
    delegate.setModel(m_table.get());
    set(0, Col::HasModFlash, 1);
    set(1, Col::HasStaticReflexSuppr, 0);
    // Dynamic reflex suppression is shown for every camera; the cells are toggled by a press.
    QVERIFY(delegate.isShowCheckbox(cell(0, Col::ModFlash)) && !delegate.isShowCheckbox(cell(1, Col::ModFlash)));
    QVERIFY(!delegate.isShowCheckbox(cell(1, Col::StaticReflexSuppr)) && delegate.isShowCheckbox(cell(1, Col::DynReflexSuppr)));
    QVERIFY(!editor<QWidget>(delegate, 0, Col::ModFlash));
}

void tst_OverviewDelegates::syncGroupEditor()
{
    set(0, Col::SyncGroup, QStringLiteral("Channel 2"));
    ComboBoxDelegate delegate;
    QVERIFY2(!editor<QComboBox>(delegate, 1, Col::SyncGroup), "no sync group, no editor");
    auto combo = editor<QComboBox>(delegate, 0, Col::SyncGroup);
    QCOMPARE(combo->count(), 3);
    QCOMPARE(combo->itemText(2), QStringLiteral("Channel 3"));
    delegate.setEditorData(combo.get(), cell(0, Col::SyncGroup));
    QCOMPARE(combo->currentText(), QStringLiteral("Channel 2"));
    combo->setCurrentIndex(2);
    delegate.setModelData(combo.get(), m_table.get(), cell(0, Col::SyncGroup));
    QCOMPARE(m_table->data(cell(0, Col::SyncGroup)).toString(), QStringLiteral("Channel 3"));

    // A channel beyond the offered three selects nothing and leaves the cell as it is.
    set(0, Col::SyncGroup, QStringLiteral("Channel 7"));
    delegate.setEditorData(combo.get(), cell(0, Col::SyncGroup));
    QCOMPARE(combo->currentIndex(), -1);
    delegate.setModelData(combo.get(), m_table.get(), cell(0, Col::SyncGroup));
    QCOMPARE(m_table->data(cell(0, Col::SyncGroup)).toString(), QStringLiteral("Channel 7"));
}

void tst_OverviewDelegates::cameraModeEditor_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QStringList>("modes");

    // The default system's first camera has three modes and runs in the first.
    QTest::newRow("three modes") << "" << QStringList{"m01 Standard 180 Hz", "m02 High speed 300 Hz", "m03 Full frame 60 Hz"};
    QTest::newRow("a description refused") << get("camera mode_desc c01 m02")
                                           << QStringList{"m01 Standard 180 Hz", "m03 Full frame 60 Hz"};
    // An editor without a choice writes nothing.
    QTest::newRow("the count refused") << get("camera number_of_modes c01") << QStringList{};
}

void tst_OverviewDelegates::cameraModeEditor()
{
    QFETCH(QString, failing);
    QFETCH(QStringList, modes);

    ControllerFixture fixture;
    if (!failing.isEmpty())
        fixture.fail(failing);
    set(0, Col::CameraMode, QStringLiteral("Standard 180 Hz"));
    set(0, Col::CameraModeData, QStringLiteral("m01"));
    m_table->resetChanges();
    ComboCamModeDelegate delegate(nullptr, fixture.channel());
    QVERIFY(!editor<QComboBox>(delegate, 1, Col::CameraMode));
    QVERIFY2(fixture.requests().isEmpty(), "an empty cell asks the controller nothing");

    auto combo = editor<QComboBox>(delegate, 0, Col::CameraMode);
    QStringList offered;
    for (int i = 0; i < combo->count(); ++i)
        offered << combo->itemData(i).toString() + ' ' + combo->itemText(i);
    QCOMPARE(offered, modes);
    delegate.setEditorData(combo.get(), cell(0, Col::CameraMode));
    QCOMPARE(combo->currentIndex(), modes.isEmpty() ? -1 : 0);
    combo->setCurrentIndex(modes.size() - 1);
    delegate.setModelData(combo.get(), m_table.get(), cell(0, Col::CameraMode));
    const QString chosen = modes.isEmpty() ? QStringLiteral("m01 Standard 180 Hz") : modes.last();
    QCOMPARE(m_table->data(cell(0, Col::CameraModeData)).toString() + ' ' + m_table->data(cell(0, Col::CameraMode)).toString(),
             chosen);
    QCOMPARE(m_table->isChanged(0, Col::CameraModeData), !modes.isEmpty());
}

QTEST_MAIN(tst_OverviewDelegates)
#include "tst_overviewdelegates.moc"
