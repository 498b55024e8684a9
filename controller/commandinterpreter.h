#ifndef COMMANDINTERPRETER_H
#define COMMANDINTERPRETER_H

#include "commandvocabulary.h"

#include <QByteArray>

struct ControllerState;

// Reads request lines of the controller's protocol, checks them as the controller
// does (syntax, protocol version, camera number, configuration lock) and runs the
// command on the state. Every answer is a whole reply line.
class CommandInterpreter
{
public:
    enum class Access {
        Wire,  // a request from a frontend
        Setup, // a test's set-up: no protocol gates, no lock, read-only values writable
    };

    QByteArray execute(ControllerState& state, const QByteArray& request, Access access = Access::Wire) const;
    // Answers a get request without touching the state; refuses a set.
    QByteArray query(const ControllerState& state, const QByteArray& request, Access access = Access::Wire) const;

    const CommandVocabulary& vocabulary() const { return m_vocabulary; }

private:
    struct Resolved;
    // Checks the request against the vocabulary and the state; false with the
    // error reply in *error when the controller refuses it before running it.
    bool resolve(const ControllerState& state, const QByteArray& request, Access access, Resolved* resolved,
                 QByteArray* error) const;
    static QByteArray replyLine(const QByteArray& request, const Resolved& resolved, const CommandOutcome& outcome);

    CommandVocabulary m_vocabulary;
};

#endif // COMMANDINTERPRETER_H
