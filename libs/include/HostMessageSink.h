#ifndef HOSTMESSAGESINK_H
#define HOSTMESSAGESINK_H

// Where IOManager::showMessage ends up on the host side: the host shows operator
// messages and passes global events on; tests record them.
class HostMessageSink
{
public:
    virtual ~HostMessageSink() = default;
    virtual void postMessage(const char* type, const char* source, int level, const char* text) = 0;
};

#endif // HOSTMESSAGESINK_H
