#pragma once

#include "core/Phase.h"

#include <QPixmap>
#include <QStyledItemDelegate>

#include <array>

/// Draws the rows of a LogListModel.
class LogRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    /// What all rows have in common beside one font of the desktop. Measuring and drawing an emoji
    /// takes longer than all the rest of a row, as its font has it as a compressed picture.
    struct Look
    {
        QFont desktopFont;
        QFont title;
        QFont date;
        QFont amount;
        QFont emoji;
        int titleHeight = 0;
        int dateHeight = 0;
        int amountHeight = 0;
        int amountAscent = 0;
        QSize emojiRoom{};
        QColor emojiColor{};                                   ///< where their font has no colours
        std::array<QPixmap, allPhases.size()> emojiPictures{}; ///< null until needed

        int textHeight() const;
    };

    const Look& look() const;
    const QPixmap& emojiPicture(Phase phase, const QColor& color, double scale) const;

    mutable Look m_look;
};
