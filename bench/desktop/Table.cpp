#include "bench/desktop/Table.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

std::string number(double value, int decimals)
{
    std::string text(64, '\0');
    text.resize(
        static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.*f", decimals, value)));
    return text;
}

std::string barOf(const Table::Row& row)
{
    if (row.highestRatio)
        return "ratio at most " + number(*row.highestRatio, 1);
    if (row.highestValue)
        return "below " + number(*row.highestValue, 1);
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

Table::Table(std::string title)
    : m_title(std::move(title))
{}

void Table::add(Row row)
{
    m_rows.push_back(std::move(row));
}

void Table::print() const
{
    std::printf("\n### %s\n\n", m_title.c_str());
    std::printf("| Figure | vantora | empty_window | Ratio | Bar | Holds |\n");
    std::printf("|---|--:|--:|--:|---|---|\n");
    for (const Row& row : m_rows) {
        const std::string ratio =
            row.reference > 0 ? number(row.value / row.reference, 2) : std::string("–");
        std::printf("| %s | %s | %s | %s | %s | %s |\n", row.figure.c_str(),
                    number(row.value, row.decimals).c_str(),
                    number(row.reference, row.decimals).c_str(), ratio.c_str(), barOf(row).c_str(),
                    verdictOf(row).c_str());
    }
    std::fflush(stdout);
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}
