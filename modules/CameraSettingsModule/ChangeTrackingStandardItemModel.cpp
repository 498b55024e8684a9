#include "ChangeTrackingStandardItemModel.h"

ChangeTrackingStandardItemModel::ChangeTrackingStandardItemModel(QObject* parent)
    : QStandardItemModel(parent)
{
}

ChangeTrackingStandardItemModel::ChangeTrackingStandardItemModel(int rows, int columns, QObject* parent)
    : QStandardItemModel(rows, columns, parent)
{
}

bool ChangeTrackingStandardItemModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    markChanged(index.row(), index.column());
    return QStandardItemModel::setData(index, value, role);
}

bool ChangeTrackingStandardItemModel::isChanged(int row, int column) const
{
    return m_changeMap.contains(column, row);
}

bool ChangeTrackingStandardItemModel::isChangeRecordingActive() const
{
    return m_changeRecActive;
}

void ChangeTrackingStandardItemModel::setChangeRecordingActive(bool active)
{
    m_changeRecActive = active;
}

void ChangeTrackingStandardItemModel::markChanged(int row, int column)
{
    if (m_changeRecActive)
        m_changeMap.insert(column, row);
}

void ChangeTrackingStandardItemModel::resetChanges()
{
    m_changeMap.clear();
}
