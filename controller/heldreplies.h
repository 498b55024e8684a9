#ifndef HELDREPLIES_H
#define HELDREPLIES_H

#include <QObject>
#include <QPointer>

#include <functional>
#include <map>

class QSocketNotifier;

// Replies the server holds back until their time. A controller's latency is a fraction
// of a millisecond, finer than Qt's timers count, so one Linux timerfd, armed for the
// earliest held reply, serves them all to the microsecond.
class HeldReplies : public QObject
{
    Q_OBJECT

public:
    explicit HeldReplies(QObject* parent = nullptr);
    ~HeldReplies() override;

    // The monotonic clock in nanoseconds, which due times count in.
    static qint64 now();

    // Calls release at dueNs (now() or later), unless context is gone by then.
    void releaseAt(QObject* context, qint64 dueNs, std::function<void()> release);

private:
    struct Held
    {
        QPointer<QObject> context;
        std::function<void()> release;
    };

    void releaseDue();
    // Sets the timerfd to the earliest due time.
    void arm();

    int m_timer;
    QSocketNotifier* m_notifier = nullptr;
    // By due time on the monotonic clock, in nanoseconds; equal times keep their order.
    std::multimap<qint64, Held> m_held;
};

#endif // HELDREPLIES_H
