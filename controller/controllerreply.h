#ifndef CONTROLLERREPLY_H
#define CONTROLLERREPLY_H

#include <QByteArray>

// What the controller does with one request: the line it answers, how late it
// answers, or whether it drops the connection instead of answering.
struct ControllerReply
{
    QByteArray line;
    int delayMs = 0;
    bool drop = false;
};

#endif // CONTROLLERREPLY_H
