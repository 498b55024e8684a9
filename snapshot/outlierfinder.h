#ifndef OUTLIERFINDER_H
#define OUTLIERFINDER_H

#include "systemsnapshot.h"

#include <QJsonValue>
#include <QString>
#include <QVector>

// Finds the camera left at another exposure after a test: for each setting, the
// cameras of one model whose value differs from the value most cameras of that model have.
class OutlierFinder
{
public:
    struct Outlier
    {
        QString model;
        QString setting;
        QString camera; // "c03 4713"
        QJsonValue value;
        QJsonValue usual; // what most cameras of the model have
        int usualCount;
        int total; // cameras of the model that have the setting
    };

    explicit OutlierFinder(const SystemSnapshot& snapshot);

    const QVector<Outlier>& outliers() const { return m_outliers; }
    // A table with a header line; empty when there are no outliers.
    QString table() const;

private:
    void findInModel(const QString& model, const QVector<const CameraSnapshot*>& cameras);

    QVector<Outlier> m_outliers;
};

#endif // OUTLIERFINDER_H
