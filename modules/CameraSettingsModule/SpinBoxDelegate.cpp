#include "SpinBoxDelegate.h"

#include "cameratablecolumns.h"

#include <QSpinBox>

namespace {

int maxFlashOfRow(const QModelIndex& index)
{
    return index.sibling(index.row(), CameraTable::MaxFlash).data(Qt::EditRole).toInt();
}

} // namespace

QWidget* SpinBoxDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                       const QModelIndex& index) const
{
    // A camera that may not flash at all (or a missing one) has nothing to edit.
    return maxFlashOfRow(index) < 1 ? nullptr : new QSpinBox(parent);
}

void SpinBoxDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    // An editor exists only for a maximum of at least 1 (createEditor).
    if (auto* spinBox = qobject_cast<QSpinBox*>(editor)) {
        spinBox->setRange(0, maxFlashOfRow(index));
        spinBox->setValue(index.data(Qt::EditRole).toInt());
    }
}

void SpinBoxDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (auto* spinBox = qobject_cast<QSpinBox*>(editor)) {
        // Typed text that was not yet committed by the spin box itself counts too.
        spinBox->interpretText();
        model->setData(index, spinBox->value(), Qt::EditRole);
    }
}
