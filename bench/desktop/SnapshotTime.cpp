#include "bench/desktop/SnapshotTime.h"

#include "bench/desktop/Program.h"
#include "bench/desktop/Programs.h"
#include "bench/desktop/Table.h"
#include "bench/support/Timing.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

namespace {

constexpr int runs = 21;
constexpr int pictures = 8;
constexpr double highestRatio = 3;

void makePictures()
{
    const QTemporaryDir folder;
    Program({programs::vantora, "--snapshot", QFile::encodeName(folder.path())}).waitForEnd();
    if (QDir(folder.path()).entryList({QStringLiteral("*.png")}).size() != pictures)
        throw std::runtime_error("pictures are missing");
}

void startAndEnd()
{
    Program({programs::withoutPictures}).waitForEnd();
}

} // namespace

void compareSnapshots()
{
    // The first runs fill caches.
    makePictures();
    startAndEnd();
    const Times times = timesOf(runs, makePictures, startAndEnd);
    Table table("All pictures, from exec to the end; " + std::to_string(runs) + " runs",
                "without_pictures");
    table.add({.figure = "Time, median, ms",
               .value = times.own,
               .reference = times.reference,
               .decimals = 1,
               .highestRatio = highestRatio});
    table.print();
}
