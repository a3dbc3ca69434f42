#include "LateBus.h"

#include <algorithm>
#include <array>
#include <poll.h>
#include <utility>

namespace {

/// Hands on what has come, if anything has. False at the end.
bool handOn(const pollfd& from, int to)
{
    if (from.revents == 0)
        return true;
    std::array<char, 65536> buffer;
    const ssize_t size = ::recv(from.fd, buffer.data(), buffer.size(), 0);
    return size > 0 &&
           ::send(to, buffer.data(), static_cast<std::size_t>(size), MSG_NOSIGNAL) == size;
}

} // namespace

LateBus::LateBus(const QString& path, QString realPath)
    : m_server(path)
    , m_realPath(std::move(realPath))
{}

LateBus::~LateBus()
{
    m_thread = {};
    for (const Link& link : m_links) {
        ::close(link.program);
        ::close(link.bus);
    }
    for (const int program : m_held)
        ::close(program);
}

void LateBus::answer(int connections)
{
    m_toAnswer = connections;
    m_thread = std::jthread([this](const std::stop_token& stop) { pump(stop); });
}

void LateBus::pump(const std::stop_token& stop)
{
    constexpr int noticesStopWithin = 20; // ms
    while (!stop.stop_requested()) {
        std::vector<pollfd> ends{{m_server.socket(), POLLIN, 0}};
        for (const Link& link : m_links) {
            ends.push_back({link.program, POLLIN, 0});
            ends.push_back({link.bus, POLLIN, 0});
        }
        if (::poll(ends.data(), ends.size(), noticesStopWithin) <= 0)
            continue;
        auto end = ends.begin() + 1;
        std::erase_if(m_links, [&](const Link& link) {
            const pollfd& program = *end++;
            const pollfd& bus = *end++;
            if (handOn(program, link.bus) && handOn(bus, link.program))
                return false;
            ::close(link.program);
            ::close(link.bus);
            return true;
        });
        if (ends.front().revents != 0)
            takeConnection();
    }
}

void LateBus::takeConnection()
{
    const int program = ::accept(m_server.socket(), nullptr, nullptr);
    pollfd end{program, 0, 0};
    if (::poll(&end, 1, 0) > 0) { // it was given up
        ::close(program);
        return;
    }
    if (m_toAnswer-- <= 0) {
        m_held.push_back(program);
        ++m_unanswered;
        return;
    }
    const int bus = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un real = socketAddress(m_realPath);
    ::connect(bus, reinterpret_cast<const sockaddr*>(&real), sizeof real);
    m_links.push_back({program, bus});
}
