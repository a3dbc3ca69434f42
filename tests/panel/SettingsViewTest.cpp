// The form: what stands in it, and in which order.

#include "SettingsTest.h"
#include "paint/Symbol.h"
#include "panel/FormSection.h"
#include "panel/LogoBanner.h"
#include "panel/SymbolIcon.h"
#include "panel/TextLabel.h"

#include <QPainter>

namespace {

class SettingsViewTest : public SettingsTest
{
protected:
    void SetUp() override { show(); }

    std::vector<std::string> textsOf(int section) const
    {
        std::vector<std::string> texts;
        for (const auto* label :
             view->findChildren<FormSection*>().at(section)->findChildren<TextLabel*>())
            texts.push_back(label->text().toStdString());
        std::sort(texts.begin(), texts.end());
        return texts;
    }

    int topOf(const QWidget* widget) const { return widget->mapTo(view.get(), QPoint()).y(); }
};

bool shows(SymbolView* view, const char* symbol)
{
    QImage shown(view->size(), QImage::Format_ARGB32_Premultiplied);
    shown.fill(Qt::white);
    view->render(&shown, {}, {}, {});
    QImage expected(view->size(), QImage::Format_ARGB32_Premultiplied);
    expected.fill(Qt::white);
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::Antialiasing);
    drawSymbol(painter, QString::fromLatin1(symbol), view->rect(),
               view->palette().color(QPalette::WindowText));
    painter.end();
    return shown == expected;
}

} // namespace

TEST_F(SettingsViewTest, theSectionsAreBelowEachOther)
{
    Texts headers;
    int bottom = 0;
    for (const auto* section : view->findChildren<FormSection*>()) {
        headers.push_back(section->findChild<TextLabel*>()->text().toStdString());
        EXPECT_GE(topOf(section), bottom);
        bottom = topOf(section) + section->height();
    }
    EXPECT_EQ(headers, (Texts{"Appearance", "Phase durations", "Exercise", "About"}));
}

TEST_F(SettingsViewTest, eachSectionHasItsRowsAndItsNote)
{
    EXPECT_EQ(textsOf(0), (Texts{"Appearance", "Compact widget"}));
    EXPECT_EQ(textsOf(1),
              (Texts{"Changing the running phase's duration keeps the time you've already put in.",
                     "Deep Work (seated)", "Phase durations", "Stand Up"}));
    EXPECT_EQ(textsOf(2), (Texts{"Exercise", "Push-ups"}));
}

TEST_F(SettingsViewTest, theNoteStandsBelowTheDurations)
{
    for (const auto* label : view->findChildren<TextLabel*>()) {
        if (label->text().startsWith(QStringLiteral("Changing"))) {
            EXPECT_GE(topOf(label), topOf(stepper(1)) + stepper(1)->height());
        }
    }
}

TEST_F(SettingsViewTest, eachRowHasItsSymbol)
{
    const auto symbols = view->findChildren<SymbolView*>();
    const std::vector<const char*> names{"rectangle.compress.vertical", "chair.lounge",
                                         "figure.stand", "figure.strengthtraining.traditional"};
    ASSERT_EQ(static_cast<std::size_t>(symbols.size()), names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (const char* name : names) {
            EXPECT_EQ(shows(symbols[static_cast<qsizetype>(i)], name), name == names[i])
                << i << ' ' << name;
        }
    }
}

TEST_F(SettingsViewTest, eachStepperStandsInTheRowOfItsTitleBesideItsValue)
{
    const std::vector<const char*> titles{"Deep Work (seated)", "Stand Up", "Push-ups"};
    for (int i = 0; i < 3; ++i) {
        const QWidget* row = stepper(i)->parentWidget();
        EXPECT_EQ(row->findChild<TextLabel*>()->text(),
                  QLatin1String(titles[static_cast<std::size_t>(i)]));
        EXPECT_EQ(stepper(i)->accessibleName(), row->findChild<TextLabel*>()->text());
        EXPECT_EQ(row->findChild<ValueLabel*>()->text(), stepper(i)->text());
        EXPECT_LT(row->findChild<ValueLabel*>()->geometry().right(), stepper(i)->x());
    }
    EXPECT_EQ(values(), (Texts{"40 min", "15 min", "50 reps"}));
}

TEST_F(SettingsViewTest, theSteppersHaveTheirRanges)
{
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(stepper(i)->range().least, 1);
        EXPECT_EQ(stepper(i)->range().most, i < 2 ? 240 : 500);
        EXPECT_EQ(stepper(i)->range().step, i < 2 ? 1 : 5);
        EXPECT_TRUE(less(i)->autoRepeat());
        EXPECT_TRUE(more(i)->autoRepeat());
    }
}

TEST_F(SettingsViewTest, theStoryOfTheProgramHasItsBanner)
{
    EXPECT_NE(view->findChildren<FormSection*>().at(3)->findChild<LogoBanner*>(), nullptr);
}
