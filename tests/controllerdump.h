#ifndef CONTROLLERDUMP_H
#define CONTROLLERDUMP_H

// Everything a controller holds about its system and its cameras, path by path from the
// simulated controller's own vocabulary, so that a suite compares the controller's whole
// state and not just the values it thought of.
#include <commandvocabulary.h>
#include <simulatedcontroller.h>

#include <QStringList>

// Every path a get reads without further words, on each of the cameras.
inline QList<QByteArray> readablePaths(int cameras)
{
    static const CommandVocabulary vocabulary;
    QList<QByteArray> paths;
    for (const CommandDefinition& definition : vocabulary.definitions()) {
        for (int n = definition.onCamera; definition.get && definition.words == 0 && n <= (definition.onCamera ? cameras : 0); ++n)
            paths << (n > 0 ? definition.head + " c" + QByteArray::number(n).rightJustified(2, '0') : definition.head);
    }
    return paths;
}

inline QStringList controllerDump(const SimulatedController& controller)
{
    QStringList lines;
    for (const QByteArray& path : readablePaths(controller.peek("camera number_of_cameras").toInt()))
        lines << QString::fromLatin1(path + " = " + controller.peek(path));
    return lines;
}

#endif // CONTROLLERDUMP_H
