#include "TcpControllerLink.h"

#include <QDeadlineTimer>
#include <QTcpSocket>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <poll.h>
#include <sched.h>
#include <sys/socket.h>

namespace {

const qint64 kNanosecondsPerSecond = 1000 * 1000 * 1000;

// Room for the longest line and its "\r\n": the socket never buffers more than that,
// so a peer that sends without end cannot make the frontend hold it.
const qint64 kReadBufferSize = TcpControllerLink::MaximumReplyLength + 2;

void chopLineEnd(QByteArray* line)
{
    while (line->endsWith('\n') || line->endsWith('\r'))
        line->chop(1);
}

// The wire carries printable text; a control character (a NUL above all, which would
// cut the text short in a caller's buffer) means the line is not a reply.
bool holdsControlCharacter(const QByteArray& line)
{
    for (const char c : line) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f)
            return true;
    }
    return false;
}

// Waits until the descriptor is ready for the events or the deadline has passed, to the
// nanosecond (a wait in whole milliseconds would sleep up to a millisecond too long, or
// not at all); false when the deadline passed first. An error or a hang-up counts as
// ready: the read or write that follows reports it.
bool waitFor(int descriptor, short events, const QDeadlineTimer& deadline)
{
    pollfd watched = {descriptor, events, 0};
    for (;;) {
        const qint64 left = qMax<qint64>(0, deadline.remainingTimeNSecs());
        const timespec timeout = {time_t(left / kNanosecondsPerSecond), long(left % kNanosecondsPerSecond)};
        const int ready = ::ppoll(&watched, 1, &timeout, nullptr);
        if (ready >= 0)
            return ready > 0;
        if (errno != EINTR)
            return true;
    }
}

// How long a call spins for the reply before it sleeps, when the controller's last reply
// came within that time: on the same machine a reply takes microseconds, and a thread
// asleep in ppoll then costs more to wake (a virtual machine's idle core above all) than
// the reply took. A controller on the network never answers that fast and is not spun for.
const qint64 kSpinNs = 50 * 1000;

qint64 monotonicNs()
{
    timespec now = {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * kNanosecondsPerSecond + now.tv_nsec;
}

// Spins on the descriptor until it is readable or kSpinNs have passed since `since`;
// true when it became readable.
bool spinFor(int descriptor, qint64 since)
{
    pollfd watched = {descriptor, POLLIN, 0};
    const timespec none = {0, 0};
    do {
        if (::ppoll(&watched, 1, &none, nullptr) > 0)
            return true;
        // The controller may be waiting for this very core.
        ::sched_yield();
    } while (monotonicNs() - since < kSpinNs);
    return false;
}

bool tryLater()
{
    return errno == EINTR || errno == EAGAIN || errno == EWOULDBLOCK;
}

} // namespace

TcpControllerLink::TcpControllerLink(const QString& hostName, quint16 port)
    : m_hostName(hostName), m_port(port)
{
}

TcpControllerLink::~TcpControllerLink() = default;

QString TcpControllerLink::address() const
{
    const QString host = m_hostName.contains(QLatin1Char(':')) ? QStringLiteral("[%1]").arg(m_hostName) : m_hostName;
    return QStringLiteral("%1:%2").arg(host).arg(m_port);
}

void TcpControllerLink::setReplyTimeoutMs(int ms)
{
    m_timeoutMs = qMax(1, ms);
}

void TcpControllerLink::setTrafficObserver(TrafficObserver observer)
{
    m_observer = std::move(observer);
}

bool TcpControllerLink::isConnected() const
{
    return m_socket && m_socket->state() == QAbstractSocket::ConnectedState;
}

void TcpControllerLink::disconnectFromController()
{
    if (m_socket)
        m_socket->abort();
}

QString TcpControllerLink::lastError() const
{
    return m_lastError;
}

bool TcpControllerLink::transact(const QByteArray& request, QByteArray* reply)
{
    m_lastError.clear();
    QByteArray line;
    // One deadline for the whole call: the frontend waits at most the time-out, however
    // the time is split between connecting and waiting for the answer.
    const QDeadlineTimer deadline(m_timeoutMs);
    bool ok = false;
    if (request.contains('\n') || request.contains('\r')) {
        fail(QStringLiteral("the request holds a line break"), false);
    } else if (m_silent && !m_retryAt.hasExpired()) {
        // Waiting out the time-out again on every call would freeze the frontend for
        // minutes while it opens a dialog; one time-out says enough.
        fail(silenceError(), false);
    } else {
        // A controller that answers, or refuses at once, is not silent; only another
        // time-out makes it so again.
        m_silent = false;
        ok = ensureConnected(deadline) && send(request + '\n', deadline) && receiveLine(&line, deadline);
    }
    if (ok && reply)
        *reply = line;
    if (m_observer)
        m_observer(request, ok ? line : QByteArray(), ok);
    return ok;
}

bool TcpControllerLink::ensureConnected(const QDeadlineTimer& deadline)
{
    if (isConnected()) {
        // Bytes nobody asked for mean the controller is out of step with us (a reply
        // of two lines, say); a fresh connection is the only way to be sure that the
        // next line read answers the next request.
        if (m_socket->bytesAvailable() == 0)
            return true;
        m_socket->abort();
    }
    if (!m_socket) {
        m_socket.reset(new QTcpSocket);
        m_socket->setReadBufferSize(kReadBufferSize);
    }
    m_socket->abort();
    m_socket->connectToHost(m_hostName, m_port);
    if (m_socket->waitForConnected(int(qMax<qint64>(1, deadline.remainingTime())))) {
        // A request goes out in one piece and waits for its answer; Nagle's algorithm
        // could only hold it back.
        m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        return true;
    }
    if (m_socket->error() == QAbstractSocket::SocketTimeoutError)
        return timeOut(QStringLiteral("no connection within %1 ms").arg(m_timeoutMs));
    return fail(QStringLiteral("cannot connect to the controller at %1: %2").arg(address(), m_socket->errorString()), true);
}

