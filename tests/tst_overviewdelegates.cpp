// The overview table's cell editors, used the way the table view uses them: an editor is
// created for a cell, loaded from it, and written back into the camera table.

#include "ChangeTrackingStandardItemModel.h"
#include "SpinBoxDelegate.h"
#include "cameratablecolumns.h"
#include "checkboxdelegate.h"
#include "comboboxdelegate.h"
#include "combocammodedelegate.h"

#include <IOManager.h>
#include <inprocesslink.h>
#include <simulatedcontroller.h>

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QImage>
#include <QPainter>
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
    void cleanup();

    void flashEditor_data();
    void flashEditor();
    void checkBoxPainting_data();
    void checkBoxPainting();
    void syncGroupEditor();
    void cameraModeEditor();
    void cameraModeEditorWithFailedDescription();

private:
    QModelIndex cell(int row, int column) const { return m_table->index(row, column); }
    void set(int row, int column, const QVariant& value) { m_table->setData(cell(row, column), value); }
    // What the delegate paints into an empty, white cell.
    QImage painted(QItemDelegate& delegate, const QModelIndex& index) const;

    std::unique_ptr<ChangeTrackingStandardItemModel> m_table;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    QWidget m_parent;
    QStyleOptionViewItem m_option;
};

void tst_OverviewDelegates::init()
{
    m_table.reset(new ChangeTrackingStandardItemModel(2, Col::ColumnCount));
    m_tester.reset(new QAbstractItemModelTester(m_table.get(), QAbstractItemModelTester::FailureReportingMode::QtTest));
    m_option.rect = QRect(0, 0, 40, 24);
}

void tst_OverviewDelegates::cleanup()
{
    m_tester.reset();
    m_table.reset();
}

QImage tst_OverviewDelegates::painted(QItemDelegate& delegate, const QModelIndex& index) const
{
    QImage image(m_option.rect.size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    delegate.paint(&painter, m_option, index);
    return image;
}

void tst_OverviewDelegates::flashEditor_data()
{
    QTest::addColumn<int>("maxFlash");
    QTest::addColumn<int>("flash");
    QTest::addColumn<bool>("editable");
    QTest::newRow("no flash allowed") << 0 << 0 << false;
    QTest::newRow("full range") << 255 << 100 << true;
    QTest::newRow("low maximum") << 1 << 1 << true;
}

void tst_OverviewDelegates::flashEditor()
{
    QFETCH(int, maxFlash);
    QFETCH(int, flash);
    QFETCH(bool, editable);
    set(1, Col::MaxFlash, maxFlash);
    set(1, Col::FlashIntensity, flash);
    m_table->resetChanges();

    SpinBoxDelegate delegate;
    std::unique_ptr<QWidget> editor(delegate.createEditor(&m_parent, m_option, cell(1, Col::FlashIntensity)));
    QCOMPARE(editor != nullptr, editable);
    if (!editable)
        return;
    auto* spin = qobject_cast<QSpinBox*>(editor.get());
    QVERIFY(spin);
    delegate.setEditorData(spin, cell(1, Col::FlashIntensity));
    QCOMPARE(spin->minimum(), 0);
    QCOMPARE(spin->maximum(), maxFlash);
    QCOMPARE(spin->value(), flash);

    spin->setValue(maxFlash + 10); // the spin box holds the operator at the camera's maximum
    delegate.setModelData(spin, m_table.get(), cell(1, Col::FlashIntensity));
    QCOMPARE(m_table->data(cell(1, Col::FlashIntensity)).toInt(), maxFlash);
    QVERIFY(m_table->isChanged(1, Col::FlashIntensity));
}

void tst_OverviewDelegates::checkBoxPainting_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("flagColumn");
    QTest::addColumn<int>("flag");
    QTest::addColumn<bool>("shown");
    QTest::newRow("mod. flash without the feature") << int(Col::ModFlash) << int(Col::HasModFlash) << 0 << false;
    QTest::newRow("mod. flash with the feature") << int(Col::ModFlash) << int(Col::HasModFlash) << 1 << true;
    QTest::newRow("static reflex without") << int(Col::StaticReflexSuppr) << int(Col::HasStaticReflexSuppr) << 0 << false;
    QTest::newRow("static reflex with") << int(Col::StaticReflexSuppr) << int(Col::HasStaticReflexSuppr) << 1 << true;
    QTest::newRow("dynamic reflex always") << int(Col::DynReflexSuppr) << int(Col::HasDynReflexSuppr) << 0 << true;
}

void tst_OverviewDelegates::checkBoxPainting()
{
    QFETCH(int, column);
    QFETCH(int, flagColumn);
    QFETCH(int, flag);
    QFETCH(bool, shown);
    set(0, flagColumn, flag);
    set(0, column, true);

    CheckboxDelegate delegate;
    delegate.setModel(m_table.get());
    QCOMPARE(delegate.isShowCheckbox(cell(0, column)), shown);
    QVERIFY2(!delegate.createEditor(&m_parent, m_option, cell(0, column)), "the cells are toggled by a press");

    QImage blank(m_option.rect.size(), QImage::Format_ARGB32);
    blank.fill(Qt::white);
    const QImage on = painted(delegate, cell(0, column));
    QCOMPARE(on != blank, shown);
    if (shown) {
        set(0, column, false);
        QVERIFY2(painted(delegate, cell(0, column)) != on, "on and off look different");
    }
}

