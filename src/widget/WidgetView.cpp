#include "widget/WidgetView.h"

#include "core/NextPass.h"
#include "paint/Colors.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

namespace {

const QColor cardColor(16, 18, 28, 235);
constexpr double cardRadius = 20;

/// The three lines of the face, in parts of its height.
constexpr double titleLine = 0.28;
constexpr double readoutLine = 0.52;
constexpr double hintLine = 0.78;

constexpr double dimmedOpacity = 0.45;

void drawLine(QPainter& painter, const QRect& card, double line, int pixelSize, const QColor& color,
              const QString& text)
{
    QFont font = painter.font();
    font.setPixelSize(pixelSize);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(color);
    QRect row(0, 0, card.width(), pixelSize * 3 / 2);
    row.moveCenter({card.center().x(), card.top() + qRound(line * card.height())});
    painter.drawText(row, Qt::AlignCenter, text);
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
    m_face = std::move(face);
    update();
}

void WidgetView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(cardColor);
    painter.drawRoundedRect(rect(), cardRadius, cardRadius);

    const bool full = height() > preferredSize(true).height();
    const QColor tone = toQColor(factsOf(m_face.phase).lightTone);
    const QColor readoutColor(255, 255, 255, m_face.dimmed ? qRound(255 * dimmedOpacity) : 255);
    drawLine(painter, rect(), titleLine, full ? 12 : 10, tone, m_face.title);
    drawLine(painter, rect(), readoutLine, full ? 44 : 26, readoutColor, m_face.readout);
    drawLine(painter, rect(), hintLine, full ? 12 : 10, tone, m_face.hint);
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
    if (std::exchange(m_mayBeTap, false) && m_engine.state() == TimerEngine::State::complete)
        m_engine.advance(false);
    event->ignore();
}
