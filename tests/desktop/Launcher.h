#pragma once

#include "World.h"
#include "support/Waiting.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariantList>
#include <QVariantMap>

/// Calls the running program over the world's bus as a launcher does, and returns its answer.
inline QDBusMessage callProgram(const World& world, const QString& method,
                                const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("io.github.vantora.Vantora"), QStringLiteral("/io/github/vantora/Vantora"),
        QStringLiteral("org.freedesktop.Application"), method);
    message.setArguments(arguments);
    const QDBusPendingCall answer =
        QDBusConnection::connectToBus(world.busAddress(),
                                      QStringLiteral("launcher on ") + world.busAddress())
            .asyncCall(message);
    return waitUntil([&] { return answer.isFinished(); }) ? answer.reply() : QDBusMessage();
}

/// Has the program do one of its actions; false if it refuses.
inline bool act(const World& world, const QString& action)
{
    return callProgram(world, QStringLiteral("ActivateAction"),
                       {action, QVariantList(), QVariantMap()})
               .type() == QDBusMessage::ReplyMessage;
}
