#include "controllerserver.h"

#include "controllerreply.h"
#include "simulatedcontroller.h"
#include "wireformat.h"

#include <QTcpSocket>
#include <QTimer>

namespace {

// Room for the longest request and its "\r\n"; a client cannot make the server
// buffer more than that.
const qint64 kReadBufferSize = ControllerServer::MaximumRequestLength + 2;
// Replies longer than this are cut in the trace; the client gets them whole.
const int kTracedReplyLength = 300;

QString traceText(const QByteArray& line)
{
    QString text = QString::fromLatin1(line.left(kTracedReplyLength));
    if (line.size() > kTracedReplyLength)
        text += QStringLiteral(" ... (%1 bytes)").arg(line.size());
    return text;
}

} // namespace

ControllerServer::ControllerServer(SimulatedController* controller, QObject* parent)
    : QObject(parent), m_controller(controller)
{
    connect(&m_server, &QTcpServer::newConnection, this, &ControllerServer::acceptClients);
}

ControllerServer::~ControllerServer()
{
    // The sockets are children of m_server and go with it, their timers with them; by
    // then this object's other members are gone, so the sockets must not call back.
    for (QTcpSocket* client : m_clients.keys()) {
        client->disconnect(this);
        client->abort();
    }
    m_server.close();
}

bool ControllerServer::listen(const QHostAddress& address, quint16 port, QString* error)
{
    if (m_server.listen(address, port))
        return true;
    if (error)
        *error = m_server.errorString();
    return false;
}

bool ControllerServer::listenAddress(const QString& text, QHostAddress* address)
{
    if (text == QLatin1String("localhost")) {
        *address = QHostAddress(QHostAddress::LocalHost);
        return true;
    }
    if (text == QLatin1String("any")) {
        *address = QHostAddress(QHostAddress::Any);
        return true;
    }
    return address->setAddress(text);
}

void ControllerServer::acceptClients()
{
    while (QTcpSocket* client = m_server.nextPendingConnection()) {
        client->setReadBufferSize(kReadBufferSize);
        m_clients.insert(client, m_nextClient++);
        trace(client, QStringLiteral("connected from %1:%2").arg(client->peerAddress().toString()).arg(client->peerPort()));
        connect(client, &QTcpSocket::readyRead, this, [this, client] { serve(client); });
        connect(client, &QTcpSocket::disconnected, this, [this, client] { forget(client); });
        serve(client);
    }
}

void ControllerServer::serve(QTcpSocket* client)
{
    // Requests that came while a late answer is pending wait for it, so that every
    // client gets its answers in the order of its requests.
    while (!m_waiting.contains(client) && client->state() == QAbstractSocket::ConnectedState) {
        if (!client->canReadLine()) {
            if (client->bytesAvailable() >= kReadBufferSize) {
                // The rest of the line would be read as new requests; the client is
                // out of step, so it is told why and dropped.
                trace(client, QStringLiteral("request longer than %1 bytes, dropped").arg(MaximumRequestLength));
                client->write(WireFormat::errorLine(ControllerError::UnknownCommand, "request line too long") + '\n');
                client->disconnectFromHost();
            }
            return;
        }
        QByteArray request = client->readLine();
        while (request.endsWith('\n') || request.endsWith('\r'))
            request.chop(1);
        trace(client, QStringLiteral("> %1").arg(QString::fromLatin1(request)));
        const ControllerReply reply = m_controller->handle(request);
        if (reply.drop) {
            trace(client, QStringLiteral("connection dropped (fault)"));
            client->disconnectFromHost();
            return;
        }
        if (reply.delayMs > 0) {
            m_waiting.insert(client);
            // The client is the timer's context: a client gone before its answer gets none.
            QTimer::singleShot(reply.delayMs, client, [this, client, reply] {
                m_waiting.remove(client);
                answer(client, reply.line, reply.delayMs);
                serve(client);
            });
            return;
        }
        answer(client, reply.line, 0);
    }
}

void ControllerServer::answer(QTcpSocket* client, const QByteArray& line, int delayMs)
{
    if (client->state() != QAbstractSocket::ConnectedState)
        return;
    client->write(line + '\n');
    trace(client, delayMs > 0 ? QStringLiteral("< %1   (after %2 ms)").arg(traceText(line)).arg(delayMs)
                              : QStringLiteral("< %1").arg(traceText(line)));
}

void ControllerServer::forget(QTcpSocket* client)
{
    trace(client, QStringLiteral("disconnected"));
    m_waiting.remove(client);
    m_clients.remove(client);
    client->deleteLater();
}

void ControllerServer::trace(QTcpSocket* client, const QString& text)
{
    emit traced(QStringLiteral("client %1 %2").arg(m_clients.value(client)).arg(text));
}
