#pragma once

#include <QString>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

inline sockaddr_un socketAddress(const QString& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.toLocal8Bit().constData(), sizeof address.sun_path - 1);
    return address;
}

/// Something at a path that takes connections and never answers.
class SilentServer
{
public:
    explicit SilentServer(const QString& path)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        const sockaddr_un address = socketAddress(path);
        listens =
            ::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
            ::listen(m_socket, 16) == 0;
    }
    ~SilentServer() { ::close(m_socket); }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    int socket() const { return m_socket; }

    bool listens = false;

private:
    int m_socket;
};
