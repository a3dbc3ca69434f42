#pragma once

#include "core/TimerEngine.h"
#include "widget/WidgetActions.h"

#include <QWidget>

#include <array>

class ControlButton;

/// The row of round buttons, for one form of the widget. On the compact strip it lies on a dark
/// band over the content.
class ControlRow : public QWidget
{
    Q_OBJECT

public:
    ControlRow(TimerEngine& engine, const WidgetActions& actions, bool compact, QWidget* parent);

    /// How the row is shown: its opacity, and how much of the first button is there, with the
    /// others making room for it. All from 0 to 1.
    void setShown(double opacity, double pauseButton);

    /// Whether the first button offers to resume what is paused.
    void setOffersResume(bool paused);

    /// Whether the first button can be used.
    void setOffersPause(bool offered);

    /// The number of the button that has the keyboard's focus, from 0; -1 if none has.
    int focusedButton() const;

    /// Gives the keyboard's focus to a button.
    void focusButton(int number);

Q_SIGNALS:
    /// The band is to be painted anew.
    void bandChanged();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void place(double pauseButton);

    const bool m_compact;
    double m_opacity = 1;
    std::array<ControlButton*, 6> m_buttons{};
};
