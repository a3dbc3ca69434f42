#include "core/IniSettingsStore.h"

#include "support/Application.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr auto key = "sittingMinutes";

class IniSettingsStoreTest : public testing::Test
{
protected:
    std::optional<Application> application{std::in_place};
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("settings.ini"));

    void writeFile(const QByteArray& bytes) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    std::vector<std::string> linesOfFile() const
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return {"(no file)"};
        std::vector<std::string> lines;
        for (const QByteArray& line : file.readAll().split('\n'))
            if (!line.trimmed().isEmpty())
                lines.push_back(line.trimmed().toStdString());
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    /// What the text `stored` after the equals sign reads as.
    qint64 integerOf(const QByteArray& stored)
    {
        const Fresh file(*this, stored);
        return IniSettingsStore(path).integer(key);
    }

    bool booleanOf(const QByteArray& stored)
    {
        const Fresh file(*this, stored);
        return IniSettingsStore(path).boolean(key);
    }

    std::string textOf(const QByteArray& stored)
    {
        const Fresh file(*this, stored);
        return IniSettingsStore(path).text(key).toStdString();
    }

private:
    /// A new file name each time: what was read of a file once may be remembered.
    struct Fresh
    {
        Fresh(IniSettingsStoreTest& test, const QByteArray& stored)
        {
            test.path = test.folder.filePath(QString::number(test.m_files++));
            test.writeFile("[General]\n" + QByteArray(key) + '=' + stored + '\n');
        }
    };
    int m_files = 0;
};

TEST_F(IniSettingsStoreTest, AMissingFileOrKeyReadsAsNothing)
{
    {
        const IniSettingsStore store(path);
        EXPECT_EQ(store.integer(key), 0);
        EXPECT_FALSE(store.boolean(key));
        EXPECT_EQ(store.text(key), QString());
    }
    EXPECT_FALSE(QFile::exists(path));

    writeFile("[General]\nother=1\n[group]\nsittingMinutes=30\n");
    const IniSettingsStore store(path);
    EXPECT_EQ(store.integer(key), 0);
    EXPECT_FALSE(store.boolean(key));
    EXPECT_EQ(store.text(key), QString());
}

TEST_F(IniSettingsStoreTest, WholeNumbersAreReadAsTheyAre)
{
    EXPECT_EQ(integerOf("0"), 0);
    EXPECT_EQ(integerOf("-5"), -5);
    EXPECT_EQ(integerOf("40"), 40);
    EXPECT_EQ(integerOf("500"), 500);
    EXPECT_EQ(integerOf("\"30\""), 30);
    EXPECT_EQ(integerOf("4611686018427387904"), qint64{1} << 62);
    EXPECT_EQ(integerOf("9223372036854775807"), std::numeric_limits<qint64>::max());
    EXPECT_EQ(integerOf("-9223372036854775808"), std::numeric_limits<qint64>::min());
}

TEST_F(IniSettingsStoreTest, WhatIsNoWholeNumberOf64BitsReadsAsZero)
{
    for (const char* junk : {
             "",
             "forty",
             "40 minutes",
             "4O",
             "0x28",
             "1e3",
             "40.0",
             "40.5",
             "40,5",
             "1, 2, 3",
             "true",
             "false",
             "nan",
             "9223372036854775808",
             "-9223372036854775809",
             "99999999999999999999999999",
             "@Invalid()",
             "@ByteArray()",
             "@ByteArray(40)",
             "@Variant(40)",
             "@Variant(\\0\\0\\0\\x6\\x40\\x44\\0\\0\\0\\0\\0\\0)",
             "@Point(40 40)",
         })
        EXPECT_EQ(integerOf(junk), 0) << junk;
}

TEST_F(IniSettingsStoreTest, TrueAndOneAreTrueAndEverythingElseIsFalse)
{
    for (const char* yes : {"true", "True", "TRUE", "1", "\"true\""})
        EXPECT_TRUE(booleanOf(yes)) << yes;
    for (const char* no : {"", "false", "0", "2", "-1", "junk", "truest", "true, true",
                           "@Invalid()", "@ByteArray(true)"})
        EXPECT_FALSE(booleanOf(no)) << no;
}

TEST_F(IniSettingsStoreTest, TextIsReadAsItIsAndAnotherTypeAsNone)
{
    EXPECT_EQ(textOf("plain"), "plain");
    EXPECT_EQ(textOf("\"with, comma\""), "with, comma");
    EXPECT_EQ(textOf("a, b"), "");
    EXPECT_EQ(textOf("@Invalid()"), "");
    EXPECT_EQ(textOf("@ByteArray(text)"), "");
}

TEST_F(IniSettingsStoreTest, WhatIsWrittenStandsInTheFileAfterTheNextPass)
{
    IniSettingsStore store(path);

    store.setInteger(key, 45);
    Application::onePass();
    EXPECT_EQ(linesOfFile(), (std::vector<std::string>{"[General]", "sittingMinutes=45"}));

    store.setInteger(key, -7);
    store.setBoolean("compactMode", true);
    Application::onePass();
    EXPECT_EQ(linesOfFile(),
              (std::vector<std::string>{"[General]", "compactMode=true", "sittingMinutes=-7"}));
}

