#include "platform/BusProbe.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

class BusProbeTest : public testing::Test
{
protected:
    ~BusProbeTest() override { ::close(server); }

    /// Takes connections from now on.
    void listen()
    {
        sockaddr_un to{};
        to.sun_family = AF_UNIX;
        std::strncpy(to.sun_path, path.constData(), sizeof to.sun_path - 1);
        ASSERT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&to), sizeof to), 0);
        ASSERT_EQ(::listen(server, 4), 0);
    }

    QTemporaryDir folder;
    QByteArray path = folder.filePath(QStringLiteral("bus socket")).toLocal8Bit();
    QByteArray address = "unix:path=" + path.toPercentEncoding("/") + ",guid=0123";
    int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
};

} // namespace

TEST_F(BusProbeTest, aBusThatGreetsBackAnswers)
{
    listen();
    QByteArray heard;
    std::thread bus([&] {
        const int connection = ::accept(server, nullptr, nullptr);
        char buffer[64];
        const ssize_t length = ::read(connection, buffer, sizeof buffer);
        heard = QByteArray(buffer, length);
        const char answer[] = "OK 0123\r\n";
        EXPECT_GT(::write(connection, answer, sizeof answer - 1), 0);
        ::close(connection);
    });
    EXPECT_TRUE(busAnswers(address, 20s));
    bus.join();
    EXPECT_EQ(heard, '\0' + QByteArray("AUTH EXTERNAL ") + QByteArray::number(::getuid()).toHex() +
                         "\r\n");
}

TEST_F(BusProbeTest, oneThatOnlyTakesTheConnectionDoesNot)
{
    listen();
    EXPECT_FALSE(busAnswers(address, 1ms));
    EXPECT_FALSE(busAnswers("unix:path=/nobody/there;" + address, 1ms));
}

TEST_F(BusProbeTest, whereNobodyListensQtSeesItSoonEnough)
{
    for (const QByteArray& other :
         {QByteArray(), QByteArray("unix:path=/nobody/there"), QByteArray("nonsense"),
          QByteArray("tcp:host=localhost"), QByteArray("unix:"), QByteArray(";;"),
          "unix:path=" + QByteArray(500, 'x'), QByteArray("unix:abstract=nobody%")})
        EXPECT_TRUE(busAnswers(other, 1ms)) << other.toStdString();
}
