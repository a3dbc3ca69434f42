#pragma once

#include "widget/Motion.h"

#include <algorithm>
#include <utility>
#include <vector>

/// What stands in one place of the widget: the content of now, coming in, and earlier ones that are
/// still going out. One that returns in time comes back from where it was.
template <typename Content>
class Fade
{
public:
    explicit Fade(Content content) { jumpTo(std::move(content)); }

    /// The content of now.
    const Content& content() const { return m_items.back().content; }

    void jumpTo(Content content)
    {
        m_items.clear();
        m_items.push_back({std::move(content), Motion(1)});
    }

    void moveTo(Content content, Curve curve, Instant now)
    {
        if (content == this->content())
            return;
        std::erase_if(m_items, [&](const Item& item) {
            return item.presence.target() == 0 && !item.presence.isMovingAt(now);
        });
        Item next{std::move(content), Motion(0)};
        for (auto item = m_items.begin(); item != m_items.end(); ++item) {
            if (item->content == next.content) {
                next = std::move(*item);
                m_items.erase(item);
                break;
            }
        }
        for (Item& item : m_items)
            item.presence.moveTo(0, curve, now);
        next.presence.moveTo(1, curve, now);
        m_items.push_back(std::move(next));
    }

    bool isMovingAt(Instant now) const
    {
        return std::any_of(m_items.begin(), m_items.end(),
                           [now](const Item& item) { return item.presence.isMovingAt(now); });
    }

    /// Calls `visit(content, presence)` for all that is there at `now`, the content of now last;
    /// presence is from 0 to 1.
    template <typename Visitor>
    void visit(Instant now, Visitor visit) const
    {
        for (const Item& item : m_items) {
            if (const double presence = item.presence.at(now); presence > 0)
                visit(item.content, presence);
        }
    }

private:
    struct Item
    {
        Content content;
        Motion presence;
    };

    std::vector<Item> m_items;
};
