#include "IOManager.h"

#include "ControllerLink.h"
#include "HostMessageSink.h"
#include "MessageReceiver.h"

#include <QDebug>
#include <QList>
#include <QVector>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <locale.h>

namespace {

const QByteArray kGetPrefix("quarvo2 get ");
const QByteArray kSetPrefix("quarvo2 set ");

// Copies text into a caller's buffer of the given size, cut and zero-terminated.
void copyBounded(char* dest, const QByteArray& text, int size)
{
    if (!dest)
        return;
    const int n = qMin(text.size(), size - 1);
    memcpy(dest, text.constData(), size_t(n));
    dest[n] = '\0';
}

// Parses a fetched value and stores it only when both worked: callers keep using
// their variable after a failed get.
template <typename T, typename Parse>
int storeParsed(bool fetched, const QByteArray& value, T* result, Parse parse)
{
    // The parsers underneath read a C string: "12\0x" would pass for 12.
    if (!fetched || value.contains('\0'))
        return 1;
    bool ok = false;
    const T parsed = parse(value, &ok);
    if (!ok)
        return 1;
    if (result)
        *result = parsed;
    return 0;
}

// A number of a reply: the C convention whatever the locale (QByteArray's own parser
// ignores it), and finite, as the controller never means NaN or infinity.
bool parseNumber(const QByteArray& text, double* value)
{
    bool ok = false;
    *value = text.toDouble(&ok);
    return ok && std::isfinite(*value);
}

// The C locale, created once and kept (glibc hands out its static object for it).
// Should that fail, uselocale(0) only asks and switches nothing.
locale_t cLocale()
{
    static const locale_t c = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    return c;
}

} // namespace

IOManager::IOManager(ControllerLink* link, HostMessageSink* sink)
    : m_link(link), m_sink(sink)
{
}

IOManager::~IOManager() = default;

void IOManager::setLink(ControllerLink* link)
{
    m_link = link;
}

void IOManager::setMessageSink(HostMessageSink* sink)
{
    m_sink = sink;
}

bool IOManager::format(QByteArray* out, const char* format, va_list args)
{
    if (!format)
        return false;
    char buffer[CommandBufferSize];
    // The wire takes numbers with a decimal point, but vsnprintf writes them the way
    // LC_NUMERIC says, and the host's application object adopts the desktop's
    // ("0,700000" on a German one). uselocale switches this thread only, for this one
    // call: the process locale, which the host's other modules share, stays as it is.
    const locale_t previous = uselocale(cLocale());
    const int n = vsnprintf(buffer, sizeof buffer, format, args);
    uselocale(previous);
    if (n < 0 || n >= int(sizeof buffer))
        return false;
    *out = QByteArray(buffer, n);
    return true;
}

bool IOManager::exchange(const QByteArray& request, QByteArray* reply)
{
    if (!m_link)
        return false;
    // A line break inside a command would split it into two requests on the wire.
    if (request.contains('\n') || request.contains('\r'))
        return false;
    QByteArray line;
    if (!m_link->transact(request, &line))
        return false;
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    *reply = line;
    return true;
}

bool IOManager::parseGetReply(const QByteArray& path, const QByteArray& reply, QByteArray* value)
{
    const QByteArray head = kSetPrefix + path;
    if (!reply.startsWith(head))
        return false;
    if (reply.size() == head.size()) {
        *value = QByteArray();
        return true;
    }
    if (reply.at(head.size()) != ' ')
        return false;
    *value = reply.mid(head.size() + 1);
    return true;
}

bool IOManager::getValue(QByteArray* value, const char* format, va_list args)
{
    QByteArray path;
    if (!IOManager::format(&path, format, args))
        return false;
    QByteArray reply;
    if (!exchange(kGetPrefix + path, &reply))
        return false;
    return parseGetReply(path, reply, value);
}

int IOManager::sendCommand(char* reply, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    QByteArray request;
    const bool formatted = IOManager::format(&request, format, args);
    va_end(args);
    QByteArray line;
    const bool ok = formatted && exchange(request, &line);
    copyBounded(reply, ok ? line : QByteArray(), LineBufferSize);
    return ok ? 0 : 1;
}

int IOManager::getString(char* result, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    QByteArray value;
    const bool ok = getValue(&value, format, args);
    va_end(args);
    if (!ok)
        return 1;
    copyBounded(result, value, ValueBufferSize);
    return 0;
}

int IOManager::getInt(int* result, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    QByteArray value;
    const bool fetched = getValue(&value, format, args);
    va_end(args);
    return storeParsed(fetched, value, result, [](const QByteArray& v, bool* ok) { return v.toInt(ok, 10); });
}

int IOManager::getDouble(double* result, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    QByteArray value;
    const bool fetched = getValue(&value, format, args);
    va_end(args);
    return storeParsed(fetched, value, result, [](const QByteArray& v, bool* ok) {
        double number = 0.0;
        *ok = parseNumber(v, &number);
        return number;
    });
}

int IOManager::getBool(bool* result, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    QByteArray value;
    const bool fetched = getValue(&value, format, args);
    va_end(args);
    return storeParsed(fetched, value, result, [](const QByteArray& v, bool* ok) {
        // flags are the exact words, "Yes" is no flag
        *ok = v == "yes" || v == "no";
        return v == "yes";
    });
}

int IOManager::getDoubleArray(double* result, int count, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    QByteArray value;
    const bool ok = getValue(&value, format, args);
    va_end(args);
    if (!ok || count < 1)
        return 1;
    const QList<QByteArray> words = value.split(' ');
    if (words.size() != count)
        return 1;
    QVector<double> numbers(count);
    for (int i = 0; i < count; ++i) {
        if (!parseNumber(words.at(i), &numbers[i]))
            return 1;
    }
    if (result)
        memcpy(result, numbers.constData(), sizeof(double) * size_t(count));
    return 0;
}

int IOManager::setParameter(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    QByteArray tail;
    const bool formatted = IOManager::format(&tail, format, args);
    va_end(args);
    if (!formatted)
        return 1;
    const QByteArray request = kSetPrefix + tail;
    QByteArray reply;
    // The controller confirms a set by echoing it; anything else is a refusal.
    return exchange(request, &reply) && reply == request ? 0 : 1;
}

int IOManager::showMessage(const char* type, const char* source, int level, const char* text)
{
    if (m_sink)
        m_sink->postMessage(type ? type : "", source ? source : "", level, text ? text : "");
    else
        qInfo("%s [%s] %d: %s", type ? type : "", source ? source : "", level, text ? text : "");
    return 0;
}

int IOManager::registerMessageReceiver(const char* moduleName, MessageReceiver* receiver)
{
    if (!moduleName || !receiver)
        return 1;
    m_receivers.insert(QByteArray(moduleName), receiver);
    return 0;
}

int IOManager::unregisterMessageReceiver(const char* moduleName, MessageReceiver* receiver)
{
    if (!moduleName)
        return 1;
    return m_receivers.remove(QByteArray(moduleName), receiver) > 0 ? 0 : 1;
}

int IOManager::deliverMessage(const char* moduleName, int id, const char* sender, const char* text)
{
    if (!moduleName)
        return 0;
    const QList<MessageReceiver*> targets = m_receivers.values(QByteArray(moduleName));
    for (MessageReceiver* receiver : targets)
        receiver->transmit_message(id, sender, text);
    return targets.size();
}

QList<MessageReceiver*> IOManager::receivers(const char* moduleName) const
{
    return moduleName ? m_receivers.values(QByteArray(moduleName)) : QList<MessageReceiver*>();
}
