#include "snapshotlink.h"

namespace {
// Enough for any error line a person reads; a hostile controller may send 64 KiB.
const int kShownReplyLength = 200;
} // namespace

SnapshotLink::SnapshotLink(ControllerLink* link)
    : m_link(link), m_io(this)
{
}

SnapshotLink::~SnapshotLink()
{
    m_io.setLink(nullptr);
}

bool SnapshotLink::transact(const QByteArray& request, QByteArray* reply)
{
    m_lastReply.clear();
    if (m_lost)
        return false;
    if (!m_link) {
        m_lost = true;
        m_lostReason = QStringLiteral("no controller");
        return false;
    }
    QByteArray line;
    if (!m_link->transact(request, &line)) {
        m_lost = true;
        m_lostReason = QStringLiteral("%1: %2").arg(QString::fromLatin1(request), m_link->lastError());
        return false;
    }
    m_lastReply = line.left(kShownReplyLength);
    if (reply)
        *reply = line;
    return true;
}

QString SnapshotLink::lastError() const
{
    return m_lost ? m_lostReason : QString();
}
