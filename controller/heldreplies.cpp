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

qint64 monotonicNs()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * kNanosecondsPerSecond + now.tv_nsec;
}

} // namespace

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

void HeldReplies::hold(QObject* context, qint64 delayUs, std::function<void()> release)
{
    if (m_timer < 0) {
        // Without a timerfd (no descriptor left) Qt's timer holds it instead, rounded up
        // to whole milliseconds: a reply may come late, never early.
        QTimer::singleShot(int(qMin<qint64>((delayUs + 999) / 1000, INT_MAX)), Qt::PreciseTimer, context,
                           std::move(release));
        return;
    }
    m_held.emplace(monotonicNs() + delayUs * 1000, Held{context, std::move(release)});
    arm();
}

void HeldReplies::releaseDue()
{
    quint64 expirations = 0;
    while (::read(m_timer, &expirations, sizeof expirations) < 0 && errno == EINTR) {
    }
    const qint64 now = monotonicNs();
    // One at a time: a release may hold the next reply of its client.
    while (!m_held.empty() && m_held.begin()->first <= now) {
        const Held held = std::move(m_held.begin()->second);
        m_held.erase(m_held.begin());
        if (held.context)
            held.release();
    }
    arm();
}

void HeldReplies::arm()
{
    itimerspec due = {}; // all zero: disarmed
    if (!m_held.empty()) {
        const qint64 at = m_held.begin()->first;
        due.it_value.tv_sec = time_t(at / kNanosecondsPerSecond);
        due.it_value.tv_nsec = long(at % kNanosecondsPerSecond);
    }
    timerfd_settime(m_timer, TFD_TIMER_ABSTIME, &due, nullptr);
}
