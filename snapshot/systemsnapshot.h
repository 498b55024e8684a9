#ifndef SYSTEMSNAPSHOT_H
#define SYSTEMSNAPSHOT_H

#include "camerasnapshot.h"

#include <QByteArray>
#include <QString>
#include <QVector>

// The camera settings of a whole system at one moment: its model, protocol and
// present cameras. It is what a snapshot file holds and what is read from a live
// controller to compare with one.
struct SystemSnapshot
{
    static const int FormatVersion = 1;
    // More cameras than this is no system but a broken answer or a broken file.
    static const int MaximumCameras = 999;
    static const qint64 MaximumFileSize = 16 * 1024 * 1024;

    QString systemModel;
    QString protocolVersion; // "1.27.0"
    QVector<CameraSnapshot> cameras; // in the order of their camera numbers

    // The camera with that serial, or null.
    const CameraSnapshot* camera(const QString& serial) const;

    QByteArray toJson() const;
    // A snapshot from a file's text; false with "<source>:<line>: <reason>".
    static bool fromJson(const QByteArray& json, const QString& source, SystemSnapshot* out, QString* error);
    static bool load(const QString& fileName, SystemSnapshot* out, QString* error);
    // Writes the file whole or not at all; false with the reason.
    bool save(const QString& fileName, QString* error) const;
};

#endif // SYSTEMSNAPSHOT_H
