#ifndef CONTROLLERSERVER_H
#define CONTROLLERSERVER_H

#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QSet>
#include <QTcpServer>

class QTcpSocket;
class SimulatedController;

// Serves one simulated controller over TCP, as a real controller serves the frontend:
// one request line in, one reply line out, several clients at once on the same
// controller state. A late answer is sent from a timer, so that it holds up only the
// client that asked; a drop closes that client's connection.
class ControllerServer : public QObject
{
    Q_OBJECT

public:
    // Longest request line taken; a longer one is refused and its client dropped.
    static const int MaximumRequestLength = 64 * 1024;

    explicit ControllerServer(SimulatedController* controller, QObject* parent = nullptr);
    ~ControllerServer() override;

    // false with the reason in *error (address in use, no such address).
    bool listen(const QHostAddress& address, quint16 port, QString* error);
    QHostAddress serverAddress() const { return m_server.serverAddress(); }
    quint16 serverPort() const { return m_server.serverPort(); }
    int clientCount() const { return m_clients.size(); }

    // Turns an address word of the command line into an address to listen on: an IP
    // address, "localhost" or "any"; false when it is none of them.
    static bool listenAddress(const QString& text, QHostAddress* address);

signals:
    // One line about a connection, a request or a reply, for the operator to follow.
    void traced(const QString& line);

private slots:
    void acceptClients();

private:
    // Answers the complete request lines of the client in order, one at a time.
    void serve(QTcpSocket* client);
    void answer(QTcpSocket* client, const QByteArray& line, int delayMs);
    void forget(QTcpSocket* client);
    void trace(QTcpSocket* client, const QString& text);

    SimulatedController* m_controller;
    QTcpServer m_server;
    QHash<QTcpSocket*, int> m_clients; // client number for the trace
    QSet<QTcpSocket*> m_waiting;       // clients whose late answer is still to come
    int m_nextClient = 1;
};

#endif // CONTROLLERSERVER_H
