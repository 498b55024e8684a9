#ifndef CONNECTIONLISTENER_H
#define CONNECTIONLISTENER_H

#include <QTcpServer>

// Listens like any QTcpServer, but hands each accepted connection over as a bare socket
// descriptor: the simulated controller's server reads and writes its clients itself.
class ConnectionListener : public QTcpServer
{
    Q_OBJECT

public:
    using QTcpServer::QTcpServer;

signals:
    // The receiver owns the descriptor from now on.
    void accepted(qintptr descriptor);

protected:
    void incomingConnection(qintptr descriptor) override { emit accepted(descriptor); }
};

#endif // CONNECTIONLISTENER_H
