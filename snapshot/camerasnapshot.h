#ifndef CAMERASNAPSHOT_H
#define CAMERASNAPSHOT_H

#include <QJsonValue>
#include <QMap>
#include <QString>
#include <QStringList>

// One camera of a snapshot: which camera it is (by serial, since cameras move between
// ports), where it was plugged in, and the settings it has.
struct CameraSnapshot
{
    QString serial;
    QString model;    // the controller's model id word, "0x0901"
    int position = 0; // camera number on the controller, 1 for c01
    QMap<QString, QJsonValue> settings;
    // Settings the camera has but the controller would not read; only for a live system.
    QStringList unreadable;

    // The value of a setting; undefined when the camera does not have it.
    QJsonValue value(const QString& name) const { return settings.value(name, QJsonValue(QJsonValue::Undefined)); }
    // "c01 4711": the port as commands name it and the serial.
    QString label() const { return portWord(position) + QLatin1Char(' ') + serial; }
    // "c01" for camera 1.
    static QString portWord(int position) { return QStringLiteral("c%1").arg(position, 2, 10, QLatin1Char('0')); }
};

#endif // CAMERASNAPSHOT_H
