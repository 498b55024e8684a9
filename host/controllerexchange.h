#ifndef CONTROLLEREXCHANGE_H
#define CONTROLLEREXCHANGE_H

#include <QByteArray>
#include <QDateTime>
#include <QString>

// One request the host sent to its controller and what came back, as the command log
// shows it: when it went out and how long the host waited for the answer.
struct ControllerExchange
{
    QDateTime sent;
    qint64 roundTripNs = 0;
    QByteArray request;
    QByteArray reply;   // on a transport failure "(no reply: <why>)"
    bool ok = false;    // false: the transport failed, no reply came
    QString fault;      // the simulated controller's fault rule that hit, if any
};

#endif // CONTROLLEREXCHANGE_H
