#include "comboboxdelegate.h"

#include "camerasettingshelpers.h"

#include <QComboBox>

QWidget* ComboBoxDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                        const QModelIndex& index) const
{
    if (index.data(Qt::EditRole).toString().isEmpty())
        return nullptr;
    const int offeredChannels = 3;
    auto* comboBox = new QComboBox(parent);
    for (int channel = 1; channel <= offeredChannels; ++channel)
        comboBox->addItem(CameraSettings::channelText(channel));
    return comboBox;
}

void ComboBoxDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* comboBox = qobject_cast<QComboBox*>(editor))
        CameraSettings::selectExactText(comboBox, index.data(Qt::EditRole).toString());
}

void ComboBoxDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    // An editor left without a choice (the cell named no offered channel) keeps the cell.
    auto* comboBox = qobject_cast<QComboBox*>(editor);
    if (comboBox && comboBox->currentIndex() >= 0)
        model->setData(index, comboBox->currentText(), Qt::EditRole);
}
