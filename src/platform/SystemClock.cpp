#include "platform/SystemClock.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <cmath>

using namespace std::chrono_literals;

namespace {

class TimerTicks : public Ticks
{
public:
    TimerTicks(Qt::TimerType type, std::chrono::milliseconds interval, std::function<void()> tick)
        // One that is to go when the event loop has ended goes with the application.
        : m_timer(new QTimer(QCoreApplication::instance()))
    {
        m_timer->setTimerType(type);
        QObject::connect(m_timer, &QTimer::timeout, m_timer, std::move(tick));
        m_timer->start(interval);
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
    // A coarse timer may be 25 ms off, which lets the kernel wake up for several at once.
    return std::make_unique<TimerTicks>(Qt::CoarseTimer, 500ms, std::move(tick));
}

std::unique_ptr<Ticks> SystemClock::startFrames(double framesPerSecond, std::function<void()> frame)
{
    const std::chrono::milliseconds interval(std::lround(std::ceil(1000 / framesPerSecond)));
    return std::make_unique<TimerTicks>(Qt::PreciseTimer, interval, std::move(frame));
}
