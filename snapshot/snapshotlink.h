#ifndef SNAPSHOTLINK_H
#define SNAPSHOTLINK_H

#include <ControllerLink.h>
#include <IOManager.h>

#include <QByteArray>
#include <QString>

// The snapshot tool's channel: an IOManager over the host's link that tells a lost
// connection apart from a controller's refusal (IOManager reports both as failure) and
// keeps the last reply, so that a refusal can be shown in the controller's words.
// After the link failed once, nothing more is sent: what was written so far stays
// known, and a second run completes the rest.
class SnapshotLink : public ControllerLink
{
public:
    explicit SnapshotLink(ControllerLink* link);
    ~SnapshotLink() override;

    IOManager* io() { return &m_io; }

    bool transact(const QByteArray& request, QByteArray* reply) override;
    QString lastError() const override;

    bool lost() const { return m_lost; }
    // "<request>: <the link's error>" of the call that failed.
    QString lostReason() const { return m_lostReason; }
    // The controller's last reply line, cut to a readable length.
    QByteArray lastReply() const { return m_lastReply; }

private:
    ControllerLink* m_link;
    IOManager m_io;
    bool m_lost = false;
    QString m_lostReason;
    QByteArray m_lastReply;
};

#endif // SNAPSHOTLINK_H
