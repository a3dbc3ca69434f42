#include "EngineTest.h"
#include "core/IniSettingsStore.h"
#include "support/Application.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

class TimerEngineIniDeathTest : public EngineTest
{
protected:
    TimerEngineIniDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    void writeFile(const QByteArray& bytes) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QByteArray contentsOfFile() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// One run of the program: an engine on the file, until `happening` is over.
    void run(const std::function<void(TimerEngine&)>& happening)
    {
        IniSettingsStore store(path);
        TimerEngine engine({clock, store, sound, [this]() -> SessionLog& { return log; }}, {});
        happening(engine);
    }

    Application application;
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("vantora.ini"));
};

TEST_F(TimerEngineIniDeathTest, TheSettingsSurviveARestart)
{
    run([](TimerEngine& engine) {
        EXPECT_EQ(engine.sittingMinutes(), 40);
        engine.sittingMinutes = 500;
        engine.standingMinutes = 25;
        engine.pushupCount = 12;
        engine.compactMode = true;
    });
    run([](TimerEngine& engine) {
        EXPECT_EQ(engine.sittingMinutes(), 500);
        EXPECT_EQ(engine.standingMinutes(), 25);
        EXPECT_EQ(engine.pushupCount(), 12);
        EXPECT_TRUE(engine.compactMode());
        EXPECT_EQ(engine.remaining(), 30000);
        engine.compactMode = false;
    });
    run([](TimerEngine& engine) {
        EXPECT_EQ(engine.sittingMinutes(), 500);
        EXPECT_FALSE(engine.compactMode());
    });
}

TEST_F(TimerEngineIniDeathTest, EachAssignmentReachesTheFile)
{
    run([this](TimerEngine& engine) {
        EXPECT_FALSE(QFile::exists(path));
        engine.pushupCount = 50;
        Application::onePass();
        EXPECT_TRUE(contentsOfFile().contains("sittingMinutes=40"));
        EXPECT_TRUE(contentsOfFile().contains("standingMinutes=15"));
        EXPECT_TRUE(contentsOfFile().contains("pushupCount=50"));
        EXPECT_FALSE(contentsOfFile().contains("compactMode"));

        engine.standingMinutes = 16;
        Application::onePass();
        EXPECT_TRUE(contentsOfFile().contains("standingMinutes=16"));

        engine.compactMode = true;
        Application::onePass();
        EXPECT_TRUE(contentsOfFile().contains("compactMode=true"));
    });
}

TEST_F(TimerEngineIniDeathTest, ARunWithoutAChangeWritesNoFile)
{
    run([this](TimerEngine&) { clock.pass(100); });
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(TimerEngineIniDeathTest, ValuesThatAreNoPositiveNumbersGiveTheDefaults)
{
    int files = 0;
    for (const char* stored : {"0", "-5", "junk", "40.5", "true", "1, 2", "99999999999999999999",
                               "@Invalid()", "@ByteArray()", "@ByteArray(30)"}) {
        path = folder.filePath(QString::number(files++));
        const QByteArray value = QByteArray(stored) + '\n';
        writeFile("[General]\nsittingMinutes=" + value + "standingMinutes=" + value +
                  "pushupCount=" + value);
        run([stored](TimerEngine& engine) {
            EXPECT_EQ(engine.sittingMinutes(), 40) << stored;
            EXPECT_EQ(engine.standingMinutes(), 15) << stored;
            EXPECT_EQ(engine.pushupCount(), 50) << stored;
        });
    }
}

TEST_F(TimerEngineIniDeathTest, AHugeStoredPushupCountIsTaken)
{
    writeFile("[General]\npushupCount=4611686018427387904\n");
    run([](TimerEngine& engine) { EXPECT_EQ(engine.pushupCount(), qint64{1} << 62); });
}

TEST_F(TimerEngineIniDeathTest, AHugeStoredLengthStopsTheStart)
{
    writeFile("[General]\nsittingMinutes=4611686018427387904\n");
    EXPECT_DEATH(run([](TimerEngine&) {}), "does not fit 64 bits");
}

} // namespace
