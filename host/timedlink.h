#ifndef TIMEDLINK_H
#define TIMEDLINK_H

#include <ControllerLink.h>

#include <QDateTime>

#include <functional>

// Sits between the host's IOManager and the link to the controller (in-process or on
// the network) and reports every exchange with the time it went out and how long the
// caller waited, which is what the command log shows whatever the transport.
class TimedLink : public ControllerLink
{
public:
    using Observer = std::function<void(const QByteArray& request, const QByteArray& reply, bool ok,
                                        const QDateTime& sent, qint64 roundTripNs)>;

    void setLink(ControllerLink* link) { m_link = link; }
    ControllerLink* link() const { return m_link; }
    void setObserver(Observer observer) { m_observer = std::move(observer); }

    bool transact(const QByteArray& request, QByteArray* reply) override;
    QString lastError() const override;

private:
    ControllerLink* m_link = nullptr;
    Observer m_observer;
};

#endif // TIMEDLINK_H
