// The channel's reply handling under any reply: every get and sendCommand of IOManager
// writes into a caller's buffer of the documented size (100 bytes for values, 200 for
// whole lines) between guard bytes, and a failed get leaves the caller's variable as it
// was. The input is a list of records, one per call, separated by '\n':
//   byte 0: the operation (getString, getInt, getDouble, getBool, getDoubleArray with
//           1 to 4 values, setParameter with a double, sendCommand);
//   byte 1: how the reply is made: the rest as the value of a proper "quarvo2 set <path>"
//           line, the rest verbatim as the whole line, or no reply at all;
//   the rest: that text.
#include <ControllerLink.h>
#include <IOManager.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

// Answers each request with the reply the current record describes.
class RecordLink : public ControllerLink
{
public:
    bool transact(const QByteArray& request, QByteArray* reply) override
    {
        if (mode % 3 == 2)
            return false;
        // A get is answered for its own path, so that the value reaches the parsers.
        const QByteArray path = request.startsWith("quarvo2 get ") ? request.mid(12) : request.mid(8);
        *reply = mode % 3 == 1 ? text : "quarvo2 set " + path + ' ' + text;
        return true;
    }

    unsigned char mode = 0;
    QByteArray text;
};

void check(bool condition)
{
    if (!condition)
        abort();
}

// A caller's buffer of `size` bytes with guard bytes on both sides.
struct GuardedBuffer
{
    static const unsigned char Guard = 0xA5;
    static const int GuardSize = 32;

    explicit GuardedBuffer(int size) : size(size) { memset(bytes, Guard, sizeof bytes); }
    char* data() { return reinterpret_cast<char*>(bytes + GuardSize); }
    // Nothing outside the buffer changed; a text written into it ends inside it.
    void verify(bool written) const
    {
        for (int i = 0; i < GuardSize; ++i)
            check(bytes[i] == Guard && bytes[GuardSize + size + i] == Guard);
        check(!written || memchr(bytes + GuardSize, '\0', size_t(size)));
    }

    int size;
    unsigned char bytes[GuardSize + IOManager::LineBufferSize + GuardSize];
};

void call(IOManager& channel, unsigned char operation, const QByteArray& text)
{
    const double untouched = 47.11;
    switch (operation % 7) {
    case 0: {
        GuardedBuffer value(IOManager::ValueBufferSize);
        value.verify(channel.getString(value.data(), "camera sync_group c%02d", 3) == 0);
        break;
    }
    case 1: {
        int number = 4711;
        check(channel.getInt(&number, "camera flash_intensity c%02d", 1) == 0 || number == 4711);
        break;
    }
    case 2: {
        double number = untouched;
        check(channel.getDouble(&number, "camera display_intensity c%02d", 1) == 0 ? std::isfinite(number) : number == untouched);
        break;
    }
    case 3: {
        bool flag = true;
        check(channel.getBool(&flag, "camera has_sensor_gain c%02d", 1) == 0 || flag);
        break;
    }
    case 4: {
        const int count = 1 + text.size() % 4;
        double numbers[5] = {untouched, untouched, untouched, untouched, untouched};
        const bool ok = channel.getDoubleArray(numbers, count, "camera min_max_sensor_gain c%02d", 1) == 0;
        for (int i = 0; i < count; ++i)
            check(ok ? std::isfinite(numbers[i]) : numbers[i] == untouched);
        check(numbers[count] == untouched);
        break;
    }
    case 5: {
        double number = 0.0;
        memcpy(&number, text.leftJustified(sizeof number, '\0').constData(), sizeof number);
        channel.setParameter("camera sensor_exposure c%02d %f", 2, number);
        break;
    }
    default: {
        GuardedBuffer line(IOManager::LineBufferSize);
        // Even a failed call leaves an empty line.
        channel.sendCommand(line.data(), "quarvo2 get camera camera c%02d", 1);
        line.verify(true);
        break;
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    RecordLink link;
    IOManager channel(&link);
    for (const QByteArray& record : QByteArray(reinterpret_cast<const char*>(data), int(size)).split('\n')) {
        if (record.size() < 2)
            continue;
        link.mode = static_cast<unsigned char>(record.at(1));
        link.text = record.mid(2);
        call(channel, static_cast<unsigned char>(record.at(0)), link.text);
    }
    return 0;
}
