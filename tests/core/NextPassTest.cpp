#include "core/NextPass.h"

#include "core/Published.h"
#include "support/Application.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

class NextPass : public testing::Test
{
protected:
    Application application;
    Observable observed;
    Published<int> value{observed, 1};
    std::unique_ptr<QObject> context = std::make_unique<QObject>();
    std::vector<int> valuesRead;

    void watch()
    {
        onNextPass(observed, context.get(), [this] { valuesRead.push_back(value()); });
    }
};

TEST_F(NextPass, NothingIsReadBeforeAChange)
{
    watch();
    Application::onePass();
    EXPECT_EQ(valuesRead, std::vector<int>{});
}

TEST_F(NextPass, AChangeIsReadOnePassLaterWithItsNewValue)
{
    watch();
    value = 2;
    EXPECT_EQ(valuesRead, std::vector<int>{});
    Application::onePass();
    EXPECT_EQ(valuesRead, std::vector{2});
}

TEST_F(NextPass, ManyChangesInOnePassAreReadOnce)
{
    watch();
    for (int i = 2; i <= 100; ++i)
        value = i;
    Application::onePass();
    Application::onePass();
    EXPECT_EQ(valuesRead, std::vector{100});
}

TEST_F(NextPass, ChangesOfLaterPassesAreReadAgain)
{
    watch();
    value = 2;
    Application::onePass();
    value = 3;
    Application::onePass();
    value = 3;
    Application::onePass();
    EXPECT_EQ(valuesRead, (std::vector{2, 3, 3}));
}

TEST_F(NextPass, AChangeMadeWhileReadingIsReadToo)
{
    onNextPass(observed, context.get(), [this] {
        valuesRead.push_back(value());
        if (value() < 4)
            value = value() + 1;
    });
    value = 2;
    for (int i = 0; i < 5; ++i)
        Application::onePass();
    EXPECT_EQ(valuesRead, (std::vector{2, 3, 4}));
}

TEST_F(NextPass, WatchersOfTheSameDoNotShareTheirCalls)
{
    watch();
    watch();
    value = 2;
    Application::onePass();
    EXPECT_EQ(valuesRead, (std::vector{2, 2}));
}

TEST_F(NextPass, NothingIsReadAfterTheEndOfTheContext)
{
    watch();
    context.reset();
    value = 2;
    Application::onePass();
    EXPECT_EQ(valuesRead, std::vector<int>{});
}

TEST_F(NextPass, APendingChangeIsNotReadAfterTheEndOfTheContext)
{
    watch();
    value = 2;
    context.reset();
    Application::onePass();
    EXPECT_EQ(valuesRead, std::vector<int>{});
}

TEST_F(NextPass, APendingChangeIsReadAfterTheEndOfTheObserved)
{
    auto shortLived = std::make_unique<Observable>();
    onNextPass(*shortLived, context.get(), [this] { valuesRead.push_back(value()); });
    Q_EMIT shortLived->willChange();
    shortLived.reset();
    Application::onePass();
    EXPECT_EQ(valuesRead, std::vector{1});
}

} // namespace
