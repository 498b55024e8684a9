#include "clientconnection.h"

#include "heldreplies.h"

#include <QHostAddress>
#include <QSocketNotifier>

#include <arpa/inet.h>
#include <cerrno>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// Short replies are gathered into one chunk, so that a burst of them leaves in few
// writes; a long one (a fault's megabyte) is queued as it is, shared, not copied.
const int kGatheredReplyLength = 4096;
const int kChunkSize = 64 * 1024;
const QByteArray kLineEnd("\n");
const int kReservedInput = 4096;
// How long the server looks for a quick client's next request before it goes back to
// sleep: a program on this machine asks again within microseconds, and waking a sleeping
// server (an idle core of a virtual machine above all) costs more than that.
const qint64 kAwaitNs = 30 * 1000;

QString peerOf(int descriptor)
{
    sockaddr_storage address = {};
    socklen_t length = sizeof address;
    if (::getpeername(descriptor, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        return QStringLiteral("(unknown)");
    const quint16 port = address.ss_family == AF_INET6 ? ntohs(reinterpret_cast<sockaddr_in6*>(&address)->sin6_port)
                                                       : ntohs(reinterpret_cast<sockaddr_in*>(&address)->sin_port);
    return QStringLiteral("%1:%2").arg(QHostAddress(reinterpret_cast<sockaddr*>(&address)).toString()).arg(port);
}

// A read or write of the socket, done again when a signal interrupted it.
template <typename Call>
ssize_t uninterrupted(Call call)
{
    ssize_t result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

// After a failed read or write: anything but "try later" means the connection is gone.
bool connectionLost()
{
    return errno != EAGAIN && errno != EWOULDBLOCK;
}

void chopLineEnd(QByteArray* line)
{
    while (line->endsWith('\n') || line->endsWith('\r'))
        line->chop(1);
}

} // namespace

ClientConnection::ClientConnection(qintptr descriptor, int maximumLineLength, QObject* parent)
    : QObject(parent),
      m_descriptor(int(descriptor)),
      m_maximumLineLength(maximumLineLength),
      // Room for the longest line and its "\r\n".
      m_inputLimit(maximumLineLength + 2),
      m_peer(peerOf(m_descriptor)),
      m_reader(new QSocketNotifier(descriptor, QSocketNotifier::Read, this)),
      m_writer(new QSocketNotifier(descriptor, QSocketNotifier::Write, this))
{
    ::fcntl(m_descriptor, F_SETFL, ::fcntl(m_descriptor, F_GETFL) | O_NONBLOCK);
    // Replies are answers someone waits for; gathering them is done here, not by Nagle.
    const int on = 1;
    ::setsockopt(m_descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    m_writer->setEnabled(false);
    // The input is taken line by line; a reserved buffer is kept when it empties instead
    // of being freed and allocated again for every request.
    m_input.reserve(kReservedInput);
    connect(m_reader, &QSocketNotifier::activated, this, &ClientConnection::readInput);
    connect(m_writer, &QSocketNotifier::activated, this, &ClientConnection::writeOutput);
}

ClientConnection::~ClientConnection()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

ClientConnection::Input ClientConnection::takeLine(QByteArray* line)
{
    const int end = m_input.indexOf('\n', m_inputPosition);
    const int rest = m_input.size() - m_inputPosition;
    if (end < 0 && rest > 0 && m_inputEnded) {
        // The end of the stream ends the last line as well: the client meant it.
        *line = m_input.mid(m_inputPosition);
        m_inputPosition = m_input.size();
    } else if (end >= 0) {
        *line = m_input.mid(m_inputPosition, end - m_inputPosition);
        m_inputPosition = end + 1;
    } else if (rest >= m_inputLimit) {
        return Input::TooLong;
    } else {
        return m_inputEnded ? Input::Finished : Input::Waiting;
    }
    chopLineEnd(line);
    updateNotifiers();
    return line->size() > m_maximumLineLength ? Input::TooLong : Input::Line;
}

void ClientConnection::send(const QByteArray& line)
{
    if (m_descriptor < 0)
        return;
    if (line.size() >= kGatheredReplyLength) {
        m_output.append(line);
        m_output.append(kLineEnd);
        m_gathering = false;
    } else if (m_gathering && !m_output.isEmpty() && m_output.last().size() < kChunkSize) {
        m_output.last().append(line).append('\n');
    } else {
        m_output.append(line + '\n');
        m_gathering = true;
    }
    m_unsent += line.size() + 1;
}

void ClientConnection::closeWhenSent()
{
    m_closing = true;
    flush();
}

bool ClientConnection::awaitRequest()
{
    if (!m_quick || m_descriptor < 0 || m_closing || m_inputEnded || !m_output.isEmpty())
        return false;
    pollfd watched = {m_descriptor, POLLIN, 0};
    const timespec none = {0, 0};
    do {
        if (::ppoll(&watched, 1, &none, nullptr) > 0) {
            takeInput();
            return true;
        }
        // The client may be waiting for this very core.
        ::sched_yield();
    } while (HeldReplies::now() - m_repliedNs < kAwaitNs);
    m_quick = false;
    return false;
}

void ClientConnection::readInput()
{
    if (m_descriptor < 0)
        return;
    m_quick = HeldReplies::now() - m_repliedNs < kAwaitNs;
    takeInput();
    emit inputArrived();
}

void ClientConnection::takeInput()
{
    if (m_inputPosition > 0) {
        m_input.remove(0, m_inputPosition);
        m_inputPosition = 0;
    }
    while (m_input.size() < m_inputLimit) {
        char buffer[16 * 1024];
        const size_t room = size_t(qMin<qint64>(sizeof buffer, m_inputLimit - m_input.size()));
        const ssize_t received = uninterrupted([&] { return ::recv(m_descriptor, buffer, room, 0); });
        if (received > 0) {
            m_input.append(buffer, int(received));
            // Less than there was room for: the socket is empty for now, and asking it
            // again only to hear so would cost a call per request. What comes later
            // wakes the notifier again.
            if (size_t(received) < room)
                break;
            continue;
        }
        if (received == 0) {
            m_inputEnded = true;
        } else if (connectionLost()) {
            shut(); // reset by the peer: nobody is left to answer
            return;
        }
        break;
    }
    updateNotifiers();
}

void ClientConnection::writeOutput()
{
    flush();
    if (m_descriptor >= 0 && m_output.isEmpty())
        emit repliesTaken();
}

void ClientConnection::flush()
{
    if (m_descriptor < 0)
        return;
    while (!m_output.isEmpty()) {
        const QByteArray& chunk = m_output.first();
        const ssize_t sent = uninterrupted([&] {
            return ::send(m_descriptor, chunk.constData() + m_outputPosition, size_t(chunk.size() - m_outputPosition),
                          MSG_NOSIGNAL);
        });
        if (sent < 0) {
            if (!connectionLost())
                break;
            shut(); // the client is gone; its replies with it
            return;
        }
        m_outputPosition += int(sent);
        m_unsent -= sent;
        if (m_outputPosition == chunk.size()) {
            m_output.removeFirst();
            m_outputPosition = 0;
        }
    }
    if (m_output.isEmpty() && m_closing) {
        shut();
        return;
    }
    if (m_output.isEmpty())
        m_repliedNs = HeldReplies::now();
    updateNotifiers();
}

void ClientConnection::updateNotifiers()
{
    if (m_descriptor < 0)
        return;
    const bool read = !m_closing && !m_inputEnded && m_input.size() - m_inputPosition < m_inputLimit;
    if (m_reader->isEnabled() != read)
        m_reader->setEnabled(read);
    const bool write = !m_output.isEmpty();
    if (m_writer->isEnabled() != write)
        m_writer->setEnabled(write);
}

void ClientConnection::shut()
{
    if (m_descriptor < 0)
        return;
    m_reader->setEnabled(false);
    m_writer->setEnabled(false);
    ::close(m_descriptor);
    m_descriptor = -1;
    m_closing = true;
    m_output.clear();
    m_unsent = 0;
    emit closed();
}
