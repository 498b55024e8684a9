#include "commandvocabulary.h"

#include "commandfamilies.h"

CommandVocabulary::CommandVocabulary()
{
    addSystemCommands(*this);
    addIdentityCommands(*this);
    addFlashCommands(*this);
    addDisplayCommands(*this);
    addMarkerCommands(*this);
    addSensorCommands(*this);
    addSyncCommands(*this);
}

void CommandVocabulary::add(const CommandDefinition& definition)
{
    Q_ASSERT(!m_index.contains(definition.head));
    m_index.insert(definition.head, m_definitions.size());
    m_definitions.append(definition);
    m_longestHead = qMax(m_longestHead, definition.head.count(' ') + 1);
}

const CommandDefinition* CommandVocabulary::find(const QList<QByteArray>& words, int* headWords) const
{
    // The longest head wins: "camera limit marker_max_size" before any shorter one.
    for (int n = qMin(m_longestHead, words.size()); n >= 1; --n) {
        QByteArray head = words.at(0);
        for (int i = 1; i < n; ++i)
            head += ' ' + words.at(i);
        const auto it = m_index.constFind(head);
        if (it != m_index.constEnd()) {
            *headWords = n;
            return &m_definitions.at(it.value());
        }
    }
    return nullptr;
}
