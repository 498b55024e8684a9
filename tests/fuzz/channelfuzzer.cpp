// The channel's reply handling under any reply: every get and sendCommand of IOManager
// writes into a caller's buffer of the documented size (100 bytes for values, 200 for
// whole lines) between guard bytes, and a failed get leaves the caller's variable as it
// was. The input is a list of records, one per call, separated by '\n': byte 0 picks the
// operation, byte 1 how the reply is made (the rest as the value of a proper
// "quarvo2 set <path>" line, the rest as the whole line, or no reply at all), the rest is
// that text.
#include <ControllerLink.h>
#include <IOManager.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>

namespace {

// Answers each request with the reply the current record describes.
class RecordLink : public ControllerLink
{
public:
    bool transact(const QByteArray& request, QByteArray* reply) override
    {
        // A get is answered for its own path, so that the value reaches the parsers.
        *reply = mode % 3 == 1 ? text : "quarvo2 set " + request.mid(request.startsWith("quarvo2 get ") ? 12 : 8) + ' ' + text;
        return mode % 3 != 2;
    }

    unsigned char mode = 0;
    QByteArray text;
};

void check(bool condition)
{
    if (!condition)
        abort();
}

// Calls write into the middle of this, a caller's buffer of `size` bytes between guards;
// nothing outside it may change, and a text written into it ends inside it (a failed get
// writes nothing, so its caller ends the text).
void checkGuarded(int size, const std::function<void(char*)>& call)
{
    const int guard = 32;
    unsigned char bytes[guard + IOManager::LineBufferSize + guard];
    memset(bytes, 0xA5, sizeof bytes);
    call(reinterpret_cast<char*>(bytes + guard));
    for (int i = 0; i < guard; ++i)
        check(bytes[i] == 0xA5 && bytes[guard + size + i] == 0xA5);
    check(memchr(bytes + guard, '\0', size_t(size)) != nullptr);
}

void call(IOManager& channel, unsigned char operation, const QByteArray& text)
{
    const double untouched = 47.11;
    double numbers[5] = {untouched, untouched, untouched, untouched, untouched};
    const int count = operation % 7 == 4 ? 1 + text.size() % 4 : 1;
    int number = 4711;
    bool flag = true;
    int failed = 0;
    switch (operation % 7) {
    case 0:
        checkGuarded(IOManager::ValueBufferSize,
                     [&](char* value) { *value = channel.getString(value, "camera sync_group c%02d", 3) == 0 ? *value : '\0'; });
        return;
    case 1: check(channel.getInt(&number, "camera flash_intensity c%02d", 1) == 0 || number == 4711); return;
    case 2: failed = channel.getDouble(numbers, "camera display_intensity c%02d", 1); break;
    case 3: check(channel.getBool(&flag, "camera has_sensor_gain c%02d", 1) == 0 || flag); return;
    case 4: failed = channel.getDoubleArray(numbers, count, "camera min_max_sensor_gain c%02d", 1); break;
    case 5:
        memcpy(numbers, text.leftJustified(sizeof(double), '\0').constData(), sizeof(double));
        channel.setParameter("camera sensor_exposure c%02d %f", 2, numbers[0]);
        return;
    default:
        // Even a failed call leaves an empty line.
        checkGuarded(IOManager::LineBufferSize, [&](char* line) { channel.sendCommand(line, "quarvo2 get camera camera c%02d", 1); });
        return;
    }
    for (int i = 0; i < count; ++i)
        check(failed == 0 ? std::isfinite(numbers[i]) : numbers[i] == untouched);
    check(numbers[count] == untouched);
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
