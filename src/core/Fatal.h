#pragma once

#include <QtGlobal>

/// Ends the process: the program's own rules are broken and going on would show or store nonsense.
[[noreturn]] void stopProcess(const char* why);

/// The sum or the product; stops the process when it does not fit.
qint64 addOrStop(qint64 a, qint64 b);
qint64 subtractOrStop(qint64 a, qint64 b);
qint64 multiplyOrStop(qint64 a, qint64 b);

/// The whole number in `value`, cut towards zero; stops the process when `value` is not finite or
/// does not fit.
qint64 wholeNumberOrStop(double value);
