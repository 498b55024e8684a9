#include "timedlink.h"

#include <QElapsedTimer>

bool TimedLink::transact(const QByteArray& request, QByteArray* reply)
{
    const QDateTime sent = QDateTime::currentDateTime();
    QElapsedTimer clock;
    clock.start();
    QByteArray answer;
    const bool ok = m_link && m_link->transact(request, &answer);
    const qint64 roundTripNs = clock.nsecsElapsed();
    if (m_observer)
        m_observer(request, answer, ok, sent, roundTripNs);
    if (ok && reply)
        *reply = answer;
    return ok;
}

QString TimedLink::lastError() const
{
    return m_link ? m_link->lastError() : QStringLiteral("no controller");
}
