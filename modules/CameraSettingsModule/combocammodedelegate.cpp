#include "combocammodedelegate.h"

#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"
#include "IOManager.h"

#include <QComboBox>

ComboCamModeDelegate::ComboCamModeDelegate(QObject* parent, IOManager* channel)
    : QItemDelegate(parent),
      iom(channel)
{
}

QString ComboCamModeDelegate::modeKey(int mode)
{
    return QStringLiteral("m%1").arg(mode, 2, 10, QLatin1Char('0'));
}

void ComboCamModeDelegate::addModeItems(QComboBox* comboBox, IOManager* channel, int camera, int count)
{
    if (!channel)
        return;
    for (int mode = 1; mode <= count; ++mode) {
        char desc[IOManager::ValueBufferSize] = {};
        if (channel->getString(desc, "camera mode_desc c%02d m%02d", camera, mode) != 0)
            continue;
        comboBox->addItem(CameraSettings::withoutDoubleQuotes(QString::fromLatin1(desc)), modeKey(mode));
    }
}

QWidget* ComboCamModeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                            const QModelIndex& index) const
{
    if (index.data(Qt::EditRole).toString().isEmpty())
        return nullptr;
    auto* comboBox = new QComboBox(parent);
    const int camera = index.row() + 1;
    // The modes are asked anew at each opening: a camera may have been replaced meanwhile.
    int modes = 0;
    if (iom && iom->getInt(&modes, "camera number_of_modes c%02d", camera) != 0)
        modes = 0;
    addModeItems(comboBox, iom, camera, modes);
    return comboBox;
}

void ComboCamModeDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* comboBox = qobject_cast<QComboBox*>(editor))
        comboBox->setCurrentIndex(comboBox->findText(index.data(Qt::EditRole).toString(),
                                                     Qt::MatchExactly | Qt::MatchCaseSensitive));
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
