#include "panel/LogRowDelegate.h"

#include "paint/Colors.h"
#include "panel/FixedDigits.h"
#include "panel/LogListModel.h"
#include "panel/PanelStyle.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace {

// Logical pixels.
constexpr int sideMargin = 16;
constexpr int verticalPadding = 2;
constexpr int listPadding = 3; ///< of any row of a list, around its own padding
constexpr int spacing = 10;
constexpr int lineSpacing = 1;
constexpr double titleSize = 12;
constexpr double dateSize = 10;

QFont titleFont()
{
    return panelStyle::font(titleSize, QFont::DemiBold);
}

QFont dateFont()
{
    return panelStyle::font(dateSize);
}

QFont amountFont()
{
    return panelStyle::roundedFont(titleSize, QFont::DemiBold);
}

int textHeight()
{
    return QFontMetrics(titleFont()).height() + lineSpacing + QFontMetrics(dateFont()).height();
}

/// Emoji fill less of a line than letters do.
QFont emojiFont()
{
    return panelStyle::font(1.25 * panelStyle::headlineSize);
}

/// The room of the widest of the phases' emoji.
int emojiWidth()
{
    const QFontMetrics metrics(emojiFont());
    int widest = 0;
    for (const Phase phase : allPhases)
        widest = std::max(widest, metrics.horizontalAdvance(factsOf(phase).emoji));
    return widest;
}

} // namespace

void LogRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    const auto& model = *static_cast<const LogListModel*>(index.model());
    const LogListModel::Row row = model.row(index.row());
    const PhaseFacts& facts = factsOf(row.phase);

    painter->save();
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const auto group =
        option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    if (selected)
        painter->fillRect(option.rect, option.palette.color(group, QPalette::Highlight));
    const QColor text = option.palette.color(group, selected ? QPalette::HighlightedText
                                                             : QPalette::Text);
    const QRect inner = option.rect.adjusted(sideMargin, 0, -sideMargin, 0);

    const int textLeft = inner.left() + emojiWidth() + spacing;
    painter->setPen(text);
    painter->setFont(emojiFont());
    painter->drawText(QRect(inner.left(), inner.top(), textLeft - spacing - inner.left(),
                            inner.height()),
                      Qt::AlignCenter, facts.emoji);

    const double amountWidth = fixedDigits::width(row.amount, amountFont());
    painter->setPen(selected ? text : toQColor(facts.darkTone));
    const QFontMetrics amountMetrics(amountFont());
    const int amountBaseline =
        inner.top() + (inner.height() - amountMetrics.height()) / 2 + amountMetrics.ascent();
    fixedDigits::draw(*painter, {inner.right() + 1 - amountWidth, double(amountBaseline)},
                      row.amount, amountFont());

    const int textWidth = inner.right() + 1 - textLeft - spacing - qRound(amountWidth);
    QRect line(textLeft, inner.top() + (inner.height() - textHeight()) / 2, textWidth,
               QFontMetrics(titleFont()).height());
    const auto drawLine = [&](const QFont& font, const QColor& color, const QString& words) {
        painter->setFont(font);
        painter->setPen(color);
        painter->drawText(line, Qt::AlignLeading | Qt::AlignVCenter,
                          painter->fontMetrics().elidedText(words, Qt::ElideRight, textWidth));
    };
    drawLine(titleFont(), text, facts.title);
    line = QRect(textLeft, line.bottom() + 1 + lineSpacing, textWidth,
                 QFontMetrics(dateFont()).height());
    drawLine(dateFont(), selected ? text : panelStyle::secondaryText(option.palette), row.date);

    if (index.row() + 1 < model.rowCount() && !selected) {
        painter->fillRect(QRect(textLeft, option.rect.bottom(), inner.right() + 1 - textLeft, 1),
                          panelStyle::separator(option.palette));
    }
    painter->restore();
}

QSize LogRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const int content = std::max(textHeight(), QFontMetrics(emojiFont()).height());
    return {option.rect.width(), content + 2 * (verticalPadding + listPadding)};
}
