#include "controllerserver.h"

#include "clientconnection.h"
#include "controllerreply.h"
#include "simulatedcontroller.h"
#include "wireformat.h"

#include <QMetaMethod>

namespace {

// Replies longer than this are cut in the trace; the client gets them whole.
const int kTracedReplyLength = 300;
// Requests of one quick client answered in a row before the event loop runs again.
const int kQuickTurns = 64;

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
    connect(&m_listener, &ConnectionListener::accepted, this, &ControllerServer::acceptClient);
}

ControllerServer::~ControllerServer()
{
    // The clients are children of this object and would go after its members; they
    // must not call back into a half-destroyed server, so they go first.
    const QList<ClientConnection*> clients = m_clients.keys();
    for (ClientConnection* client : clients) {
        client->disconnect(this);
        delete client;
    }
    m_listener.close();
}

bool ControllerServer::listen(const QHostAddress& address, quint16 port, QString* error)
{
    if (m_listener.listen(address, port))
        return true;
    if (error)
        *error = m_listener.errorString();
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

void ControllerServer::acceptClient(qintptr descriptor)
{
    auto* client = new ClientConnection(descriptor, MaximumRequestLength, this);
    m_clients.insert(client, m_nextClient++);
    trace(client, QStringLiteral("connected from %1").arg(client->peer()));
    connect(client, &ClientConnection::inputArrived, this, [this, client] { serve(client); });
    connect(client, &ClientConnection::repliesTaken, this, [this, client] { serve(client); });
    connect(client, &ClientConnection::closed, this, [this, client] { forget(client); });
}

void ControllerServer::serve(ClientConnection* client)
{
    // A quick client's next request is looked for before the server sleeps again, for a
    // bounded number of turns, so that the other clients and the timers get theirs; a
    // client waiting for a held-back reply is not looked for.
    for (int turn = 1;; ++turn) {
        answerRequests(client);
        // A burst of requests gets its answers in one write, a single request at once.
        client->flush();
        if (turn == kQuickTurns || m_waiting.contains(client) || !client->awaitRequest())
            return;
    }
}

void ControllerServer::answerRequests(ClientConnection* client)
{
    // Requests that came while a held-back answer is pending wait for it, so that every
    // client gets its answers in the order of its requests; a client that does not take
    // its replies gets no more until it has.
    while (!m_waiting.contains(client) && !client->isClosing()) {
        if (client->unsentBytes() > MaximumUnsentReplyBytes) {
            // The client takes its replies when it does; repliesTaken() resumes it.
            client->flush();
            if (client->unsentBytes() > MaximumUnsentReplyBytes)
                return;
            continue;
        }
        QByteArray request;
        switch (client->takeLine(&request)) {
        case ClientConnection::Input::Waiting:
            return;
        case ClientConnection::Input::Finished:
            trace(client, QStringLiteral("sent its last request"));
            client->closeWhenSent();
            return;
        case ClientConnection::Input::TooLong:
            // The rest of the line would be read as new requests; the client is out of
            // step, so it is told why and dropped.
            trace(client, QStringLiteral("request longer than %1 bytes, dropped").arg(MaximumRequestLength));
            client->send(WireFormat::errorLine(ControllerError::UnknownCommand, "request line too long"));
            client->closeWhenSent();
            return;
        case ClientConnection::Input::Line:
            break;
        }
        if (m_tracing)
            trace(client, QStringLiteral("> %1").arg(QString::fromLatin1(request)));
        // A held-back reply counts from the moment its request was taken, so that the
        // controller's own handling is part of the latency, not added to it.
        const qint64 takenNs = HeldReplies::now();
        const ControllerReply reply = m_controller->handle(request);
        if (reply.drop) {
            trace(client, QStringLiteral("connection dropped (fault)"));
            client->closeWhenSent();
            return;
        }
        const qint64 holdUs = m_latencyUs + qint64(reply.delayMs) * 1000;
        if (holdUs > 0) {
            m_waiting.insert(client);
            // The client is the hold's context: a client gone before its answer gets none.
            m_held.releaseAt(client, takenNs + holdUs * 1000, [this, client, reply] {
                m_waiting.remove(client);
                answer(client, reply.line, reply.delayMs);
                serve(client);
            });
            return;
        }
        answer(client, reply.line, 0);
    }
}

void ControllerServer::answer(ClientConnection* client, const QByteArray& line, int delayMs)
{
    if (client->isClosing())
        return;
    client->send(line);
    if (!m_tracing)
        return;
    // One pass: a '%1' in a reply (a fault may answer anything) must not take the delay's place.
    trace(client, delayMs > 0 ? QStringLiteral("< %1   (after %2 ms)").arg(traceText(line), QString::number(delayMs))
                              : QStringLiteral("< %1").arg(traceText(line)));
}

void ControllerServer::forget(ClientConnection* client)
{
    trace(client, QStringLiteral("disconnected"));
    m_waiting.remove(client);
    m_clients.remove(client);
    client->deleteLater();
}

void ControllerServer::connectNotify(const QMetaMethod& signal)
{
    // Formatting two trace lines per request is most of a request's cost; nobody
    // following the trace, nothing is formatted.
    if (signal == QMetaMethod::fromSignal(&ControllerServer::traced))
        m_tracing = true;
}

void ControllerServer::trace(ClientConnection* client, const QString& text)
{
    emit traced(QStringLiteral("client %1 %2").arg(m_clients.value(client)).arg(text));
}
