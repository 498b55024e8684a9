#include "BackendVersions.h"

BackendVersions::BackendVersions(VersionInfo systemPt, VersionInfo protocol, VersionInfo systemCt, QString atcModel)
    : sysPt(systemPt), prot(protocol), sysCt(systemCt), mod(atcModel)
{
}

bool BackendVersions::protocolAtLeast(int major, int minor) const
{
    return prot >= VersionInfo(major, minor, -1);
}
