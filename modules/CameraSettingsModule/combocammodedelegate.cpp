#include "combocammodedelegate.h"

#include "cameracommands.h"
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"
#include "controllervalues.h"

#include <QComboBox>

QWidget* ComboCamModeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                            const QModelIndex& index) const
{
    if (index.data(Qt::EditRole).toString().isEmpty())
        return nullptr;
    auto* comboBox = new QComboBox(parent);
    const int camera = index.row() + 1;
    // The modes are asked anew at each opening: a camera may have been replaced meanwhile.
    int modes = 0;
    if (iom && iom->getInt(&modes, CameraCommand::NumberOfModes, camera) != 0)
        modes = 0;
    CameraSettings::addCameraModeItems(comboBox, iom, camera,
                                       CameraSettings::boundedCount(modes, CameraSettings::MaxCameraModes));
    return comboBox;
}

void ComboCamModeDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* comboBox = qobject_cast<QComboBox*>(editor))
        CameraSettings::selectExactText(comboBox, index.data(Qt::EditRole).toString());
}

void ComboCamModeDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    // An editor left without a choice (no mode could be read, or none matched the cell)
    // keeps the row: writing the empty text would make the camera's mode unknown.
    auto* comboBox = qobject_cast<QComboBox*>(editor);
    if (!comboBox || comboBox->currentIndex() < 0)
        return;
    model->setData(index, comboBox->currentText(), Qt::EditRole);
    model->setData(index.sibling(index.row(), CameraTable::CameraModeData), comboBox->currentData(), Qt::EditRole);
}
