#ifndef SNAPSHOTRESTORE_H
#define SNAPSHOTRESTORE_H

#include "settingdefinition.h"
#include "systemsnapshot.h"

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVector>

class SnapshotLink;

// Brings a live controller back to a snapshot: writes only the settings that differ,
// camera by camera in the order the camera settings dialog writes on OK, then re-reads
// every written setting to prove that it took. What cannot be restored (a camera the
// controller does not have, a setting its protocol or camera lacks) is reported, never
// guessed.
class SnapshotRestore
{
public:
    struct Write
    {
        int position; // the camera's number on the live controller
        QString serial;
        const SettingDefinition* definition;
        QJsonValue before; // on the controller now
        QJsonValue after;  // in the snapshot
    };
    enum class Outcome { Restored, NotAllTaken, ConnectionLost };

    SnapshotRestore(const SystemSnapshot& saved, const SystemSnapshot& live);

    const QVector<Write>& writes() const { return m_writes; }
    // What cannot be restored, found before anything is sent.
    const QStringList& problems() const { return m_problems; }
    // The command tail of a write: "camera flash_intensity c01 60".
    static QByteArray command(const Write& write);
    static QString label(const Write& write);
    // "1 setting", "3 settings".
    static QString count(int n, const QString& noun);

    // Sends the writes and re-reads them. The report says what was written, what the
    // controller refused or reads back differently, and ends with a summary line.
    Outcome apply(SnapshotLink* link);
    const QStringList& report() const { return m_report; }

private:
    void planCamera(const CameraSnapshot& saved, const CameraSnapshot& live);
    // Whether the setting needs writing; notes a setting the controller lacks.
    bool differs(const CameraSnapshot& saved, const CameraSnapshot& live, const QString& name);
    void add(const CameraSnapshot& saved, const CameraSnapshot& live, const QString& name);
    bool verify(SnapshotLink* link, const QVector<Write>& written, int* restored);

    QString m_protocol; // the live controller's
    QVector<Write> m_writes;
    QStringList m_problems;
    QStringList m_report;
};

#endif // SNAPSHOTRESTORE_H
