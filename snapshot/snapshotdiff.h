#ifndef SNAPSHOTDIFF_H
#define SNAPSHOTDIFF_H

#include "systemsnapshot.h"

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QVector>

// What differs between two snapshots (a file or a live controller on either side):
// the system's model and protocol, and per camera, matched by serial, each setting
// whose old and new value differ; a camera on one side only is listed as such.
class SnapshotDiff
{
public:
    struct Change
    {
        QString name; // a setting, "model", or the system's "system_model" and "protocol_version"
        QJsonValue before; // undefined: that side does not have it
        QJsonValue after;
    };
    struct Camera
    {
        QString serial;
        QString model;
        int positionBefore = 0; // 0: not on that side
        int positionAfter = 0;
        QVector<Change> changes;
    };

    SnapshotDiff(const SystemSnapshot& before, const SystemSnapshot& after);

    bool differ() const { return !m_system.isEmpty() || !m_cameras.isEmpty(); }
    const QVector<Change>& systemChanges() const { return m_system; }
    // Cameras with changes or on one side only: the old side's order, then the new side's.
    const QVector<Camera>& cameras() const { return m_cameras; }

    // One line per change, under a line per camera; nothing when nothing differs.
    QString text(const QString& beforeLabel, const QString& afterLabel) const;
    QByteArray json(const QString& beforeLabel, const QString& afterLabel) const;
    // "c01", "c03 -> c02", or the one side's port.
    static QString ports(const Camera& camera);

private:
    void compare(const CameraSnapshot& before, const CameraSnapshot& after);

    QVector<Change> m_system;
    QVector<Camera> m_cameras;
};

#endif // SNAPSHOTDIFF_H
