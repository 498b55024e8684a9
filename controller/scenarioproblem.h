#ifndef SCENARIOPROBLEM_H
#define SCENARIOPROBLEM_H

#include <QString>
#include <QStringList>

// The first thing wrong with a scenario, and where in the document it is.
struct ScenarioProblem
{
    QStringList path; // object keys and array indices leading to the value
    QString reason;

    bool found() const { return !reason.isEmpty(); }
};

#endif // SCENARIOPROBLEM_H
