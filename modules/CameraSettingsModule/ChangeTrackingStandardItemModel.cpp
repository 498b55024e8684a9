#include "ChangeTrackingStandardItemModel.h"

bool ChangeTrackingStandardItemModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    markChanged(index.row(), index.column());
    return QStandardItemModel::setData(index, value, role);
}

void ChangeTrackingStandardItemModel::markChanged(int row, int column)
{
    if (m_changeRecActive)
        m_changeMap.insert(column, row);
}
