#ifndef HOSTMESSAGELOG_H
#define HOSTMESSAGELOG_H

#include "HostMessageSink.h"

#include <QObject>
#include <QStringList>

// Receives what modules post through IOManager::showMessage: operator messages and
// global events. Keeps them, prints them to the log and tells the window.
class HostMessageLog : public QObject, public HostMessageSink
{
    Q_OBJECT

public:
    explicit HostMessageLog(QObject* parent = nullptr);

    void postMessage(const char* type, const char* source, int level, const char* text) override;

    // "type|source|level|text" of every message so far, oldest first.
    const QStringList& entries() const { return m_entries; }
    void clear() { m_entries.clear(); }

signals:
    void messagePosted(const QString& type, const QString& source, int level, const QString& text);

private:
    QStringList m_entries;
};

#endif // HOSTMESSAGELOG_H
