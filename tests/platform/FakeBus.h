#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/// The other end of what asks a bus, with the words that a test gives it.
class FakeBus
{
public:
    FakeBus() = default;
    ~FakeBus() { ::close(m_server); }
    FakeBus(const FakeBus&) = delete;
    FakeBus& operator=(const FakeBus&) = delete;

    /// Takes connections from now on; `waiting` of them, and one more, may wait to be taken.
    void listen(int waiting = 4)
    {
        sockaddr_un to{};
        to.sun_family = AF_UNIX;
        std::strncpy(to.sun_path, m_path.constData(), sizeof to.sun_path - 1);
        ASSERT_EQ(::bind(m_server, reinterpret_cast<const sockaddr*>(&to), sizeof to), 0);
        ASSERT_EQ(::listen(m_server, waiting), 0);
    }

    /// Waits for a connection. Below 0 after hangUp().
    int accept() const { return ::accept(m_server, nullptr, nullptr); }

    /// Takes no connections any more.
    void hangUp() const { ::shutdown(m_server, SHUT_RDWR); }

    /// Takes one connection and answers as a bus does: with a line to the first words, with the
    /// rest to what comes then.
    void serve(const QByteArray& answer)
    {
        const int connection = accept();
        const qsizetype lineEnd = answer.indexOf("\r\n");
        greeting = hear(connection);
        say(connection, lineEnd < 0 ? answer : answer.left(lineEnd + 2));
        question = lineEnd < 0 ? QByteArray() : hear(connection);
        if (!question.isEmpty())
            say(connection, answer.mid(lineEnd + 2));
        ::close(connection);
    }

    static QByteArray hear(int connection)
    {
        char buffer[1024];
        return {buffer, std::max(::read(connection, buffer, sizeof buffer), ssize_t{0})};
    }

    /// False when the other end has hung up.
    static bool say(int connection, const QByteArray& words)
    {
        const auto size = static_cast<std::size_t>(words.size());
        return ::send(connection, words.constData(), size, MSG_NOSIGNAL) == words.size();
    }

    /// The answers of a bus, as they come over the wire: to the greeting, and whether a name is
    /// owned. The first is followed by a signal.
    static QByteArray answers(bool isOwned)
    {
        const QByteArray hello("l\2\1\1\x9\0\0\0\1\0\0\0\x8\0\0\0\5\1u\0\1\0\0\0\4\0\0\0:1.2\0",
                               33);
        const QByteArray signal("l\4\1\1\0\0\0\0\2\0\0\0\x8\0\0\0\3\1s\0\1\0\0\0", 24);
        QByteArray reply("l\2\1\1\4\0\0\0\3\0\0\0\x8\0\0\0\5\1u\0\2\0\0\0\0\0\0\0", 28);
        reply[24] = isOwned ? 1 : 0;
        return "OK 0123\r\n" + hello + signal + reply;
    }

    QByteArray address() const
    {
        return "unix:path=" + m_path.toPercentEncoding("/") + ",guid=0123";
    }

    QByteArray greeting; ///< the first words of the connection that was served
    QByteArray question; ///< and what came then

private:
    QTemporaryDir m_folder;
    QByteArray m_path = m_folder.filePath(QStringLiteral("bus socket")).toLocal8Bit();
    int m_server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};
