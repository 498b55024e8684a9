#ifndef MESSAGERECEIVER_H
#define MESSAGERECEIVER_H

// What a module registers with the host to receive host messages addressed to it.
class MessageReceiver
{
public:
    virtual int transmit_message(int id, const char* sender, const char* text) = 0;

protected:
    // Receivers are owned and deleted by the module that registered them, never
    // through this interface.
    ~MessageReceiver() = default;
};

#endif // MESSAGERECEIVER_H
