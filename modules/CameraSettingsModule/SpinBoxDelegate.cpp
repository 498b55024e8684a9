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
    if (maxFlashOfRow(index) < 1)
        return nullptr;
    return new QSpinBox(parent);
}

void SpinBoxDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* spinBox = qobject_cast<QSpinBox*>(editor);
    if (!spinBox)
        return;
    const int value = index.data(Qt::EditRole).toInt();
    spinBox->setMinimum(0);
    spinBox->setMaximum(maxFlashOfRow(index));
    spinBox->setValue(value);
}

void SpinBoxDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    auto* spinBox = qobject_cast<QSpinBox*>(editor);
    if (!spinBox)
        return;
    // Typed text that was not yet committed by the spin box itself counts too.
    spinBox->interpretText();
    model->setData(index, spinBox->value(), Qt::EditRole);
}
