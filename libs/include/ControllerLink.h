#ifndef CONTROLLERLINK_H
#define CONTROLLERLINK_H

#include <QByteArray>
#include <QString>

// The transport under IOManager: one request line out, one reply line back.
// Lines carry no line terminator. A transport failure (no controller, time-out,
// dropped connection) returns false and leaves no reply.
class ControllerLink
{
public:
    virtual ~ControllerLink() = default;
    virtual bool transact(const QByteArray& request, QByteArray* reply) = 0;
    // Why the last transact failed, for the host to show; empty when it did not.
    virtual QString lastError() const { return QString(); }
};

#endif // CONTROLLERLINK_H
