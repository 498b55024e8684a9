#ifndef BACKENDVERSIONS_H
#define BACKENDVERSIONS_H

#include "VersionInfo.h"

#include <QMetaType>
#include <QString>

// Versions of the controller side as the host learnt them when it connected:
// the system versions, the protocol version that gates features, and the system model.
class BackendVersions
{
public:
    BackendVersions(VersionInfo systemPt, VersionInfo protocol, VersionInfo systemCt, QString atcModel);

    VersionInfo systemPt() const { return sysPt; }
    VersionInfo protocol() const { return prot; }
    VersionInfo systemCt() const { return sysCt; }
    QString atcModel() const { return mod; }

    // The feature gate of the module: a.b passes for every a.b.x and anything newer.
    bool protocolAtLeast(int major, int minor) const;

private:
    VersionInfo sysPt;
    VersionInfo prot;
    VersionInfo sysCt;
    QString mod;
};

Q_DECLARE_METATYPE(BackendVersions*)

#endif // BACKENDVERSIONS_H
