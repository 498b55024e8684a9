#include "checkboxdelegate.h"

#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"

#include <QApplication>
#include <QCheckBox>
#include <QPainter>
#include <QStyle>

bool CheckboxDelegate::isShowCheckbox(const QModelIndex& index) const
{
    if (index.column() != CameraTable::StaticReflexSuppr && index.column() != CameraTable::ModFlash)
        return true;
    const int flagColumn =
        index.column() == CameraTable::ModFlash ? CameraTable::HasModFlash : CameraTable::HasStaticReflexSuppr;
    // Without the table the flag is unknown; a camera is then not offered the feature.
    return CameraSettings::cell(model, index.row(), flagColumn).toBool();
}

void CheckboxDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (!isShowCheckbox(index))
        return;

    const QStyleOptionViewItem viewOption = setOptions(index, option);
    QStyleOptionButton box;
    box.rect = viewOption.rect;
    box.palette = viewOption.palette;
    box.palette.setColor(QPalette::All, QPalette::ButtonText, Qt::black);
    box.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Editing;
    box.state |= index.data(Qt::EditRole).toBool() ? QStyle::State_On : QStyle::State_Off;
    QApplication::style()->drawControl(QStyle::CE_CheckBox, &box, painter);
}

QWidget* CheckboxDelegate::createEditor(QWidget* /*parent*/, const QStyleOptionViewItem& /*option*/,
                                        const QModelIndex& /*index*/) const
{
    // Toggled by a mouse press on the cell (or the page's global check box), never edited in place.
    return nullptr;
}

void CheckboxDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* checkBox = qobject_cast<QCheckBox*>(editor);
    if (checkBox && isShowCheckbox(index))
        checkBox->setChecked(index.data(Qt::EditRole).toBool());
}

void CheckboxDelegate::setModelData(QWidget* editor, QAbstractItemModel* tableModel, const QModelIndex& index) const
{
    auto* checkBox = qobject_cast<QCheckBox*>(editor);
    if (checkBox && isShowCheckbox(index))
        tableModel->setData(index, checkBox->isChecked(), Qt::EditRole);
}
