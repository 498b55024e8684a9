#ifndef CASCADESLAVE_H
#define CASCADESLAVE_H

#include <QString>

// A slave controller of a cascaded system; cameras attached to it name it.
struct CascadeSlave
{
    QString id;         // the word cameras report as their cascade slave
    QString controller; // the controller word of the slave
    QString hostname;
    int model = 0;      // system model number of the slave
};

#endif // CASCADESLAVE_H
