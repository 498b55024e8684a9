#ifndef CONTROLLERINVARIANTS_H
#define CONTROLLERINVARIANTS_H

#include <QByteArray>
#include <QString>

struct ControllerState;

// What a controller's state must satisfy however it was reached (loaded from any
// document, changed by any request): the rules the controller enforces when it
// validates. Empty when all hold, else the first rule broken.
QString brokenInvariant(const ControllerState& state);

// What a reply line to any request must look like: one line of printable text, an
// error in its fixed form, a set echoed, a get answered for its own path. Empty when
// it does, else what is wrong.
QString badReply(const QByteArray& request, const QByteArray& reply);

// Ends the run on a broken rule, saying what broke and where, so that the fuzzer keeps
// the input.
[[noreturn]] void fuzzFailure(const char* what, const QString& detail);

#endif // CONTROLLERINVARIANTS_H
