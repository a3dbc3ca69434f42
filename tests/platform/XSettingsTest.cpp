#include "platform/XSettings.h"

#include "support/SettingsData.h"

#include <gtest/gtest.h>

namespace {

constexpr auto name = "Gtk/EnableAnimations";

QByteArray settings(bool isBigEndian)
{
    SettingsData data(isBigEndian);
    data.add("Net/ThemeName", QByteArray("Adwaita"));
    data.add("Gtk/EnableAnimation", 5);
    data.addColor("Gtk/Color");
    data.add("Xft/DPI", 98304);
    data.add(name, -2);
    data.add("Net/IconThemeName", QByteArray());
    return data.bytes();
}

} // namespace

TEST(XSettingsTest, integersAreFoundByTheirWholeName)
{
    for (const bool isBigEndian : {false, true}) {
        const QByteArray data = settings(isBigEndian);
        EXPECT_EQ(integerSetting(data, name), -2);
        EXPECT_EQ(integerSetting(data, "Xft/DPI"), 98304);
        EXPECT_EQ(integerSetting(data, "Xft"), std::nullopt);
        EXPECT_EQ(integerSetting(data, "Net/ThemeName"), std::nullopt) << "a text";
        EXPECT_EQ(integerSetting(data, "Gtk/Color"), std::nullopt) << "a colour";
    }
}

TEST(XSettingsTest, noSettingsAreNone)
{
    EXPECT_EQ(integerSetting({}, name), std::nullopt);
    EXPECT_EQ(integerSetting(SettingsData().bytes(), name), std::nullopt);
}

TEST(XSettingsTest, whatIsCutOffIsNotThere)
{
    SettingsData data;
    data.add("Net/ThemeName", QByteArray("Adwaita"));
    data.add(name, 7);
    const QByteArray whole = data.bytes();
    EXPECT_EQ(integerSetting(whole, name), 7);
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_EQ(integerSetting(whole.first(size), name), std::nullopt) << size;
}

TEST(XSettingsTest, wrongNumbersDoNoHarm)
{
    const QByteArray whole = settings(false);
    for (qsizetype at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\xFF', '\x7F', '\1', '\0'}) {
            QByteArray data = whole;
            data[at] = byte;
            integerSetting(data, name); // the sanitizers watch
        }
    }
    QByteArray unknownKind = whole;
    unknownKind[12] = 3;
    EXPECT_EQ(integerSetting(unknownKind, name), std::nullopt);
}
