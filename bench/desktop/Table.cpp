#include "bench/desktop/Table.h"

#include <cstdio>
#include <utility>

namespace {

std::string barOf(const Table::Row& row)
{
    if (row.highestRatio)
        return "ratio at most " + textOf(*row.highestRatio, 1);
    if (row.highestValue)
        return "below " + textOf(*row.highestValue, 1);
    return "–";
}

std::string verdictOf(const Table::Row& row)
{
    if (row.highestRatio)
        return row.value <= *row.highestRatio * row.reference ? "yes" : "**no**";
    if (row.highestValue)
        return row.value < *row.highestValue ? "yes" : "**no**";
    return "–";
}

} // namespace

std::string textOf(double number, int decimals)
{
    std::string text(64, '\0');
    text.resize(static_cast<std::size_t>(
        std::snprintf(text.data(), text.size(), "%.*f", decimals, number)));
    return text;
}

Table::Table(std::string title, std::string reference)
    : m_title(std::move(title))
    , m_reference(std::move(reference))
{}

void Table::add(Row row)
{
    m_rows.push_back(std::move(row));
}

void Table::print() const
{
    std::printf("\n### %s\n\n", m_title.c_str());
    std::printf("| Figure | vantora | %s | Ratio | Bar | Holds |\n", m_reference.c_str());
    std::printf("|---|--:|--:|--:|---|---|\n");
    for (const Row& row : m_rows) {
        const std::string ratio =
            row.reference > 0 ? textOf(row.value / row.reference, 2) : std::string("–");
        std::printf("| %s | %s | %s | %s | %s | %s |\n", row.figure.c_str(),
                    textOf(row.value, row.decimals).c_str(),
                    textOf(row.reference, row.decimals).c_str(), ratio.c_str(), barOf(row).c_str(),
                    verdictOf(row).c_str());
    }
    std::fflush(stdout);
}
