#pragma once

#include "core/Observable.h"

#include <functional>
#include <utility>

/// A value that announces each assignment through its owner before it takes effect, and runs its
/// reaction after. Equal values are no exception to either.
template <typename T>
class Published
{
public:
    using Reaction = std::function<void(const T& oldValue)>;

    explicit Published(Observable& owner, T initial = {}, Reaction reaction = {})
        : m_owner(owner)
        , m_value(std::move(initial))
        , m_reaction(std::move(reaction))
    {}

    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    const T& operator()() const { return m_value; }

    Published& operator=(T newValue)
    {
        Q_EMIT m_owner.willChange();
        std::swap(m_value, newValue);
        if (m_reaction)
            m_reaction(newValue);
        return *this;
    }

    /// Changes the value where it stands, as one assignment that copies nothing. The reaction is
    /// not run: it would need the old value.
    template <typename Change>
    void mutate(Change change)
    {
        Q_EMIT m_owner.willChange();
        change(m_value);
    }

private:
    Observable& m_owner;
    T m_value;
    Reaction m_reaction;
};
