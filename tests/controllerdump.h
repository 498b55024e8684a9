#ifndef CONTROLLERDUMP_H
#define CONTROLLERDUMP_H

// Everything a controller answers about its system and its cameras, path by path from
// the simulated controller's own vocabulary, so that a suite compares the controller's
// whole state and not just the values it thought of.
#include <commandvocabulary.h>

#include <QByteArray>
#include <QStringList>

#include <functional>

inline QStringList controllerDump(const std::function<QByteArray(const QByteArray&)>& get)
{
    const int cameras = get("camera number_of_cameras").toInt();
    QStringList lines;
    const CommandVocabulary vocabulary;
    for (const CommandDefinition& definition : vocabulary.definitions()) {
        if (!definition.get || definition.words > 0)
            continue;
        for (int n = definition.onCamera ? 1 : 0; n <= (definition.onCamera ? cameras : 0); ++n) {
            const QByteArray path = n > 0 ? definition.head + " c" + QByteArray::number(n).rightJustified(2, '0')
                                          : definition.head;
            lines << QString::fromLatin1(path + " = " + get(path));
        }
    }
    return lines;
}

#endif // CONTROLLERDUMP_H