TEST_F(IniSettingsStoreTest, WhatIsWrittenStandsInTheFileAfterTheStoreIsGone)
{
    IniSettingsStore(path).setInteger(key, 45);
    EXPECT_EQ(linesOfFile(), (std::vector<std::string>{"[General]", "sittingMinutes=45"}));
}

TEST_F(IniSettingsStoreTest, ItMayBeThereBeforeTheApplicationAndAfterIt)
{
    application.reset();
    {
        IniSettingsStore store(path);
        application.emplace();
        store.setInteger(key, 45);
        Application::onePass();
        EXPECT_EQ(linesOfFile(), (std::vector<std::string>{"[General]", "sittingMinutes=45"}));
        store.setInteger(key, 46);
        application.reset();
    }
    EXPECT_EQ(linesOfFile(), (std::vector<std::string>{"[General]", "sittingMinutes=46"}));
}

TEST_F(IniSettingsStoreTest, WhatIsWrittenIsReadBackAtOnce)
{
    IniSettingsStore store(path);
    for (const qint64 value :
         {qint64{0}, qint64{-5}, qint64{500}, qint64{1} << 62, std::numeric_limits<qint64>::max(),
          std::numeric_limits<qint64>::min()}) {
        store.setInteger(key, value);
        EXPECT_EQ(store.integer(key), value);
    }
    store.setBoolean("compactMode", true);
    EXPECT_TRUE(store.boolean("compactMode"));
    store.setBoolean("compactMode", false);
    EXPECT_FALSE(store.boolean("compactMode"));
    for (const char* text : {"", "plain", "a, b", "@Invalid()", "1\n2", "\xF0\x9F\xAA\x91"}) {
        store.setText("text", QString::fromUtf8(text));
        EXPECT_EQ(store.text("text").toStdString(), text);
    }
}

TEST_F(IniSettingsStoreTest, WhatIsWrittenIsReadBackFromTheFile)
{
    const std::vector<std::string> texts{"plain", "a, b", "@Invalid()", "1\n2", "\xF0\x9F\xAA\x91"};
    {
        IniSettingsStore store(path);
        store.setInteger("most", std::numeric_limits<qint64>::max());
        store.setInteger("least", std::numeric_limits<qint64>::min());
        store.setBoolean("yes", true);
        store.setBoolean("no", false);
        for (std::size_t i = 0; i < texts.size(); ++i)
            store.setText(QString::number(i), QString::fromStdString(texts[i]));
    }
    const QString moved = folder.filePath(QStringLiteral("moved.ini"));
    ASSERT_TRUE(QFile::rename(path, moved));

    const IniSettingsStore store(moved);
    EXPECT_EQ(store.integer("most"), std::numeric_limits<qint64>::max());
    EXPECT_EQ(store.integer("least"), std::numeric_limits<qint64>::min());
    EXPECT_TRUE(store.boolean("yes"));
    EXPECT_FALSE(store.boolean("no"));
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(store.text(QString::number(i)).toStdString(), texts[i]);
}

TEST_F(IniSettingsStoreTest, KeysAndGroupsOfOthersSurviveAWrite)
{
    writeFile(
        "[General]\nsittingMinutes=30\ntheirs=kept\n\n[group]\nsittingMinutes=31\nlist=1, 2\n");
    IniSettingsStore(path).setInteger(key, 45);

    EXPECT_EQ(linesOfFile(),
              (std::vector<std::string>{"[General]", "[group]", "list=1, 2", "sittingMinutes=31",
                                        "sittingMinutes=45", "theirs=kept"}));
}

TEST_F(IniSettingsStoreTest, AFileOfJunkReadsAsNothing)
{
    QByteArray junk;
    for (int i = 0; i < 5000; ++i)
        junk.append(static_cast<char>(i * 37 + i / 256));
    const QByteArray files[] = {junk,           QByteArray(1000, '\0'), "[General",
                                "=\n=\n[]\n=1", "sittingMinutes",       "\xEF\xBB\xBF\xFF\xFE\n"};
    for (const QByteArray& bytes : files) {
        path += QLatin1Char('x');
        writeFile(bytes);
        const IniSettingsStore store(path);
        EXPECT_EQ(store.integer(key), 0);
        EXPECT_FALSE(store.boolean("compactMode"));
    }
}

TEST_F(IniSettingsStoreTest, WhereNothingCanBeWrittenTheValueIsLostQuietly)
{
    ASSERT_TRUE(QDir().mkpath(path)); // a folder in the place of the file
    {
        IniSettingsStore store(path);
        EXPECT_EQ(store.integer(key), 0);
        store.setInteger(key, 45);
        Application::onePass();
    }
    EXPECT_TRUE(QDir(path).isEmpty());
}

} // namespace
