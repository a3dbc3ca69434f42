#include "platform/BusProbe.h"

#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cerrno>
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

/// A connection whose every wait ends by the same time.
class Socket
{
public:
    explicit Socket(std::chrono::milliseconds atMost)
        : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
        , m_deadline(atMost)
    {}
    ~Socket() { ::close(m_descriptor); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    /// Zero, or the number of the error.
    int connectTo(const SocketAddress& to) const
    {
        const int status =
            ::connect(m_descriptor, reinterpret_cast<const sockaddr*>(&to.address), to.length);
        return status == 0 ? 0 : errno;
    }

    /// Ends a wait of another thread, and all later ones.
    void hangUp() const { ::shutdown(m_descriptor, SHUT_RDWR); }

    bool send(const QByteArray& bytes) const
    {
        return ::send(m_descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size()),
                      MSG_NOSIGNAL) == bytes.size();
    }

    /// More of what has come; empty at the end, when nothing comes in time, and when more has come
    /// than a bus would say.
    QByteArray receive()
    {
        pollfd wait{m_descriptor, POLLIN, 0};
        if (m_received >= mostReceived ||
            ::poll(&wait, 1, static_cast<int>(m_deadline.remainingTime())) != 1)
            return {};
        std::array<char, 4096> buffer;
        const ssize_t length = ::recv(m_descriptor, buffer.data(), buffer.size(), 0);
        m_received += std::max(length, ssize_t{0});
        return length > 0 ? QByteArray(buffer.data(), length) : QByteArray();
    }

private:
    static constexpr ssize_t mostReceived = 65536; ///< bytes

    int m_descriptor;
    QDeadlineTimer m_deadline;
    ssize_t m_received = 0;
};

// --- messages -------------------------------------------------------------------------------
// Each begins with its byte order, type, flags and version, the length of its body, its number and
// the length of its header fields; the fields end at a multiple of eight bytes, then the body
// comes.

constexpr qsizetype prefixLength = 16;
constexpr char littleEndian = 'l';
constexpr char methodCall = 1;
constexpr char methodReturn = 2;
constexpr char errorReply = 3;

QByteArray number(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

void alignTo(qsizetype step, QByteArray& bytes)
{
    while (bytes.size() % step != 0)
        bytes.append('\0');
}

QByteArray stringValue(const QByteArray& text)
{
    return number(static_cast<quint32>(text.size())) + text + '\0';
}

/// A call of the bus itself, with no argument or with a string.
QByteArray busCall(quint32 serial, const QByteArray& method, const QByteArray& argument = {})
{
    QByteArray fields;
    const auto add = [&fields](char code, char type, const QByteArray& value) {
        alignTo(8, fields);
        fields += code;
        fields += '\1';
        fields += type;
        fields += '\0';
        fields += value;
    };
    add(1, 'o', stringValue("/org/freedesktop/DBus"));
    add(2, 's', stringValue("org.freedesktop.DBus"));
    add(3, 's', stringValue(method));
    add(6, 's', stringValue("org.freedesktop.DBus"));
    QByteArray body;
    if (!argument.isNull()) {
        add(8, 'g', QByteArray("\1s\0", 3));
        body = stringValue(argument);
    }
    QByteArray message = QByteArray() + littleEndian + methodCall + '\0' + '\1' +
                         number(static_cast<quint32>(body.size())) + number(serial) +
                         number(static_cast<quint32>(fields.size())) + fields;
    alignTo(8, message);
    return message + body;
}

/// The bodies of the answers in what the bus has sent, in the order of the calls; that of an error
/// is null.
QByteArrayList answersIn(QByteArrayView bytes)
{
    QByteArrayList bodies;
    while (bytes.size() >= prefixLength) {
        const bool isLittle = bytes[0] == littleEndian;
        const auto numberAt = [&](qsizetype at) -> quint32 {
            return isLittle ? qFromLittleEndian<quint32>(bytes.data() + at)
                            : qFromBigEndian<quint32>(bytes.data() + at);
        };
        const quint64 bodyAt = (prefixLength + quint64{numberAt(12)} + 7) / 8 * 8;
        const quint64 end = bodyAt + numberAt(4);
        if (static_cast<quint64>(bytes.size()) < end)
            break;
        const QByteArrayView body =
            bytes.sliced(static_cast<qsizetype>(bodyAt), static_cast<qsizetype>(end - bodyAt));
        if (bytes[1] == methodReturn)
            bodies.append(body.toByteArray());
        else if (bytes[1] == errorReply)
            bodies.append(QByteArray());
        bytes = bytes.sliced(static_cast<qsizetype>(end));
    }
    return bodies;
}

NameOnBus ask(Socket& bus, const QByteArray& name)
{
    const QByteArray user = QByteArray::number(::getuid()).toHex();
    QByteArray heard;
    if (!bus.send('\0' + QByteArray("AUTH EXTERNAL ") + user + "\r\n"))
        return NameOnBus::unsaid;
    // A line of text accepts the user, or refuses. Sandboxes take no message before it.
    while (!heard.endsWith("\r\n")) {
        const QByteArray more = bus.receive();
        if (more.isEmpty())
            return NameOnBus::unsaid;
        heard += more;
    }
    if (!heard.startsWith("OK"))
        return NameOnBus::free;
    heard.clear();
    // Both at once: the bus takes one after the other.
    const bool sent =
        bus.send("BEGIN\r\n" + busCall(1, "Hello") + busCall(2, "NameHasOwner", name));
    while (sent) {
        const QByteArray more = bus.receive();
        if (more.isEmpty())
            break;
        heard += more;
        const QByteArrayList answers = answersIn(heard);
        constexpr qsizetype called = 2;
        if (answers.size() >= called) {
            const bool isOwned = answers[called - 1].count('\0') < answers[called - 1].size();
            return isOwned ? NameOnBus::taken : NameOnBus::free;
        }
    }
    return NameOnBus::unsaid;
}

} // namespace

QByteArray sessionBusAddress()
{
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        return qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray runtimeFolder = qgetenv("XDG_RUNTIME_DIR");
    return runtimeFolder.isEmpty() ? QByteArray()
                                   : "unix:path=" + runtimeFolder.toPercentEncoding("/") + "/bus";
}

NameOnBus askBusFor(const QByteArray& name, const QByteArray& address,
                    std::chrono::milliseconds atMost, const std::stop_token& stop)
{
    for (const QByteArray& one : address.split(';')) {
        const std::optional<SocketAddress> place = socketOf(one);
        if (!place)
            return NameOnBus::free;
        Socket bus(atMost);
        const int error = bus.connectTo(*place);
        // As many wait to be let in as can: it is a stopped bus.
        if (error == EAGAIN)
            return NameOnBus::unsaid;
        if (error != 0)
            continue;
        const std::stop_callback hangUp(stop, [&bus] { bus.hangUp(); });
        return ask(bus, name);
    }
    return NameOnBus::noBus;
}
