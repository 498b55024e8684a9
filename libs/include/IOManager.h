#ifndef IOMANAGER_H
#define IOMANAGER_H

#include <QByteArray>
#include <QList>
#include <QMetaType>
#include <QMultiHash>

#include <cstdarg>

class ControllerLink;
class HostMessageSink;
class MessageReceiver;

#if defined(__GNUC__)
#define IOMANAGER_PRINTF(fmt, first) __attribute__((format(printf, fmt, first)))
#else
#define IOMANAGER_PRINTF(fmt, first)
#endif

// The host's command channel to the tracking controller. Modules call its virtual
// operations with printf-style command texts; every operation returns 0 on success.
//
// Wire format (one line each way):
//   quarvo2 get <path>          -> quarvo2 set <path> <value>   |  quarvo2 err <code> "<text>"
//   quarvo2 set <path> <value>  -> the request echoed            |  quarvo2 err <code> "<text>"
//
// Callers pass buffers without their size: value texts (getString) must fit into
// ValueBufferSize bytes and whole reply lines (sendCommand) into LineBufferSize bytes,
// so longer texts are cut there, always zero-terminated. A failed get leaves the
// caller's variable untouched. Numbers go on the wire and come back from it in the C
// convention ("0.700000") whatever the process locale; a reply of NaN or infinity
// does not parse.
class IOManager
{
public:
    static const int ValueBufferSize = 100;
    static const int LineBufferSize = 200;
    // Longest command line that is formatted; a longer one is refused without sending.
    static const int CommandBufferSize = 1024;

    explicit IOManager(ControllerLink* link = nullptr, HostMessageSink* sink = nullptr);
    virtual ~IOManager();

    void setLink(ControllerLink* link);
    ControllerLink* link() const { return m_link; }
    void setMessageSink(HostMessageSink* sink);
    HostMessageSink* messageSink() const { return m_sink; }

    virtual int sendCommand(char* reply, const char* format, ...) IOMANAGER_PRINTF(3, 4);
    virtual int getString(char* result, const char* format, ...) IOMANAGER_PRINTF(3, 4);
    virtual int getInt(int* result, const char* format, ...) IOMANAGER_PRINTF(3, 4);
    virtual int getDouble(double* result, const char* format, ...) IOMANAGER_PRINTF(3, 4);
    virtual int getBool(bool* result, const char* format, ...) IOMANAGER_PRINTF(3, 4);
    virtual int getDoubleArray(double* result, int count, const char* format, ...) IOMANAGER_PRINTF(4, 5);
    virtual int setParameter(const char* format, ...) IOMANAGER_PRINTF(2, 3);
    virtual int showMessage(const char* type, const char* source, int level, const char* text);
    virtual int registerMessageReceiver(const char* moduleName, MessageReceiver* receiver);
    virtual int unregisterMessageReceiver(const char* moduleName, MessageReceiver* receiver);

    // Host side: hands a host message to every receiver registered for moduleName and
    // returns how many received it.
    int deliverMessage(const char* moduleName, int id, const char* sender, const char* text);
    QList<MessageReceiver*> receivers(const char* moduleName) const;

    // The value part of a get reply, or false when the reply does not answer the path.
    static bool parseGetReply(const QByteArray& path, const QByteArray& reply, QByteArray* value);

protected:
    // Formats a command; false when it does not fit into CommandBufferSize.
    static bool format(QByteArray* out, const char* format, va_list args) IOMANAGER_PRINTF(2, 0);
    // One request over the link; false on a missing link or a transport failure.
    bool exchange(const QByteArray& request, QByteArray* reply);
    // "quarvo2 get <path>" and the value of its reply.
    bool getValue(QByteArray* value, const char* format, va_list args) IOMANAGER_PRINTF(3, 0);

private:
    ControllerLink* m_link;
    HostMessageSink* m_sink;
    QMultiHash<QByteArray, MessageReceiver*> m_receivers;
};

Q_DECLARE_METATYPE(IOManager*)

#endif // IOMANAGER_H
