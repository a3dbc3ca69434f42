#include "bench/log/Figures.h"

#include <cstdio>

void printTableHead()
{
    std::printf("| Figure | vantora | Reference | Ratio | Bar | Holds |\n");
    std::printf("|---|--:|--:|--:|---|---|\n");
}

void print(const Figure& figure)
{
    const double ratio = figure.own / figure.reference;
    std::printf("| %s | %.3f | %.3f | %.2f | ", figure.name.c_str(), figure.own, figure.reference,
                ratio);
    if (figure.highestRatio)
        std::printf("at most %.2f | %s |\n", *figure.highestRatio,
                    ratio <= *figure.highestRatio ? "yes" : "**no**");
    else
        std::printf("– | – |\n");
    std::fflush(stdout);
}
