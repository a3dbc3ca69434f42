#include "core/Fatal.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

void stopProcess(const char* why)
{
    std::fprintf(stderr, "vantora: %s\n", why);
    std::abort();
}

qint64 addOrStop(qint64 a, qint64 b)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        stopProcess("a sum does not fit 64 bits");
    return sum;
}

qint64 subtractOrStop(qint64 a, qint64 b)
{
    qint64 difference = 0;
    if (__builtin_sub_overflow(a, b, &difference))
        stopProcess("a difference does not fit 64 bits");
    return difference;
}

qint64 multiplyOrStop(qint64 a, qint64 b)
{
    qint64 product = 0;
    if (__builtin_mul_overflow(a, b, &product))
        stopProcess("a product does not fit 64 bits");
    return product;
}

qint64 wholeNumberOrStop(double value)
{
    // 2^63 is exact as a double, the largest 64-bit integer is not: compare with the bounds below
    // and above it. A NaN fails both comparisons.
    constexpr double bound = 9223372036854775808.0;
    const double whole = std::trunc(value);
    if (!(whole >= -bound && whole < bound))
        stopProcess("a number of seconds does not fit 64 bits");
    return static_cast<qint64>(whole);
}
