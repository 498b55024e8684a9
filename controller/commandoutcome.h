#ifndef COMMANDOUTCOME_H
#define COMMANDOUTCOME_H

#include "controllererror.h"

#include <QByteArray>

// The result of one command: the value a get answers (a set answers by echoing
// its request), or the refusal the controller reports.
struct CommandOutcome
{
    bool ok = true;
    QByteArray value;
    ControllerError error = ControllerError::Failure;
    QByteArray text;

    static CommandOutcome answer(const QByteArray& value)
    {
        CommandOutcome outcome;
        outcome.value = value;
        return outcome;
    }
    static CommandOutcome accepted() { return CommandOutcome(); }
    static CommandOutcome refuse(ControllerError error, const QByteArray& text)
    {
        CommandOutcome outcome;
        outcome.ok = false;
        outcome.error = error;
        outcome.text = text;
        return outcome;
    }
};

#endif // COMMANDOUTCOME_H
