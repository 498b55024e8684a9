#ifndef CHANGETRACKINGSTANDARDITEMMODEL_H
#define CHANGETRACKINGSTANDARDITEMMODEL_H

#include <QMultiMap>
#include <QStandardItemModel>

// The camera table: an ordinary item model that also remembers which cells were
// written through it while recording is on. The dialog loads the table with recording
// off and then asks, on OK, which cells the operator touched.
class ChangeTrackingStandardItemModel : public QStandardItemModel
{
    Q_OBJECT

public:
    explicit ChangeTrackingStandardItemModel(QObject* parent = nullptr) : QStandardItemModel(parent) {}
    ChangeTrackingStandardItemModel(int rows, int columns, QObject* parent = nullptr)
        : QStandardItemModel(rows, columns, parent) {}

    // Records the cell, then stores the value like the base class. Every write counts,
    // also one of the unchanged value or one that the base class refuses.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    bool isChanged(int row, int column) const { return m_changeMap.contains(column, row); }
    bool isChangeRecordingActive() const { return m_changeRecActive; }
    void setChangeRecordingActive(bool active) { m_changeRecActive = active; }

public slots:
    void markChanged(int row, int column);
    void resetChanges() { m_changeMap.clear(); }

private:
    // key = column, value = row; one entry per recorded write, duplicates included.
    QMultiMap<int, int> m_changeMap;
    bool m_changeRecActive = true;
};

#endif // CHANGETRACKINGSTANDARDITEMMODEL_H
