#include "core/NextPass.h"

#include <memory>
#include <utility>

void onNextPass(Observable& observed, QObject* context, std::function<void()> read)
{
    auto pending = std::make_shared<bool>(false);
    QObject::connect(&observed, &Observable::willChange, context,
                     [pending, context, read = std::move(read)] {
                         if (std::exchange(*pending, true))
                             return;
                         QMetaObject::invokeMethod(
                             context,
                             [pending, read] {
                                 *pending = false;
                                 read();
                             },
                             Qt::QueuedConnection);
                     });
}
