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

const unsigned char Guard = 0xA5;
const int GuardSize = 32;

// Answers each request with the reply the current record describes.
class RecordLink : public ControllerLink
{
public:
    bool transact(const QByteArray& request, QByteArray* reply) override
    {
        if (mode % 3 == 2)
            return false;
        if (mode % 3 == 1) {
            *reply = text;
        } else {
            // A get is answered for its own path, so that the value reaches the parsers.
            const QByteArray path = request.startsWith("quarvo2 get ") ? request.mid(12) : request.mid(8);
            *reply = "quarvo2 set " + path + ' ' + text;
        }
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
    explicit GuardedBuffer(int size) : size(size) { memset(bytes, Guard, sizeof bytes); }
    char* data() { return reinterpret_cast<char*>(bytes + GuardSize); }
    // Nothing outside the buffer changed; a text written into it ends inside it.
    void verify(bool written) const
    {
        for (int i = 0; i < GuardSize; ++i)
            check(bytes[i] == Guard && bytes[GuardSize + size + i] == Guard);
        if (written)
            check(memchr(bytes + GuardSize, '\0', size_t(size)) != nullptr);
    }

    int size;
    unsigned char bytes[GuardSize + IOManager::LineBufferSize + GuardSize];
};

void call(IOManager& channel, unsigned char operation, const QByteArray& text)
{
    switch (operation % 7) {
    case 0: {
        GuardedBuffer value(IOManager::ValueBufferSize);
        value.verify(channel.getString(value.data(), "camera sync_group c%02d", 3) == 0);
        break;
    }
    case 1: {
        int number = 4711;
        if (channel.getInt(&number, "camera flash_intensity c%02d", 1) != 0)
            check(number == 4711);
        break;
    }
    case 2: {
        double number = 47.11;
        if (channel.getDouble(&number, "camera display_intensity c%02d", 1) == 0)
            check(std::isfinite(number));
        else
            check(number == 47.11);
        break;
    }
    case 3: {
        bool flag = true;
        if (channel.getBool(&flag, "camera has_sensor_gain c%02d", 1) != 0)
            check(flag);
        break;
    }
    case 4: {
        const int count = 1 + text.size() % 4;
        double numbers[5] = {47.11, 47.11, 47.11, 47.11, 47.11};
        const bool ok = channel.getDoubleArray(numbers, count, "camera min_max_sensor_gain c%02d", 1) == 0;
        for (int i = 0; i < count; ++i)
            check(ok ? std::isfinite(numbers[i]) : numbers[i] == 47.11);
        check(numbers[count] == 47.11);
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
    const QList<QByteArray> records = QByteArray(reinterpret_cast<const char*>(data), int(size)).split('\n');
    for (const QByteArray& record : records) {
        if (record.size() < 2)
            continue;
        link.mode = static_cast<unsigned char>(record.at(1));
        link.text = record.mid(2);
        call(channel, static_cast<unsigned char>(record.at(0)), link.text);
    }
    return 0;
}
