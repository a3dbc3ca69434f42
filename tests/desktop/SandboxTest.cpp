// The program as a Flatpak runs it, as far as it can tell: by the variable with its id.

#include "DesktopTest.h"

#include <QFile>

TEST_F(DesktopTest, fromASandboxTheTrayGetsANameAndAFileThatItCanReach)
{
    const QString id = QStringLiteral("io.github.vantora.Vantora");
    world.setVariable(QStringLiteral("FLATPAK_ID"), id);
    startWithHost();
    EXPECT_TRUE(host.item().startsWith(u':')) << host.item().toStdString();
    EXPECT_TRUE(host.title().startsWith(QStringLiteral("\U0001FA91 ")));
    const QString icon = host.read(QStringLiteral("IconName")).toString();
    EXPECT_TRUE(icon.startsWith(world.path(QStringLiteral("runtime/app/%1/icon-").arg(id))))
        << icon.toStdString();
    EXPECT_TRUE(QFile::exists(icon));
}
