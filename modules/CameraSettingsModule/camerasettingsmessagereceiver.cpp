#include "camerasettingsmessagereceiver.h"

int CameraSettingsMessagereceiver::transmit_message(int /*id*/, const char* /*sender*/, const char* text)
{
    const QString message = QString::fromUtf8(text); // a null text gives the empty string
    emit sendShowDynReflexSuppr(message == QLatin1String("ShowDynReflexSuppr"));
    return 0;
}
