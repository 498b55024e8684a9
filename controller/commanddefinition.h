#ifndef COMMANDDEFINITION_H
#define COMMANDDEFINITION_H

#include "commandcall.h"
#include "commandoutcome.h"

#include <VersionInfo.h>

#include <QByteArray>

#include <functional>

struct ControllerState;

// One command of the protocol: its path head, the protocol version that brought
// it, the arguments it takes, and how it is read and written.
struct CommandDefinition
{
    using Getter = std::function<CommandOutcome(const ControllerState&, const CommandCall&)>;
    using Setter = std::function<CommandOutcome(ControllerState&, const CommandCall&)>;

    QByteArray head;            // "camera flash_intensity", "camera limit marker_max_size"
    VersionInfo since{1, 0, -1};
    bool onCamera = false;      // the first argument names a present camera: c01, c02, ...
    int words = 0;              // further argument words
    Getter get;                 // empty: the command cannot be read
    Setter set;                 // empty: the command cannot be written
    bool setupOnly = false;     // the set is for test set-up only; the wire refuses it
    bool configuration = true;  // a set changes the configuration, refused while it is locked
};

#endif // COMMANDDEFINITION_H
