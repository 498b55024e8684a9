#ifndef COMMANDLOGENTRY_H
#define COMMANDLOGENTRY_H

#include <QByteArray>
#include <QMetaType>
#include <QString>

// One request the controller received, with what it answered, how long it took to
// answer (without an injected delay) and the fault rule that hit it, if any.
struct CommandLogEntry
{
    QByteArray request;
    QByteArray reply;
    qint64 nanoseconds = 0;
    QString fault; // name of the fault rule that hit, empty if none
};

Q_DECLARE_METATYPE(CommandLogEntry)

#endif // COMMANDLOGENTRY_H
