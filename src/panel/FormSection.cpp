#include "panel/FormSection.h"

#include "paint/ContinuousCorners.h"
#include "panel/PanelStyle.h"
#include "panel/SymbolIcon.h"
#include "panel/TextLabel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace {

// Logical pixels.
constexpr double groundRadius = 10;
constexpr int textIndent = 12;
constexpr int rowHeight = 40;
constexpr int rowSpacing = 10;
constexpr int symbolSide = 18;

} // namespace

FormSection::FormSection(const QString& header, const QString& footer)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(6);
    auto* title =
        new TextLabel(header, panelStyle::headlineSize, QFont::DemiBold, TextLabel::Shade::primary);
    title->setContentsMargins(textIndent, 0, textIndent, 0);
    column->addWidget(title);

    auto* ground = new FormGround;
    ground->setAccessibleName(header);
    m_rows = new QVBoxLayout(ground);
    m_rows->setContentsMargins({});
    m_rows->setSpacing(1);
    column->addWidget(ground);

    if (footer.isEmpty())
        return;
    auto* note =
        new TextLabel(footer, panelStyle::captionSize, QFont::Normal, TextLabel::Shade::secondary);
    note->setWordWrap(true);
    note->setContentsMargins(textIndent, 0, textIndent, 0);
    column->addWidget(note);
}

void FormSection::addRow(QWidget* content)
{
    m_rows->addWidget(content);
}

void FormSection::addRow(const QString& symbol, const QString& title,
                         std::initializer_list<QWidget*> controls)
{
    auto* row = new QWidget;
    row->setMinimumHeight(rowHeight);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(textIndent, 3, textIndent - 3, 3);
    line->setSpacing(rowSpacing);
    line->addWidget(new SymbolView(symbol, symbolSide));
    auto* words =
        new TextLabel(title, panelStyle::headlineSize, QFont::Normal, TextLabel::Shade::primary);
    words->setWordWrap(true); // where fonts are large
    line->addWidget(words, 1);
    for (QWidget* control : controls)
        line->addWidget(control);
    addRow(row);
}

void FormGround::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(panelStyle::groupBorder(palette()));
    painter.setBrush(panelStyle::groupFill(palette()));
    painter.drawPath(
        continuousRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), groundRadius));
    // Between two rows there is a pixel of room for a line, from the titles on.
    painter.setRenderHint(QPainter::Antialiasing, false);
    const int left = textIndent + qRound(symbolSide * panelStyle::textScale()) + rowSpacing;
    for (int i = 1; i < layout()->count(); ++i) {
        const int y = layout()->itemAt(i)->geometry().top() - 1;
        painter.fillRect(QRect(left, y, width() - left - 1, 1), panelStyle::separator(palette()));
    }
}
