#include "panel/Branding.h"

namespace branding {

QString maker()
{
    return QStringLiteral(VANTORA_MAKER);
}

QString linkTitle()
{
    return QStringLiteral(VANTORA_LINK_TITLE);
}

QString linkAddress()
{
    return QStringLiteral(VANTORA_LINK_ADDRESS);
}

QString banner()
{
    return QStringLiteral(":/vantora/banner.png");
}

QString icon()
{
    return QStringLiteral(":/vantora/icon.png");
}

} // namespace branding
