#include "widget/ControlRow.h"

#include "widget/Card.h"
#include "widget/ControlButton.h"
#include "widget/WidgetGeometry.h"

#include <QPainter>

#include <algorithm>
#include <functional>

namespace {

// The band of the compact strip: frosted glass, and a shade on it.
constexpr QColor glassColor(30, 31, 40, qRound(0.3 * 255));
constexpr QColor shadeColor(0, 0, 0, qRound(0.55 * 255));

} // namespace

ControlRow::ControlRow(TimerEngine& engine, const WidgetActions& actions, bool compact,
                       QWidget* parent)
    : QWidget(parent)
    , m_compact(compact)
{
    setAttribute(Qt::WA_NoSystemBackground);
    struct Control
    {
        QString symbol;
        QString words;
        std::function<void()> action;
    };
    const std::array<Control, 6> controls{{
        {QStringLiteral("pause.fill"), QStringLiteral("Pause"),
         [&engine] { engine.togglePause(); }},
        {QStringLiteral("forward.end.fill"), QStringLiteral("Skip to next phase"),
         [&engine] { engine.advance(false); }},
        {compact ? QStringLiteral("arrow.up.left.and.arrow.down.right")
                 : QStringLiteral("arrow.down.right.and.arrow.up.left"),
         compact ? QStringLiteral("Full widget") : QStringLiteral("Compact widget"),
         [&engine, compact] { engine.compactMode = !compact; }},
        {QStringLiteral("gearshape.fill"), QStringLiteral("Settings"), actions.openSettings},
        {QStringLiteral("menubar.arrow.up.rectangle"), QStringLiteral("Hide widget"), actions.hide},
        {QStringLiteral("power"), QStringLiteral("Quit"), actions.quit},
    }};
    for (std::size_t i = 0; i < controls.size(); ++i) {
        m_buttons[i] = new ControlButton(this);
        m_buttons[i]->setMeaning(controls[i].symbol, controls[i].words);
        connect(m_buttons[i], &QAbstractButton::clicked, this, controls[i].action);
    }
    // The full row with room for the ring around a focused button.
    setGeometry(compact ? compact::controlBand()
                        : full::geometry().controls.adjusted(0, -1, 0, 1).toAlignedRect());
}

void ControlRow::setShown(double opacity, double pauseButton)
{
    if (opacity != m_opacity) {
        m_opacity = opacity;
        if (m_compact) {
            update();
            Q_EMIT bandChanged();
        }
    }
    for (ControlButton* button : m_buttons)
        button->setOpacity(opacity);
    m_buttons[0]->setOpacity(opacity * pauseButton);
    place(pauseButton);
}

void ControlRow::setOffersResume(bool paused)
{
    m_buttons[0]->setMeaning(paused ? QStringLiteral("play.fill") : QStringLiteral("pause.fill"),
                             paused ? QStringLiteral("Resume") : QStringLiteral("Pause"));
}

void ControlRow::setOffersPause(bool offered)
{
    m_buttons[0]->setVisible(offered);
}

int ControlRow::focusedButton() const
{
    const auto focused = std::find_if(m_buttons.begin(), m_buttons.end(),
                                      [](const QWidget* button) { return button->hasFocus(); });
    return focused == m_buttons.end() ? -1 : static_cast<int>(focused - m_buttons.begin());
}

void ControlRow::focusButton(int number)
{
    m_buttons.at(static_cast<std::size_t>(number))->setFocus(Qt::TabFocusReason);
}

void ControlRow::place(double pauseButton)
{
    const double diameter = m_compact ? compact::buttonDiameter : full::buttonDiameter;
    const double step = diameter + (m_compact ? compact::buttonSpacing : full::buttonSpacing);
    const double others = static_cast<double>(m_buttons.size() - 1);
    const double spacing = step - diameter;
    double x = (width() - (others + pauseButton) * step + spacing) / 2;
    const double y = (height() - diameter) / 2.0;
    // As it goes, the first button stays beside the second.
    m_buttons[0]->setPlace({x - (1 - pauseButton) * step, y, diameter, diameter});
    x += pauseButton * step;
    for (std::size_t i = 1; i < m_buttons.size(); ++i, x += step)
        m_buttons[i]->setPlace({x, y, diameter, diameter});
}

void ControlRow::paintEvent(QPaintEvent*)
{
    if (!m_compact || m_opacity <= 0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_opacity);
    const QPainterPath card = cardShape(compactSize, 1).translated(-pos());
    painter.fillPath(card, glassColor);
    painter.fillPath(card, shadeColor);
}
