#ifndef CAMERASETTINGSMESSAGERECEIVER_H
#define CAMERASETTINGSMESSAGERECEIVER_H

#include "MessageReceiver.h"

#include <QObject>

class IOManager;

// Receives the host's messages for this module and turns them into a signal, so that
// the dialog's slot runs on the dialog's thread whichever thread the host delivers on.
class CameraSettingsMessagereceiver : public QObject, public MessageReceiver
{
    Q_OBJECT

public:
    // The channel is not needed: messages only switch a flag of the dialog.
    CameraSettingsMessagereceiver(QObject* parent, IOManager* /*iom*/) : QObject(parent) {}

    // Every message decides the flag anew: only "ShowDynReflexSuppr" switches it on.
    int transmit_message(int id, const char* sender, const char* text) override;

signals:
    void sendShowDynReflexSuppr(bool show);
};

#endif // CAMERASETTINGSMESSAGERECEIVER_H
