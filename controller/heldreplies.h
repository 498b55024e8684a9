#ifndef HELDREPLIES_H
#define HELDREPLIES_H

#include <QObject>
#include <QPointer>

#include <functional>
#include <map>

class QSocketNotifier;

// Replies the server holds back until their time. A controller's latency is a fraction
// of a millisecond, finer than Qt's timers count, so one Linux timerfd, armed for the
// earliest held reply, serves them all to the microsecond. Held replies cost nothing
// while none is held.
class HeldReplies : public QObject
{
    Q_OBJECT

public:
    explicit HeldReplies(QObject* parent = nullptr);
    ~HeldReplies() override;

    // Calls release after delayUs microseconds, unless context is gone by then.
    void hold(QObject* context, qint64 delayUs, std::function<void()> release);

private:
    struct Held
    {
        QPointer<QObject> context;
        std::function<void()> release;
    };

    void releaseDue();
    void arm();

    int m_timer;
    QSocketNotifier* m_notifier = nullptr;
    // By due time on the monotonic clock, in nanoseconds; equal times keep their order.
    std::multimap<qint64, Held> m_held;
};

#endif // HELDREPLIES_H
