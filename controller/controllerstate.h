#ifndef CONTROLLERSTATE_H
#define CONTROLLERSTATE_H

#include "camerastate.h"
#include "cascadeslave.h"
#include "displaysetting.h"
#include "missingcamera.h"

#include <VersionInfo.h>

#include <QPair>
#include <QString>
#include <QVector>

// The state of a whole tracking system as its controller holds it: versions and
// model, configuration lock, sync card, cascade, display settings, the cameras it
// reaches and the ones it misses.
struct ControllerState
{
    VersionInfo protocolVersion{1, 27, 0};
    QString systemModel = QStringLiteral("QUARVO");
    QString systemVersion = QStringLiteral("1.0.0");
    QString controllerVersion = QStringLiteral("1.0.0");
    bool configChangeable = true;
    bool displayShowSyncgroup = false;

    bool syncCardAvailable = false;
    int syncCardChannels = 0;

    QVector<QPair<QString, QString>> modelDescriptions; // model id word, description
    QVector<DisplaySetting> displaySettings;
    QVector<CascadeSlave> cascadeSlaves;
    QVector<MissingCamera> missingCameras;
    QVector<CameraState> cameras;

    // Model ids are hexadecimal numbers: 0x0B01 and 0x0b01 name the same model.
    static bool sameModel(const QString& a, const QString& b);

    bool protocolAtLeast(const VersionInfo& since) const;
    int displaySettingIndex(const QString& id) const; // -1 when unknown
    int cascadeSlaveIndex(const QString& id) const;   // -1 when unknown
    // The description of a model id; false when the controller does not know it.
    bool modelDescription(const QString& model, QString* description) const;
    // The serial description of a present or missing camera; false when unknown.
    bool serialDescription(const QString& model, const QString& serial, QString* description) const;
};

#endif // CONTROLLERSTATE_H
