#include "hostmessagelog.h"

#include <cstdio>

HostMessageLog::HostMessageLog(QObject* parent)
    : QObject(parent)
{
}

void HostMessageLog::postMessage(const char* type, const char* source, int level, const char* text)
{
    const QString t = QString::fromUtf8(type);
    const QString s = QString::fromUtf8(source);
    const QString x = QString::fromUtf8(text);
    m_entries << QStringLiteral("%1|%2|%3|%4").arg(t, s).arg(level).arg(x);
    fprintf(stderr, "[%s] %s (%d): %s\n", type, source, level, text);
    emit messagePosted(t, s, level, x);
}