// Requests and replies go through the connected socket's descriptor directly: Qt's
// socket would copy each line into its write buffer, and arm and disarm its write
// notifier in the caller's event loop, for every request. The QTcpSocket still makes
// and ends the connection and keeps what arrives between calls, which makes the next
// call start on a fresh connection.
bool TcpControllerLink::send(const QByteArray& line, const QDeadlineTimer& deadline)
{
    const int descriptor = int(m_socket->socketDescriptor());
    for (qint64 sent = 0; sent < line.size();) {
        const ssize_t written =
            ::send(descriptor, line.constData() + sent, size_t(line.size() - sent), MSG_NOSIGNAL);
        if (written >= 0) {
            sent += written;
        } else if (!tryLater()) {
            return fail(QStringLiteral("cannot send to the controller: %1").arg(qt_error_string(errno)), true);
        } else if (!waitFor(descriptor, POLLOUT, deadline)) {
            return timeOut(QStringLiteral("the request was not taken within %1 ms").arg(m_timeoutMs));
        }
    }
    return true;
}

bool TcpControllerLink::receiveLine(QByteArray* line, const QDeadlineTimer& deadline)
{
    const int descriptor = int(m_socket->socketDescriptor());
    const qint64 sent = monotonicNs();
    bool first = true;
    QByteArray received;
    for (;;) {
        // The line end has not come within the room for the longest line: whatever
        // follows, the line is too long.
        if (received.size() >= kReadBufferSize)
            return fail(QStringLiteral("the reply is longer than %1 bytes").arg(MaximumReplyLength), true);
        const bool spun = first && m_quickPeer && spinFor(descriptor, sent);
        if (!spun && !waitFor(descriptor, POLLIN, deadline)) {
            // The answer may still come; on this connection it would be taken for the
            // answer to the next request, so the connection goes.
            return timeOut(QStringLiteral("no reply within %1 ms").arg(m_timeoutMs));
        }
        if (first)
            m_quickPeer = monotonicNs() - sent < kSpinNs;
        first = false;
        char chunk[4096];
        const qint64 room = qMin<qint64>(sizeof chunk, kReadBufferSize - received.size());
        const ssize_t count = ::recv(descriptor, chunk, size_t(room), 0);
        // Nothing at the end of the stream, or an error: a reply that came with the
        // close was taken by an earlier turn.
        if (count == 0 || (count < 0 && !tryLater()))
            return fail(QStringLiteral("the controller closed the connection"), true);
        if (count < 0)
            continue;
        const auto* end = static_cast<const char*>(std::memchr(chunk, '\n', size_t(count)));
        received.append(chunk, end ? int(end - chunk) : int(count));
        if (!end)
            continue;
        *line = received;
        chopLineEnd(line);
        if (line->size() > MaximumReplyLength)
            return fail(QStringLiteral("the reply is longer than %1 bytes").arg(MaximumReplyLength), true);
        // Bytes after the line end were not asked for: the controller is out of step
        // with us (a reply of two lines, say), and only a fresh connection makes sure
        // that the next line read answers the next request.
        const bool inStep = end == chunk + count - 1;
        if (holdsControlCharacter(*line))
            return fail(QStringLiteral("the reply holds control characters"), !inStep);
        if (!inStep)
            m_socket->abort();
        return true;
    }
}

bool TcpControllerLink::fail(const QString& error, bool dropConnection)
{
    m_lastError = error;
    if (dropConnection && m_socket)
        m_socket->abort();
    return false;
}

bool TcpControllerLink::timeOut(const QString& reason)
{
    m_silent = true;
    m_silenceReason = reason;
    m_retryAt.setRemainingTime(RetryIntervalMs);
    return fail(silenceError(), true);
}

QString TcpControllerLink::silenceError() const
{
    return QStringLiteral("the controller at %1 does not answer: %2; calls fail at once until it answers again")
        .arg(address(), m_silenceReason);
}

bool TcpControllerLink::parseAddress(const QString& text, QString* hostName, quint16* port, QString* error)
{
    const int colon = text.lastIndexOf(QLatin1Char(':'));
    QString host = colon > 0 ? text.left(colon) : QString();
    if (host.startsWith(QLatin1Char('[')) && host.endsWith(QLatin1Char(']')))
        host = host.mid(1, host.size() - 2);
    else if (host.contains(QLatin1Char(':')))
        host.clear(); // an IPv6 address needs its brackets, or the port is ambiguous
    bool numeric = false;
    const uint number = colon > 0 ? text.mid(colon + 1).toUInt(&numeric, 10) : 0;
    if (host.isEmpty() || !numeric || number > 65535) {
        if (error)
            *error = QStringLiteral("\"%1\" is no address: write HOST:PORT, such as 127.0.0.1:4711").arg(text);
        return false;
    }
    if (hostName)
        *hostName = host;
    if (port)
        *port = quint16(number);
    return true;
}
