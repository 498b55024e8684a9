#ifndef CLIENTCONNECTION_H
#define CLIENTCONNECTION_H

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

class QSocketNotifier;

// One client of the simulated controller's server, on a socket descriptor it reads and
// writes itself. QTcpSocket closes both directions as soon as the peer ends its sending
// side, so a client that sends its requests and then shuts down its side (what
// "printf ... | nc -N" does) would lose every reply; here the end of the client's stream
// only means that no further request comes.
// Input is read only while less than one line limit is buffered, so a client that sends
// faster than the server takes its lines is held back by TCP, not by memory.
class ClientConnection : public QObject
{
    Q_OBJECT

public:
    enum class Input {
        Line,     // a request line was taken
        Waiting,  // no whole line yet
        TooLong,  // the line does not fit the limit; the client is out of step
        Finished, // the client ended its stream after its last line
    };

    // Takes over the connected descriptor.
    ClientConnection(qintptr descriptor, int maximumLineLength, QObject* parent = nullptr);
    ~ClientConnection() override;

    // "address:port" of the client, as the trace shows it.
    QString peer() const { return m_peer; }

    // The next request line, without its line end.
    Input takeLine(QByteArray* line);
    // Queues a reply line; it goes out with the next flush().
    void send(const QByteArray& line);
    // Sends the queued replies as far as the socket takes them now, the rest as the
    // client takes more. Writing at once, not from the write notifier, spares each
    // request a turn of the event loop and two changes of the notifier.
    void flush();
    // Looks briefly for the next request of a client whose requests have been following
    // its replies at once, and takes it in; true when it came (without inputArrived()).
    bool awaitRequest();
    // Reply bytes the client has not taken yet.
    qint64 unsentBytes() const { return m_unsent; }
    // Reads nothing more; sends what is queued, then closes.
    void closeWhenSent();
    // Closing or closed: nothing more is read or sent.
    bool isClosing() const { return m_closing; }

signals:
    void inputArrived();  // new bytes, or the end of the client's stream
    void repliesTaken();  // every reply queued while the socket was full went out
    void closed();        // the connection is gone

private:
    void readInput();
    void takeInput();
    void writeOutput();
    void updateNotifiers();
    void shut(); // closes the descriptor and says so

    int m_descriptor;
    int m_maximumLineLength;
    int m_inputLimit;
    QString m_peer;
    QSocketNotifier* m_reader;
    QSocketNotifier* m_writer;
    QByteArray m_input;
    int m_inputPosition = 0; // start of the first line not yet taken
    bool m_inputEnded = false;
    QList<QByteArray> m_output;
    int m_outputPosition = 0; // bytes of m_output.first() already sent
    bool m_gathering = false; // m_output.last() is a chunk of short replies built here
    qint64 m_unsent = 0;
    bool m_closing = false;
    bool m_quick = false;   // the last request came right after the replies before it
    qint64 m_repliedNs = 0; // when the last reply went out, HeldReplies::now()
};

#endif // CLIENTCONNECTION_H
