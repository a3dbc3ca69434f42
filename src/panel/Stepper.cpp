#include "panel/Stepper.h"

#include "panel/PanelStyle.h"
#include "panel/StepperAccessible.h"
#include "panel/SymbolIcon.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QToolButton>
#include <QWheelEvent>

#include <cstdlib>

namespace {

// Logical pixels.
constexpr QSize buttonSize(32, 26);
constexpr int symbolSide = 14;
constexpr int focusRoom = 3;
constexpr double focusRadius = 6;

constexpr int wheelStep = 120; ///< eighths of a degree

} // namespace

Stepper::Stepper(const QString& title, StepRange range, const QString& unit)
    : m_range(range)
    , m_unit(unit)
{
    installStepperAccessibility();
    setAccessibleName(title);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(focusRoom, focusRoom, focusRoom, focusRoom);
    row->setSpacing(2);
    m_lower = addButton(QStringLiteral("minus"), QStringLiteral("Less"), &Stepper::lowerValue);
    m_raise = addButton(QStringLiteral("plus"), QStringLiteral("More"), &Stepper::raiseValue);
    offerButtons();
}

QToolButton* Stepper::addButton(const QString& symbol, const QString& words,
                                void (Stepper::*action)())
{
    auto* button = new QToolButton;
    button->setIcon(symbolIcon(symbol));
    button->setIconSize({symbolSide, symbolSide});
    button->setFixedSize(buttonSize);
    button->setAccessibleName(words + QLatin1Char(' ') + accessibleName());
    button->setAutoRepeat(true);
    // The two are one stop on the way of the keyboard.
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QToolButton::clicked, this, action);
    layout()->addWidget(button);
    return button;
}

void Stepper::setValue(qint64 value)
{
    if (value == m_value)
        return;
    m_value = value;
    offerButtons();
    announceStepperValue(*this);
}

void Stepper::offerButtons()
{
    m_lower->setEnabled(m_range.canLower(m_value));
    m_raise->setEnabled(m_range.canRaise(m_value));
}

QString Stepper::text() const
{
    return QString::number(m_value) + QLatin1Char(' ') + m_unit;
}

void Stepper::raiseValue()
{
    request(m_range.raised(m_value));
}

void Stepper::lowerValue()
{
    request(m_range.lowered(m_value));
}

void Stepper::request(qint64 value)
{
    if (value == m_value)
        return;
    // The next press may come before the value is read back, and goes on from this one.
    setValue(value);
    Q_EMIT valueRequested(value);
}

void Stepper::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Plus:
        raiseValue();
        break;
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Minus:
        lowerValue();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

/// Only for those who have chosen this control before: whoever scrolls past changes nothing.
void Stepper::wheelEvent(QWheelEvent* event)
{
    if (!hasFocus()) {
        event->ignore();
        return;
    }
    m_wheelTurn += event->angleDelta().y();
    for (; m_wheelTurn >= wheelStep; m_wheelTurn -= wheelStep)
        raiseValue();
    for (; m_wheelTurn <= -wheelStep; m_wheelTurn += wheelStep)
        lowerValue();
    event->accept();
}

void Stepper::focusInEvent(QFocusEvent*)
{
    m_wheelTurn = 0;
    update();
}

void Stepper::focusOutEvent(QFocusEvent*)
{
    update();
}

void Stepper::paintEvent(QPaintEvent*)
{
    if (!hasFocus())
        return;
    QPainter painter(this);
    panelStyle::drawFocusRing(painter, palette(), rect(), focusRadius);
}
