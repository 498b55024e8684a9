#include "inprocesssystem.h"

#include "benchsupport.h"

InProcessSystem::InProcessSystem(int cameras)
    : versions(VersionInfo(), VersionInfo(), VersionInfo(), QString())
{
    QString error;
    if (!controller.loadScenarioJson(Bench::scenario(cameras), &error))
        qFatal("%s", qPrintable(error));
    versions = controller.backendVersions();
}
