#include "bareclient.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// Room for the longest reply the frontend takes, and its line end.
const int kBufferSize = 64 * 1024 + 2;

} // namespace

BareClient::~BareClient()
{
    if (m_socket >= 0)
        ::close(m_socket);
}

bool BareClient::connectTo(quint16 port)
{
    m_socket = ::socket(AF_INET, SOCK_STREAM, 0);
    if (m_socket < 0)
        return false;
    // One small request at a time: Nagle would only hold it back.
    const int on = 1;
    ::setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    m_buffer.resize(kBufferSize);
    m_buffered = 0;
    return ::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

bool BareClient::replay(const QList<QByteArray>& requests)
{
    for (const QByteArray& request : requests) {
        if (!sendLine(request) || !receiveLine())
            return false;
    }
    return true;
}

bool BareClient::sendLine(const QByteArray& request)
{
    const QByteArray line = request + '\n';
    for (qint64 sent = 0; sent < line.size();) {
        const ssize_t written = ::send(m_socket, line.constData() + sent, size_t(line.size() - sent), MSG_NOSIGNAL);
        if (written < 0 && errno != EINTR)
            return false;
        sent += qMax<ssize_t>(0, written);
    }
    return true;
}

bool BareClient::receiveLine()
{
    for (;;) {
        const char* end = static_cast<const char*>(std::memchr(m_buffer.constData(), '\n', size_t(m_buffered)));
        if (end) {
            const int taken = int(end - m_buffer.constData()) + 1;
            std::memmove(m_buffer.data(), m_buffer.constData() + taken, size_t(m_buffered - taken));
            m_buffered -= taken;
            return true;
        }
        if (m_buffered == m_buffer.size())
            return false; // a reply longer than any a frontend takes
        const ssize_t received = ::recv(m_socket, m_buffer.data() + m_buffered, size_t(m_buffer.size() - m_buffered), 0);
        if (received == 0 || (received < 0 && errno != EINTR))
            return false;
        m_buffered += int(qMax<ssize_t>(0, received));
    }
}
