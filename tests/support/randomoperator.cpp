#include "randomoperator.h"

#include "dialogrig.h"

#include <cameratablecolumns.h>

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTest>

namespace Col = CameraTable;

QString RandomOperator::act(DialogRig& rig)
{
    QTabWidget* tabs = rig.tabs();
    const bool table = tabs && tabs->isVisible();
    if (table && m_random.bounded(5) == 0) {
        const int tab = m_random.bounded(tabs->count());
        if (tabs->isTabEnabled(tab))
            tabs->setCurrentIndex(tab);
        return QStringLiteral("tab %1").arg(tabs->currentIndex());
    }
    if (table && tabs->currentIndex() == 0 && m_random.bounded(3) == 0)
        return editCell(rig);
    QWidget* area = table ? tabs->currentWidget() : rig.dialog();
    QList<QWidget*> controls;
    for (QWidget* widget : area->findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        const bool control = qobject_cast<QAbstractSlider*>(widget) || qobject_cast<QAbstractSpinBox*>(widget)
            || qobject_cast<QCheckBox*>(widget) || qobject_cast<QComboBox*>(widget)
            || (qobject_cast<QPushButton*>(widget) && name != QLatin1String("btnOk") && name != QLatin1String("btnCancel"));
        if (control && widget->isVisible() && widget->isEnabled())
            controls << widget;
    }
    if (controls.isEmpty())
        return QStringLiteral("nothing to touch");
    QWidget* control = controls.at(m_random.bounded(controls.size()));
    if (auto* slider = qobject_cast<QAbstractSlider*>(control)) {
        const qint64 span = qint64(slider->maximum()) - slider->minimum();
        slider->setValue(int(slider->minimum() + qint64(m_random.generate64() % quint64(span + 1))));
        emit slider->sliderReleased();
    } else if (auto* spinBox = qobject_cast<QAbstractSpinBox*>(control)) {
        QTest::keyClick(spinBox, m_random.bounded(2) ? Qt::Key_Up : Qt::Key_PageDown);
    } else if (auto* comboBox = qobject_cast<QComboBox*>(control)) {
        QTest::keyClick(comboBox, m_random.bounded(2) ? Qt::Key_Down : Qt::Key_Up);
    } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        button->click();
    }
    return control->objectName() + QStringLiteral(" on tab %1").arg(table ? tabs->currentIndex() : 0);
}

QString RandomOperator::editCell(DialogRig& rig)
{
    QStandardItemModel* model = rig.model();
    const int row = m_random.bounded(model->rowCount());
    const bool modulated = m_random.bounded(2);
    const int column = modulated ? Col::ModFlash : Col::SyncGroup;
    const QModelIndex index = model->index(row, column);
    // Only what the table lets the operator edit: a cell the camera has, of a present camera.
    if (!(model->flags(index) & Qt::ItemIsEnabled) || model->data(index).toString().isEmpty()
        || model->data(model->index(row, Col::Missing)).toBool())
        return QStringLiteral("cell %1,%2 not editable").arg(row).arg(column);
    const QVariant value = modulated ? QVariant(!model->data(index).toBool())
                                     : QVariant(QStringLiteral("Channel %1").arg(1 + m_random.bounded(4)));
    model->setData(index, value, Qt::EditRole);
    return QStringLiteral("cell %1,%2 = %3").arg(row).arg(column).arg(value.toString());
}
