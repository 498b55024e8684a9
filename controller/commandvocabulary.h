#ifndef COMMANDVOCABULARY_H
#define COMMANDVOCABULARY_H

#include "commanddefinition.h"

#include <QHash>
#include <QList>
#include <QVector>

// Every command the controller understands, found by the head words of a path.
class CommandVocabulary
{
public:
    CommandVocabulary(); // the whole protocol

    void add(const CommandDefinition& definition);
    // The definition whose head starts the path words; *headWords tells how many
    // words the head took. Null when no command matches.
    const CommandDefinition* find(const QList<QByteArray>& words, int* headWords) const;
    const QVector<CommandDefinition>& definitions() const { return m_definitions; }

private:
    QVector<CommandDefinition> m_definitions;
    QHash<QByteArray, int> m_index;
    int m_longestHead = 0;
};

#endif // COMMANDVOCABULARY_H
