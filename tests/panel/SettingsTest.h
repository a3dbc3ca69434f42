#pragma once

#include "PanelTest.h"
#include "panel/SettingsView.h"
#include "panel/Stepper.h"
#include "panel/Switch.h"
#include "panel/ValueLabel.h"

#include <QToolButton>

#include <memory>

/// The Settings tab on the screen. The steppers are in the order sitting, standing, push-ups.
class SettingsTest : public PanelTest
{
protected:
    void show()
    {
        view = std::make_unique<SettingsView>(engine);
        showActive(*view);
        ASSERT_EQ(view->findChildren<Stepper*>().size(), 3);
    }

    Stepper* stepper(int number) const { return view->findChildren<Stepper*>().at(number); }
    QToolButton* less(int number) const
    {
        return stepper(number)->findChildren<QToolButton*>().at(0);
    }
    QToolButton* more(int number) const
    {
        return stepper(number)->findChildren<QToolButton*>().at(1);
    }
    Switch* compact() const { return view->findChild<Switch*>(); }

    std::vector<std::string> values() const
    {
        std::vector<std::string> texts;
        for (const auto* label : view->findChildren<ValueLabel*>())
            texts.push_back(label->text().toStdString());
        return texts;
    }
    using Texts = std::vector<std::string>;

    static void click(QWidget* control) { QTest::mouseClick(control, Qt::LeftButton); }

    std::unique_ptr<SettingsView> view;
};
