#ifndef BARECLIENT_H
#define BARECLIENT_H

#include <QByteArray>
#include <QList>

// A controller client as bare as it gets: one blocking POSIX socket to a loopback port,
// one request at a time, no event loop, no buffering beyond one reply. What it takes to
// replay a trace is what the wire and the controller cost, and nothing of a frontend.
class BareClient
{
public:
    BareClient() = default;
    BareClient(const BareClient&) = delete;
    BareClient& operator=(const BareClient&) = delete;
    ~BareClient();

    bool connectTo(quint16 port);
    // Sends each request and waits for its reply line; false when the connection fails.
    bool replay(const QList<QByteArray>& requests);

private:
    bool sendLine(const QByteArray& request);
    bool receiveLine();

    int m_socket = -1;
    QByteArray m_buffer;  // received bytes; a reply is one line of it
    int m_buffered = 0;   // bytes of m_buffer received and not yet taken
};

#endif // BARECLIENT_H
