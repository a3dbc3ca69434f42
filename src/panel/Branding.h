#pragma once

#include <QString>

/// Who makes the program, and the pictures that go with it. Distributors set the texts when they
/// configure the build.
namespace branding {

QString maker();
QString linkTitle();
QString linkAddress();

/// Paths of pictures in the program.
QString banner();
QString icon();

} // namespace branding
