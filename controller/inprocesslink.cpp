#include "inprocesslink.h"

#include "simulatedcontroller.h"

#include <QThread>

InProcessLink::InProcessLink(SimulatedController* controller)
    : m_controller(controller)
{
}

void InProcessLink::setReplyTimeoutMs(int ms)
{
    m_timeoutMs = qMax(0, ms);
}

bool InProcessLink::transact(const QByteArray& request, QByteArray* reply)
{
    m_lastError.clear();
    if (!m_controller) {
        m_lastError = QStringLiteral("no controller");
        return false;
    }
    const ControllerReply answer = m_controller->handle(request);
    if (answer.drop) {
        m_lastError = QStringLiteral("connection dropped by the controller");
        return false;
    }
    // The caller blocks as it would on a socket: no events are processed meanwhile.
    if (answer.delayMs > m_timeoutMs) {
        QThread::msleep(static_cast<unsigned long>(m_timeoutMs));
        m_lastError = QStringLiteral("no reply within %1 ms").arg(m_timeoutMs);
        return false;
    }
    if (answer.delayMs > 0)
        QThread::msleep(static_cast<unsigned long>(answer.delayMs));
    if (reply)
        *reply = answer.line;
    return true;
}

QString InProcessLink::lastError() const
{
    return m_lastError;
}
