#include "widget/WidgetView.h"

#include "core/NextPass.h"
#include "paint/Colors.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace {

const QColor cardColor(16, 18, 28, 235);
constexpr double cardRadius = 20;

constexpr double dimmedOpacity = 0.45;

/// A line of text across the card: its middle as a part of the card's height, and its size.
struct Line
{
    double middle;
    int pixelSize;

    QRect within(const QRect& card) const
    {
        QRect row(0, 0, card.width(), pixelSize * 5 / 4);
        row.moveCenter({card.center().x(), card.top() + qRound(middle * card.height())});
        return row;
    }
};

constexpr double titleMiddle = 0.2;
constexpr double readoutMiddle = 0.52;
constexpr double hintMiddle = 0.84;

bool isFull(const QRect& card)
{
    return card.height() > WidgetView::preferredSize(true).height();
}

Line titleLine(const QRect& card)
{
    return {titleMiddle, isFull(card) ? 12 : 10};
}
Line readoutLine(const QRect& card)
{
    return {readoutMiddle, isFull(card) ? 44 : 26};
}
Line hintLine(const QRect& card)
{
    return {hintMiddle, isFull(card) ? 12 : 10};
}

void drawText(QPainter& painter, const QRect& card, const Line& line, const QColor& color,
              const QString& text)
{
    QFont font = painter.font();
    font.setPixelSize(line.pixelSize);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(line.within(card), Qt::AlignCenter, text);
}

} // namespace

WidgetView::WidgetView(TimerEngine& engine)
    : m_engine(engine)
    , m_face(faceOfEngine())
{
    onNextPass(engine, this, [this] { reread(); });
}

WidgetView::Face WidgetView::faceOfEngine() const
{
    const Phase phase = m_engine.phase();
    Face face{.phase = phase, .title = factsOf(phase).title.toUpper()};
    if (phase == Phase::pushups) {
        face.readout = QStringLiteral("×%1").arg(m_engine.pushupCount());
        return face;
    }
    switch (m_engine.state()) {
    case TimerEngine::State::running:
        face.readout = m_engine.timeString();
        break;
    case TimerEngine::State::paused:
        face.readout = m_engine.timeString();
        face.hint = QStringLiteral("Paused");
        face.dimmed = true;
        break;
    case TimerEngine::State::complete:
        face.readout = QStringLiteral("Done!");
        break;
    }
    return face;
}

void WidgetView::reread()
{
    Face face = faceOfEngine();
    if (face == m_face)
        return;
    Face old = std::exchange(m_face, std::move(face));
    // Most changes are a second less: then only that line is painted.
    old.readout = m_face.readout;
    update(old == m_face ? readoutLine(rect()).within(rect()) : rect());
}

void WidgetView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const bool readoutOnly = readoutLine(rect()).within(rect()).contains(event->rect());
    if (readoutOnly) {
        painter.fillRect(event->rect(), cardColor);
    } else {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(cardColor);
        painter.drawRoundedRect(rect(), cardRadius, cardRadius);
    }
    const QColor tone = toQColor(factsOf(m_face.phase).lightTone);
    const QColor readoutColor(255, 255, 255, m_face.dimmed ? qRound(255 * dimmedOpacity) : 255);
    drawText(painter, rect(), readoutLine(rect()), readoutColor, m_face.readout);
    if (readoutOnly)
        return;
    drawText(painter, rect(), titleLine(rect()), tone, m_face.title);
    drawText(painter, rect(), hintLine(rect()), tone, m_face.hint);
}

// The mouse also drags the window, which is the window's business: the events go on to it.

void WidgetView::mousePressEvent(QMouseEvent* event)
{
    m_pressedAt = event->globalPosition();
    m_mayBeTap = event->button() == Qt::LeftButton;
    event->ignore();
}

void WidgetView::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF way = event->globalPosition() - m_pressedAt;
    if (way.manhattanLength() >= QApplication::startDragDistance())
        m_mayBeTap = false;
    event->ignore();
}

void WidgetView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && std::exchange(m_mayBeTap, false) &&
        m_engine.state() == TimerEngine::State::complete)
        m_engine.advance(false);
    event->ignore();
}
