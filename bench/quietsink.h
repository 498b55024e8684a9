#ifndef QUIETSINK_H
#define QUIETSINK_H

#include <HostMessageSink.h>

// Takes the module's messages without showing them: a benchmark times the dialog, not a
// message panel.
class QuietSink : public HostMessageSink
{
public:
    void postMessage(const char*, const char*, int, const char*) override { ++count; }
    int count = 0;
};

#endif // QUIETSINK_H
