#ifndef INPROCESSLINK_H
#define INPROCESSLINK_H

#include <ControllerLink.h>

#include <QString>

class SimulatedController;

// A ControllerLink that calls a simulated controller directly, in the caller's
// thread. It behaves like a blocking network link: a late answer holds the caller
// up, and one later than the reply time-out fails after waiting the time-out.
class InProcessLink : public ControllerLink
{
public:
    explicit InProcessLink(SimulatedController* controller);

    void setReplyTimeoutMs(int ms); // default 3000
    int replyTimeoutMs() const { return m_timeoutMs; }

    bool transact(const QByteArray& request, QByteArray* reply) override; // Drop -> false
    QString lastError() const override;

private:
    SimulatedController* m_controller;
    int m_timeoutMs = 3000;
    QString m_lastError;
};

#endif // INPROCESSLINK_H
