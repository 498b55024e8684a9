#ifndef SCENARIOLOADER_H
#define SCENARIOLOADER_H

#include "scenario.h"

#include <QByteArray>
#include <QString>

// Reads scenario documents (JSON, the format is in README.md next to this file).
// The whole document is checked before anything is taken over, so a scenario with
// an error leaves nothing half loaded.
class ScenarioLoader
{
public:
    // False with "<source>:<line>: <reason>" in *error.
    static bool load(const QByteArray& json, const QString& source, Scenario* scenario, QString* error);
};

#endif // SCENARIOLOADER_H
