#include "panel/LogRowDelegate.h"

#include "paint/Colors.h"
#include "panel/FixedDigits.h"
#include "panel/LogListModel.h"
#include "panel/PanelStyle.h"

#include <QApplication>
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

/// Emoji fill less of a line than letters do.
constexpr double emojiSize = 1.25 * panelStyle::headlineSize;

} // namespace

int LogRowDelegate::Look::textHeight() const
{
    return titleHeight + lineSpacing + dateHeight;
}

const LogRowDelegate::Look& LogRowDelegate::look() const
{
    const QFont desktopFont = QApplication::font();
    if (!m_look.emojiRoom.isEmpty() && m_look.desktopFont == desktopFont)
        return m_look;
    m_look = {.desktopFont = desktopFont,
              .title = panelStyle::font(titleSize, QFont::DemiBold),
              .date = panelStyle::font(dateSize),
              .amount = panelStyle::roundedFont(titleSize, QFont::DemiBold),
              .emoji = panelStyle::font(emojiSize)};
    m_look.titleHeight = QFontMetrics(m_look.title).height();
    m_look.dateHeight = QFontMetrics(m_look.date).height();
    m_look.amountHeight = QFontMetrics(m_look.amount).height();
    m_look.amountAscent = QFontMetrics(m_look.amount).ascent();
    const QFontMetrics emoji(m_look.emoji);
    int widest = 1;
    for (const Phase phase : allPhases)
        widest = std::max(widest, emoji.horizontalAdvance(factsOf(phase).emoji));
    m_look.emojiRoom = {widest, emoji.height()};
    return m_look;
}

const QPixmap& LogRowDelegate::emojiPicture(Phase phase, const QColor& color, double scale) const
{
    const QSize room = look().emojiRoom;
    if (color != m_look.emojiColor)
        m_look.emojiPictures = {};
    m_look.emojiColor = color;
    QPixmap& picture = m_look.emojiPictures.at(static_cast<std::size_t>(rawValue(phase)));
    if (!picture.isNull() && picture.devicePixelRatio() == scale)
        return picture;
    picture = QPixmap((QSizeF(room) * scale).toSize());
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(m_look.emoji);
    painter.setPen(color);
    painter.drawText(QRect({}, room), Qt::AlignCenter, factsOf(phase).emoji);
    return picture;
}

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
    const QColor text =
        option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
    const QRect inner = option.rect.adjusted(sideMargin, 0, -sideMargin, 0);

    const Look& shape = look();
    const QSize emojiRoom = shape.emojiRoom;
    painter->drawPixmap(inner.left(), inner.top() + (inner.height() - emojiRoom.height()) / 2,
                        emojiPicture(row.phase, text, painter->device()->devicePixelRatioF()));
    const int textLeft = inner.left() + emojiRoom.width() + spacing;

    const double amountWidth = fixedDigits::width(row.amount, shape.amount);
    painter->setPen(selected ? text : toQColor(facts.darkTone));
    const int amountBaseline =
        inner.top() + (inner.height() - shape.amountHeight) / 2 + shape.amountAscent;
    fixedDigits::draw(*painter, {inner.right() + 1 - amountWidth, double(amountBaseline)},
                      row.amount, shape.amount);

    const int textWidth = inner.right() + 1 - textLeft - spacing - qRound(amountWidth);
    QRect line(textLeft, inner.top() + (inner.height() - shape.textHeight()) / 2, textWidth,
               shape.titleHeight);
    const auto drawLine = [&](const QFont& font, const QColor& color, const QString& words) {
        painter->setFont(font);
        painter->setPen(color);
        painter->drawText(line, Qt::AlignLeading | Qt::AlignVCenter,
                          painter->fontMetrics().elidedText(words, Qt::ElideRight, textWidth));
    };
    drawLine(shape.title, text, facts.title);
    line = QRect(textLeft, line.bottom() + 1 + lineSpacing, textWidth, shape.dateHeight);
    drawLine(shape.date, selected ? text : panelStyle::secondaryText(option.palette), row.date);

    if (index.row() + 1 < model.rowCount() && !selected) {
        painter->fillRect(QRect(textLeft, option.rect.bottom(), inner.right() + 1 - textLeft, 1),
                          panelStyle::separator(option.palette));
    }
    if (option.state.testFlag(QStyle::State_HasFocus) && !selected) {
        painter->setPen(option.palette.color(QPalette::Highlight));
        painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
    }
    painter->restore();
}

QSize LogRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const int content = std::max(look().textHeight(), look().emojiRoom.height());
    return {option.rect.width(), content + 2 * (verticalPadding + listPadding)};
}
