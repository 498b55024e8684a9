#include "heldreplies.h"

#include <QSocketNotifier>
#include <QTimer>

#include <cerrno>
#include <climits>
#include <ctime>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

const qint64 kNanosecondsPerSecond = 1000 * 1000 * 1000;

// The timer goes off this much before a reply is due and the rest is spun: an idle core
// (a virtual machine's above all) takes tens of microseconds to wake, which would add
// to every held reply a latency the operator did not ask for.
const qint64 kWakeAheadNs = 60 * 1000;

} // namespace

qint64 HeldReplies::now()
{
    timespec clock = {};
    clock_gettime(CLOCK_MONOTONIC, &clock);
    return qint64(clock.tv_sec) * kNanosecondsPerSecond + clock.tv_nsec;
}

HeldReplies::HeldReplies(QObject* parent)
    : QObject(parent), m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_timer < 0)
        return;
    m_notifier = new QSocketNotifier(m_timer, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &HeldReplies::releaseDue);
}

HeldReplies::~HeldReplies()
{
    if (m_timer >= 0) {
        delete m_notifier;
        ::close(m_timer);
    }
}

void HeldReplies::releaseAt(QObject* context, qint64 dueNs, std::function<void()> release)
{
    if (m_timer < 0) {
        // Without a timerfd (no descriptor left) Qt's timer holds it instead, rounded up
        // to whole milliseconds: a reply may come late, never early.
        const qint64 waitMs = (qMax<qint64>(0, dueNs - now()) + 999999) / 1000000;
        QTimer::singleShot(int(qMin<qint64>(waitMs, INT_MAX)), Qt::PreciseTimer, context, std::move(release));
        return;
    }
    const bool earliest = m_held.empty() || dueNs < m_held.begin()->first;
    m_held.emplace(dueNs, Held{context, std::move(release)});
    if (earliest)
        arm();
}

void HeldReplies::releaseDue()
{
    quint64 expirations = 0;
    while (::read(m_timer, &expirations, sizeof expirations) < 0 && errno == EINTR) {
    }
    if (!m_held.empty()) {
        const qint64 due = m_held.begin()->first;
        while (now() < due && due - now() <= kWakeAheadNs) {
        }
    }
    const qint64 released = now();
    // One at a time: a release may hold its client's next reply, which arms the timer
    // if it comes first.
    while (!m_held.empty() && m_held.begin()->first <= released) {
        const Held held = std::move(m_held.begin()->second);
        m_held.erase(m_held.begin());
        if (held.context)
            held.release();
    }
    // The timer went off once and is disarmed now; only a reply still held sets it again.
    if (!m_held.empty())
        arm();
}

void HeldReplies::arm()
{
    const qint64 due = qMax<qint64>(1, m_held.begin()->first - kWakeAheadNs);
    itimerspec at = {};
    at.it_value.tv_sec = time_t(due / kNanosecondsPerSecond);
    at.it_value.tv_nsec = long(due % kNanosecondsPerSecond);
    timerfd_settime(m_timer, TFD_TIMER_ABSTIME, &at, nullptr);
}
