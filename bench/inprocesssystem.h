#ifndef INPROCESSSYSTEM_H
#define INPROCESSSYSTEM_H

#include "quietsink.h"

#include <BackendVersions.h>
#include <IOManager.h>
#include <inprocesslink.h>
#include <simulatedcontroller.h>

// The dialog's world in one process: the simulated controller on the benchmark system of
// n cameras, and the host's channel to it.
class InProcessSystem
{
public:
    explicit InProcessSystem(int cameras);

    SimulatedController controller;
    InProcessLink link{&controller};
    QuietSink sink;
    IOManager channel{&link, &sink};
    BackendVersions versions;
};

#endif // INPROCESSSYSTEM_H
