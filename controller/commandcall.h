#ifndef COMMANDCALL_H
#define COMMANDCALL_H

#include <QByteArray>
#include <QList>

// One command as the interpreter hands it to its handler: the camera it names
// (already checked), its further argument words and, for a set, the value.
struct CommandCall
{
    int camera = -1;            // 0-based index of the camera named by the cNN argument
    QList<QByteArray> args;     // the argument words after the camera word
    QByteArray value;           // set only: the value, blanks included ("d01 ch03")
    bool setup = false;         // a test set-up write (poke), not a request on the wire
};

#endif // COMMANDCALL_H
