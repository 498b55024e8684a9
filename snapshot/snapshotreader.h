#ifndef SNAPSHOTREADER_H
#define SNAPSHOTREADER_H

#include "settingdefinition.h"
#include "systemsnapshot.h"

#include <VersionInfo.h>

#include <QJsonValue>
#include <QString>
#include <QStringList>

class SnapshotLink;

// Reads the settings of every present camera from a live controller into a snapshot.
// A setting is asked for only where the protocol has it and the camera says it has
// it, as the camera settings dialog does; what a camera lacks is left out, not invented.
class SnapshotReader
{
public:
    explicit SnapshotReader(SnapshotLink* link);

    // False when the system as a whole could not be read (the connection, its model,
    // protocol or camera list), with the reason in error(). Settings the controller
    // would not answer are left out and named in problems().
    bool read(SystemSnapshot* snapshot);
    QString error() const { return m_error; }
    QStringList problems() const { return m_problems; }

    // One setting of the camera at position, as the controller holds it now; false with
    // the reason when it cannot be read.
    bool readSetting(int position, const SettingDefinition& definition, QJsonValue* value, QString* why);

private:
    enum class Presence { Has, Lacks, Unknown };

    bool readSystem(SystemSnapshot* snapshot, int* count);
    bool readCamera(int position, CameraSnapshot* camera);
    Presence presence(int position, const SettingDefinition& definition, QString* why);
    // Why the last call failed: the lost connection or the controller's answer.
    QString failure() const;
    bool fail(const QString& error);

    SnapshotLink* m_link;
    VersionInfo m_protocol;
    QString m_error;
    QStringList m_problems;
};

#endif // SNAPSHOTREADER_H
