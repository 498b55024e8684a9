#ifndef CONTROLLERSERVER_H
#define CONTROLLERSERVER_H

#include "connectionlistener.h"
#include "heldreplies.h"

#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QSet>

class ClientConnection;
class SimulatedController;

// Serves one simulated controller over TCP, as a real controller serves the frontend:
// one request line in, one reply line out, several clients at once on the same
// controller state. A late answer, and every answer when the server plays a controller
// with latency, is held back by a timer, so that it holds up only the client that
// asked; a drop closes that client's connection. Whatever a client does,
// it holds a bounded share of the server's memory: one line of input, and about
// MaximumUnsentReplyBytes of replies it has not taken.
class ControllerServer : public QObject
{
    Q_OBJECT

public:
    // Longest request line taken; a longer one is refused and its client dropped.
    static const int MaximumRequestLength = 64 * 1024;
    // A client with more replies than this waiting to be taken is not read further until
    // it has taken them all; the other clients are served meanwhile.
    static const qint64 MaximumUnsentReplyBytes = 1024 * 1024;

    explicit ControllerServer(SimulatedController* controller, QObject* parent = nullptr);
    ~ControllerServer() override;

    // false with the reason in *error (address in use, no such address).
    bool listen(const QHostAddress& address, quint16 port, QString* error);
    QHostAddress serverAddress() const { return m_listener.serverAddress(); }
    quint16 serverPort() const { return m_listener.serverPort(); }
    int clientCount() const { return m_clients.size(); }

    // Every reply is held back this long before it goes out (0: none), on top of a late
    // fault's delay; the client's next request waits for it, as on a slower controller.
    void setLatencyUs(qint64 microseconds) { m_latencyUs = qMax<qint64>(0, microseconds); }
    qint64 latencyUs() const { return m_latencyUs; }

    // Turns an address word of the command line into an address to listen on: an IP
    // address, "localhost" or "any"; false when it is none of them.
    static bool listenAddress(const QString& text, QHostAddress* address);

signals:
    // One line about a connection, a request or a reply, for the operator to follow.
    void traced(const QString& line);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private slots:
    void acceptClient(qintptr descriptor);

private:
    // Answers the complete request lines of the client in order, one at a time, and
    // sends the answers together.
    void serve(ClientConnection* client);
    void answerRequests(ClientConnection* client);
    void answer(ClientConnection* client, const QByteArray& line, int delayMs);
    void forget(ClientConnection* client);
    void trace(ClientConnection* client, const QString& text);

    SimulatedController* m_controller;
    ConnectionListener m_listener;
    QHash<ClientConnection*, int> m_clients; // client number for the trace
    QSet<ClientConnection*> m_waiting;       // clients whose held-back answer is still to come
    HeldReplies m_held;
    qint64 m_latencyUs = 0;
    int m_nextClient = 1;
    bool m_tracing = false; // someone follows traced()
};

#endif // CONTROLLERSERVER_H
