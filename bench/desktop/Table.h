#pragma once

#include <optional>
#include <string>
#include <vector>

/// Prints figures of the program beside those of the empty window, as a Markdown table.
class Table
{
public:
    struct Row
    {
        std::string figure; ///< with its unit
        double value = 0;
        double reference = 0;
        int decimals = 0;
        std::optional<double> highestRatio{};
        std::optional<double> highestValue{};
    };

    explicit Table(std::string title);

    void add(Row row);
    void print() const;

private:
    std::string m_title;
    std::vector<Row> m_rows;
};

double median(std::vector<double> values);
