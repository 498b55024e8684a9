#ifndef TCPCONTROLLERLINK_H
#define TCPCONTROLLERLINK_H

#include "ControllerLink.h"

#include <QDeadlineTimer>
#include <QScopedPointer>
#include <QString>

#include <functional>

class QTcpSocket;

// A ControllerLink to a tracking controller on the network: one line out, one line
// in per call, over TCP. Calls block the caller's thread (the frontend's GUI thread)
// but never longer than the reply time-out; a connection that went away is made
// again on the next call. A controller that lets a call time out is taken as silent:
// the calls after it fail at once instead of each waiting out the time-out, and about
// once a second one call tries a new connection, until one answers. Replies that are
// too long or hold control characters are refused without buffering more than one
// line's worth.
class TcpControllerLink : public ControllerLink
{
public:
    // Longest reply line taken, without its terminator.
    static const int MaximumReplyLength = 64 * 1024;
    static const int DefaultReplyTimeoutMs = 3000;
    // How long calls fail at once after a time-out before one tries again.
    static const int RetryIntervalMs = 1000;

    // Called after every transact with the request, the reply (empty on failure) and
    // whether the call worked; the host shows the traffic and the connection state with it.
    using TrafficObserver = std::function<void(const QByteArray& request, const QByteArray& reply, bool ok)>;

    TcpControllerLink(const QString& hostName, quint16 port);
    ~TcpControllerLink() override;

    QString hostName() const { return m_hostName; }
    quint16 port() const { return m_port; }
    // "host:port" as the operator wrote it, IPv6 addresses in brackets.
    QString address() const;

    // The whole call (connecting, sending, the reply) has this long; default 3000 ms.
    void setReplyTimeoutMs(int ms);
    int replyTimeoutMs() const { return m_timeoutMs; }

    void setTrafficObserver(TrafficObserver observer);

    bool transact(const QByteArray& request, QByteArray* reply) override;
    QString lastError() const override;

    bool isConnected() const;
    // True from a time-out until a new connection has answered a request; calls fail at
    // once meanwhile, except one about every RetryIntervalMs.
    bool isSilent() const { return m_silent; }
    // Closes the connection; the next call connects again.
    void disconnectFromController();

    // Splits "host:port" or "[v6-address]:port"; false with the reason in *error.
    static bool parseAddress(const QString& text, QString* hostName, quint16* port, QString* error);

private:
    bool ensureConnected(const QDeadlineTimer& deadline);
    bool send(const QByteArray& line, const QDeadlineTimer& deadline);
    bool receiveLine(QByteArray* line, const QDeadlineTimer& deadline);
    // Records why the call failed; dropConnection ends a connection that is out of step.
    bool fail(const QString& error, bool dropConnection);
    // The call ran out of time: the controller counts as silent from now on.
    bool timeOut(const QString& reason);
    QString silenceError() const;

    QString m_hostName;
    quint16 m_port;
    int m_timeoutMs = DefaultReplyTimeoutMs;
    QScopedPointer<QTcpSocket> m_socket;
    QString m_lastError;
    TrafficObserver m_observer;
    bool m_silent = false;
    bool m_quickPeer = false; // the last reply came fast enough to spin for the next one
    QString m_silenceReason;  // what timed out, for lastError()
    QDeadlineTimer m_retryAt; // when a call may try the silent controller again
};

#endif // TCPCONTROLLERLINK_H