void tst_OverviewDelegates::syncGroupEditor()
{
    set(0, Col::SyncGroup, QStringLiteral("Channel 2"));
    ComboBoxDelegate delegate;
    QVERIFY2(!delegate.createEditor(&m_parent, m_option, cell(1, Col::SyncGroup)), "no sync group, no editor");

    std::unique_ptr<QWidget> editor(delegate.createEditor(&m_parent, m_option, cell(0, Col::SyncGroup)));
    auto* combo = qobject_cast<QComboBox*>(editor.get());
    QVERIFY(combo);
    QCOMPARE(combo->count(), 3);
    QCOMPARE(combo->itemText(2), QStringLiteral("Channel 3"));
    delegate.setEditorData(combo, cell(0, Col::SyncGroup));
    QCOMPARE(combo->currentText(), QStringLiteral("Channel 2"));

    combo->setCurrentIndex(2);
    delegate.setModelData(combo, m_table.get(), cell(0, Col::SyncGroup));
    QCOMPARE(m_table->data(cell(0, Col::SyncGroup)).toString(), QStringLiteral("Channel 3"));

    // A channel beyond the offered three selects nothing and leaves the cell as it is.
    set(0, Col::SyncGroup, QStringLiteral("Channel 7"));
    delegate.setEditorData(combo, cell(0, Col::SyncGroup));
    QCOMPARE(combo->currentIndex(), -1);
    delegate.setModelData(combo, m_table.get(), cell(0, Col::SyncGroup));
    QCOMPARE(m_table->data(cell(0, Col::SyncGroup)).toString(), QStringLiteral("Channel 7"));
}

void tst_OverviewDelegates::cameraModeEditor()
{
    // The default system's first camera has three modes and runs in the first.
    SimulatedController controller;
    InProcessLink link(&controller);
    IOManager channel(&link);
    set(0, Col::CameraMode, QStringLiteral("Standard 180 Hz"));
    set(0, Col::CameraModeData, QStringLiteral("m01"));

    QObject owner;
    auto* delegate = new ComboCamModeDelegate(&owner, &channel);
    QVERIFY(!delegate->createEditor(&m_parent, m_option, cell(1, Col::CameraMode)));
    QVERIFY2(controller.requests().isEmpty(), "an empty cell asks the controller nothing");

    std::unique_ptr<QWidget> editor(delegate->createEditor(&m_parent, m_option, cell(0, Col::CameraMode)));
    auto* combo = qobject_cast<QComboBox*>(editor.get());
    QVERIFY(combo);
    QCOMPARE(controller.requests(), QList<QByteArray>({"quarvo2 get camera number_of_modes c01",
                                                       "quarvo2 get camera mode_desc c01 m01",
                                                       "quarvo2 get camera mode_desc c01 m02",
                                                       "quarvo2 get camera mode_desc c01 m03"}));
    QCOMPARE(combo->count(), 3);
    QCOMPARE(combo->itemText(1), QStringLiteral("High speed 300 Hz"));
    delegate->setEditorData(combo, cell(0, Col::CameraMode));
    QCOMPARE(combo->currentIndex(), 0);

    combo->setCurrentIndex(1);
    delegate->setModelData(combo, m_table.get(), cell(0, Col::CameraMode));
    QCOMPARE(m_table->data(cell(0, Col::CameraMode)).toString(), QStringLiteral("High speed 300 Hz"));
    QCOMPARE(m_table->data(cell(0, Col::CameraModeData)).toString(), QStringLiteral("m02"));
    QVERIFY(m_table->isChanged(0, Col::CameraModeData));
}

void tst_OverviewDelegates::cameraModeEditorWithFailedDescription()
{
    SimulatedController controller;
    InProcessLink link(&controller);
    IOManager channel(&link);
    FaultRule rule;
    rule.match = QStringLiteral("quarvo2 get camera mode_desc c01 m02");
    controller.addFault(rule);
    set(0, Col::CameraMode, QStringLiteral("Standard 180 Hz"));

    ComboCamModeDelegate delegate(nullptr, &channel);
    std::unique_ptr<QWidget> editor(delegate.createEditor(&m_parent, m_option, cell(0, Col::CameraMode)));
    auto* combo = qobject_cast<QComboBox*>(editor.get());
    QVERIFY(combo);
    QCOMPARE(combo->count(), 2);
    QCOMPARE(combo->itemText(1), QStringLiteral("Full frame 60 Hz"));
    QCOMPARE(combo->itemData(1).toString(), QStringLiteral("m03"));

    // A failed mode count leaves an empty list, and an editor without choice writes nothing.
    rule.match = QStringLiteral("quarvo2 get camera number_of_modes c01");
    controller.addFault(rule);
    std::unique_ptr<QWidget> empty(delegate.createEditor(&m_parent, m_option, cell(0, Col::CameraMode)));
    auto* emptyCombo = qobject_cast<QComboBox*>(empty.get());
    QVERIFY(emptyCombo);
    QCOMPARE(emptyCombo->count(), 0);
    m_table->resetChanges();
    delegate.setModelData(emptyCombo, m_table.get(), cell(0, Col::CameraMode));
    QCOMPARE(m_table->data(cell(0, Col::CameraMode)).toString(), QStringLiteral("Standard 180 Hz"));
    QVERIFY(!m_table->isChanged(0, Col::CameraMode));
}

QTEST_MAIN(tst_OverviewDelegates)
#include "tst_overviewdelegates.moc"
