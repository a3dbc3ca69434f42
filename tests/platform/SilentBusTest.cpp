#include "platform/SilentBus.h"

#include "FakeBus.h"

#include <atomic>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

class SilentBusTest : public testing::Test
{
protected:
    /// Takes a connection that has asked, and keeps it.
    void takeConnection()
    {
        connections.push_back(bus.accept());
        ASSERT_TRUE(FakeBus::hear(connections.back()).startsWith(QByteArray("\0AUTH", 5)));
    }

    ~SilentBusTest() override
    {
        for (const int connection : connections)
            ::close(connection);
    }

    FakeBus bus;
    std::vector<int> connections;
    std::stop_source stop;
    bool hasAnswered = false;
    std::atomic<bool> hasReturned = false;
};

TEST_F(SilentBusTest, aLateAnswerToTheFirstQuestionIsHeard)
{
    bus.listen();
    std::thread thread([this] {
        hasAnswered = SilentBus{bus.address(), 1h, 1h}.waitForAnswer(stop.get_token());
    });
    bus.serve(FakeBus::answers(false));
    thread.join();
    EXPECT_TRUE(hasAnswered);
}

TEST_F(SilentBusTest, itIsAskedAnewUntilItAnswers)
{
    bus.listen();
    std::thread thread([this] {
        hasAnswered = SilentBus{bus.address(), 20ms, 1s}.waitForAnswer(stop.get_token());
        hasReturned = true;
        bus.hangUp();
    });
    takeConnection();
    takeConnection();
    ::close(connections.back()); // hung up on
    connections.pop_back();
    takeConnection();
    while (!hasReturned) // it may have given up one that waited here
        bus.serve(FakeBus::answers(true));
    thread.join();
    EXPECT_TRUE(hasAnswered);
}

TEST_F(SilentBusTest, itMayBeGoneForAWhile)
{
    std::thread thread([this] {
        hasAnswered = SilentBus{bus.address(), 1ms, 1ms}.waitForAnswer(stop.get_token());
        bus.hangUp();
    });
    bus.listen();
    for (bool goesOn = true; goesOn;) {
        const int connection = bus.accept();
        goesOn = connection >= 0;
        bus.question += FakeBus::hear(connection);
        ::close(connection);
        if (bus.question.contains("AUTH"))
            stop.request_stop();
    }
    thread.join();
    EXPECT_FALSE(hasAnswered);
    EXPECT_TRUE(bus.question.contains("AUTH")) << "it was not asked again";
}

TEST_F(SilentBusTest, theWaitCanBeGivenUp)
{
    bus.listen();
    std::thread thread([this] {
        hasAnswered = SilentBus{bus.address(), 1h, 1h}.waitForAnswer(stop.get_token());
    });
    takeConnection();
    stop.request_stop();
    thread.join();
    EXPECT_FALSE(hasAnswered);
}

TEST_F(SilentBusTest, thePauseCanBeGivenUp)
{
    bus.listen();
    std::thread thread([this] {
        hasAnswered = SilentBus{bus.address(), 1h, 1h}.waitForAnswer(stop.get_token());
    });
    takeConnection();
    ::close(connections.back());
    connections.pop_back();
    stop.request_stop();
    thread.join();
    EXPECT_FALSE(hasAnswered);
}
