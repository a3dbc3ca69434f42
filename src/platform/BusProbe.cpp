#include "platform/BusProbe.h"

#include <QByteArrayList>

#include <cstddef>
#include <cstring>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

struct SocketAddress
{
    sockaddr_un address{};
    socklen_t length = 0;
};

/// The socket of an address such as "unix:path=/run/user/1000/bus,guid=…".
std::optional<SocketAddress> socketOf(const QByteArray& address)
{
    const QByteArray scheme("unix:");
    if (!address.startsWith(scheme))
        return std::nullopt;
    for (const QByteArray& part : address.mid(scheme.size()).split(',')) {
        const bool isPath = part.startsWith("path=");
        if (!isPath && !part.startsWith("abstract="))
            continue;
        // The name of an abstract socket begins with a zero.
        const QByteArray place = QByteArray::fromPercentEncoding(part.mid(part.indexOf('=') + 1));
        const QByteArray name = isPath ? place : '\0' + place;
        SocketAddress socket;
        socket.address.sun_family = AF_UNIX;
        if (static_cast<std::size_t>(name.size()) >= sizeof socket.address.sun_path)
            return std::nullopt;
        std::memcpy(socket.address.sun_path, name.constData(),
                    static_cast<std::size_t>(name.size()));
        socket.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path)) +
                        static_cast<socklen_t>(name.size()) + (isPath ? 1 : 0);
        return socket;
    }
    return std::nullopt;
}

class Socket
{
public:
    Socket()
        : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {}
    ~Socket() { ::close(m_descriptor); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    bool connectTo(const SocketAddress& to) const
    {
        return ::connect(m_descriptor, reinterpret_cast<const sockaddr*>(&to.address), to.length) ==
               0;
    }

    bool send(const QByteArray& bytes) const
    {
        return ::send(m_descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size()),
                      MSG_NOSIGNAL) == bytes.size();
    }

    bool answers(std::chrono::milliseconds atMost) const
    {
        pollfd wait{m_descriptor, POLLIN, 0};
        return ::poll(&wait, 1, static_cast<int>(atMost.count())) == 1 &&
               (wait.revents & POLLIN) != 0;
    }

private:
    int m_descriptor;
};

} // namespace

bool busAnswers(const QByteArray& address, std::chrono::milliseconds atMost)
{
    for (const QByteArray& one : address.split(';')) {
        const std::optional<SocketAddress> place = socketOf(one);
        if (!place)
            return true;
        const Socket socket;
        if (!socket.connectTo(*place))
            continue; // nobody is there: Qt sees that at once
        const QByteArray user = QByteArray::number(::getuid()).toHex();
        return socket.send('\0' + QByteArray("AUTH EXTERNAL ") + user + "\r\n") &&
               socket.answers(atMost);
    }
    return true;
}
