#include "platform/SystemClock.h"

#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace {

class TimerTicks : public Ticks
{
public:
    explicit TimerTicks(std::function<void()> tick)
        : m_timer(new QTimer)
    {
        // A coarse timer may be 25 ms off, which lets the kernel wake up for several at once.
        m_timer->setTimerType(Qt::CoarseTimer);
        QObject::connect(m_timer, &QTimer::timeout, m_timer, std::move(tick));
        m_timer->start(500ms);
    }

    TimerTicks(const TimerTicks&) = delete;
    TimerTicks& operator=(const TimerTicks&) = delete;

    ~TimerTicks() override
    {
        // Perhaps from within the tick, while the timer is still on the stack.
        m_timer->stop();
        m_timer->deleteLater();
    }

private:
    QTimer* m_timer;
};

} // namespace

Instant SystemClock::now() const
{
    const std::chrono::duration<double> unixTime =
        std::chrono::system_clock::now().time_since_epoch();
    return {unixTime.count() - referenceDateUnixSeconds};
}

std::unique_ptr<Ticks> SystemClock::startTicks(std::function<void()> tick)
{
    return std::make_unique<TimerTicks>(std::move(tick));
}
