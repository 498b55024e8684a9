#ifndef CONTROLLERERROR_H
#define CONTROLLERERROR_H

// The codes of the controller's `quarvo2 err <code> "<text>"` replies.
enum class ControllerError {
    UnknownCommand = 1,      // not a command of the protocol, or a malformed line
    NotInProtocol = 2,       // the command came with a later protocol version
    InvalidValue = 3,        // value out of range, unknown name, wrong argument
    NoSuchCamera = 4,        // camera number outside the cameras present (or missing)
    NotSupported = 5,        // the camera or the system lacks the feature
    ConfigurationLocked = 6, // the configuration may not be changed now
    Failure = 7,             // the controller failed to carry the command out
};

#endif // CONTROLLERERROR_H
