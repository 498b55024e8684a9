#ifndef SCENARIO_H
#define SCENARIO_H

#include "controllerstate.h"
#include "faultrule.h"

#include <QString>
#include <QVector>

// A system to simulate: its state when the controller starts and the faults it shows.
struct Scenario
{
    QString name;
    ControllerState state;
    QVector<FaultRule> faults;
};

#endif // SCENARIO_H
