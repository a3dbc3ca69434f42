#include "bench/log/DocumentReading.h"
#include "bench/log/Figures.h"
#include "bench/log/PeakMemory.h"
#include "bench/support/Timing.h"
#include "core/Clock.h"
#include "log/DurableFile.h"
#include "log/FileSystem.h"
#include "log/SessionJson.h"
#include "log/SessionStore.h"

#include <QFile>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr double fastestReading = 0.5;
constexpr double leastMemory = 0.5;
constexpr double dearestSaving = 1.5;
constexpr double steepestGrowth = 1.5;

/// Ends the benchmark when what it measures did not work.
void check(bool done, const char* what)
{
    if (done)
        return;
    std::fprintf(stderr, "log_bench: %s failed\n", what);
    std::exit(EXIT_FAILURE);
}

class NoClock : public Clock
{
public:
    Instant now() const override { return {}; }
    std::unique_ptr<Ticks> startTicks(std::function<void()>) override { return {}; }
    std::unique_ptr<Ticks> startFrames(double, std::function<void()>) override { return {}; }
};

/// A history as days of use leave it: whole and fractional seconds, and push-up breaks.
std::vector<SessionEntry> historyOf(int count)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> skipped(30, 2400);
    std::vector<SessionEntry> history;
    history.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const bool pushups = i % 3 == 2;
        const double seconds = pushups ? 0 : i % 2 == 0 ? 2400 : skipped(random);
        history.push_back({QUuid::createUuid(), Instant{600000000.0 + 1200.0 * i}, i % 3, seconds,
                           pushups ? 50 : 0});
    }
    return history;
}

QByteArray contentOf(const QString& path)
{
    auto content = readFile(path);
    check(content.has_value(), "reading the file");
    return std::move(*content);
}

QByteArray contentOverQFile(const QString& path)
{
    QFile file(path);
    check(file.open(QIODevice::ReadOnly), "opening the file");
    return file.readAll();
}

std::vector<SessionEntry> parsed(const QByteArray& json)
{
    auto history = entriesFromJson(json);
    check(history.has_value(), "reading the history");
    return std::move(*history);
}

QByteArray textOf(const std::vector<SessionEntry>& history)
{
    QByteArray text;
    const bool isWhole = writeJson(history, [&](QByteArrayView piece) {
        text.append(piece);
        return true;
    });
    check(isWhole, "encoding");
    return text;
}

void writePlainly(const QString& path, const QByteArray& content)
{
    const int file =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    check(file >= 0, "opening the plain file");
    qsizetype written = 0;
    while (written < content.size()) {
        const ssize_t count = ::write(file, content.constData() + written,
                                      static_cast<std::size_t>(content.size() - written));
        check(count > 0, "writing the plain file");
        written += count;
    }
    check(::fsync(file) == 0, "syncing the plain file");
    check(::close(file) == 0, "closing the plain file");
}

/// Runs `work` in another process, so that it leaves nothing in the memory of this one.
void elsewhere(const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
}

class Bench
{
public:
    explicit Bench(const QString& folder)
        : m_own(folder + QStringLiteral("/sessions.json"))
        , m_few(folder + QStringLiteral("/few.json"))
        , m_plain(folder + QStringLiteral("/plain.json"))
    {}

    void measureMemory(int count)
    {
        elsewhere([&] {
            writePlainly(m_own, textOf(historyOf(count)));
            writePlainly(m_few, textOf(historyOf(100)));
        });
        const auto own = [](const QString& path) { parsed(contentOf(path)); };
        const auto reference = [](const QString& path) {
            readOverDocument(contentOverQFile(path));
        };
        print({named("Peak memory of reading", count, "MiB"),
               peakMemory([&] { own(m_few); }, [&] { own(m_own); }),
               peakMemory([&] { reference(m_few); }, [&] { reference(m_own); }), leastMemory});
    }

    void measureTimes(int count, bool hasBars)
    {
        const int runs = count > 100'000 ? 5 : 31;
        NoClock clock;
        FileSystem fileSystem;
        QFile::remove(m_own);
        SessionStore store(clock, fileSystem, m_own);
        store.entries = historyOf(count);
        store.save();
        const QByteArray json = contentOf(m_own);
        check(parsed(json) == store.entries() && readOverDocument(json) == store.entries(),
              "reading back what was written");

        std::vector<SessionEntry> history;
        const Times parsing = timesOf(
            runs, [&] { history = parsed(json); }, [&] { history = readOverDocument(json); });
        const Times reading = timesOf(
            runs, [&] { history = parsed(contentOf(m_own)); },
            [&] { history = readOverDocument(contentOverQFile(m_own)); });
        const Times saving = timesOf(
            runs, [&] { store.save(); }, [&] { writePlainly(m_plain, json); });
        check(contentOf(m_own) == json, "saving");

        const auto barOf = [&](double bar) { return hasBars ? std::optional(bar) : std::nullopt; };
        print(
            {named("Parsing", count, "ms"), parsing.own, parsing.reference, barOf(fastestReading)});
        print({named("Reading the file", count, "ms"), reading.own, reading.reference,
               barOf(fastestReading)});
        print({named("Saving", count, "ms"), saving.own, saving.reference, dearestSaving});
        if (m_lastCount > 0) {
            printGrowth("Reading", count, reading.own, m_lastReading);
            printGrowth("Saving", count, saving.own, m_lastSaving);
        }
        m_lastCount = count;
        m_lastReading = reading.own;
        m_lastSaving = saving.own;
    }

private:
    static std::string named(const char* what, int count, const char* unit)
    {
        return std::string(what) + " " + std::to_string(count) + " entries, " + unit;
    }

    /// The time for each entry beside that in the smaller history before.
    void printGrowth(const char* what, int count, double time, double lastTime) const
    {
        print({std::string(what) + ": µs an entry of " + std::to_string(count) + " beside " +
                   std::to_string(m_lastCount),
               1000 * time / count, 1000 * lastTime / m_lastCount, steepestGrowth});
    }

    QString m_own;
    QString m_few;
    QString m_plain;
    int m_lastCount = 0;
    double m_lastReading = 0;
    double m_lastSaving = 0;
};

} // namespace

int main(int argc, char** argv)
{
    bool million = false;
    QString parent = QStringLiteral(".");
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--million")
            million = true;
        else
            parent = QFile::decodeName(argv[i]);
    }
    const QTemporaryDir folder(parent + QStringLiteral("/log_bench-XXXXXX"));
    check(folder.isValid(), "making a folder");
    const QByteArray fileSystem = QStorageInfo(folder.path()).fileSystemType();
    std::printf("\n### Session log, on %s; the references are QJsonDocument and a loop over it for "
                "reading, write and fsync for saving\n\n",
                fileSystem.constData());
    if (fileSystem == "tmpfs")
        std::printf("No disk: the times of saving mean nothing.\n\n");

    printTableHead();
    Bench bench(folder.path());
    bench.measureMemory(100'000);
    for (const int count : {1'000, 10'000, 100'000})
        bench.measureTimes(count, count == 100'000);
    if (million)
        bench.measureTimes(1'000'000, false);
}
