#pragma once

#include <optional>
#include <string>
#include <vector>

/// Prints figures of the program beside those of another one, as a Markdown table.
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

    explicit Table(std::string title, std::string reference = "empty_window");

    void add(Row row);
    void print() const;

private:
    std::string m_title;
    std::string m_reference; ///< the name of the other program
    std::vector<Row> m_rows;
};

/// The number with so many decimals.
std::string textOf(double number, int decimals);
