#include "app/UserFolders.h"

#include <gtest/gtest.h>

namespace {

/// Has the variables as they are given, and as they were again when it goes.
class Variables
{
public:
    Variables()
    {
        for (const char* name : names)
            m_before.append(qgetenv(name));
        for (const char* name : names)
            qunsetenv(name);
    }
    ~Variables()
    {
        for (qsizetype i = 0; i < m_before.size(); ++i) {
            if (m_before[i].isNull())
                qunsetenv(names[i]);
            else
                qputenv(names[i], m_before[i]);
        }
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;

private:
    static constexpr const char* names[] = {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"};
    QByteArrayList m_before;
};

} // namespace

class UserFoldersTest : public testing::Test
{
private:
    Variables m_variables;
};

TEST_F(UserFoldersTest, theyAreInTheHome)
{
    qputenv("HOME", "/home/ada");
    EXPECT_EQ(settingsPath(), QStringLiteral("/home/ada/.config/Vantora/Vantora.conf"));
    EXPECT_EQ(sessionLogPath(), QStringLiteral("/home/ada/.local/share/Vantora/sessions.json"));
}

TEST_F(UserFoldersTest, theyAreWhereTheUserWantsThem)
{
    qputenv("HOME", "/home/ada");
    qputenv("XDG_CONFIG_HOME", "/etc/ada/");
    qputenv("XDG_DATA_HOME", "/srv/ada");
    EXPECT_EQ(settingsPath(), QStringLiteral("/etc/ada/Vantora/Vantora.conf"));
    EXPECT_EQ(sessionLogPath(), QStringLiteral("/srv/ada/Vantora/sessions.json"));
}

TEST_F(UserFoldersTest, relativeOnesAreIgnored)
{
    qputenv("HOME", "/home/ada");
    qputenv("XDG_CONFIG_HOME", "etc");
    qputenv("XDG_DATA_HOME", "./srv");
    EXPECT_EQ(settingsPath(), QStringLiteral("/home/ada/.config/Vantora/Vantora.conf"));
    EXPECT_EQ(sessionLogPath(), QStringLiteral("/home/ada/.local/share/Vantora/sessions.json"));
}

TEST_F(UserFoldersTest, withoutAHomeAFolderForDataWillDo)
{
    qputenv("XDG_DATA_HOME", "/srv/ada");
    EXPECT_EQ(sessionLogPath(), QStringLiteral("/srv/ada/Vantora/sessions.json"));
    EXPECT_EQ(settingsPath(), QStringLiteral("/nonexistent/Vantora/Vantora.conf"));
}

using UserFoldersDeathTest = UserFoldersTest;

TEST_F(UserFoldersDeathTest, withNeitherTheProcessStops)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    qputenv("HOME", "home/ada");
    EXPECT_DEATH(sessionLogPath(), "no folder for the history");
}
