// Computes the three sounds of the program as WAV files into the folder given as argument: soft
// enough to be heard every quarter of an hour, and different enough to be told apart unseen.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

namespace {

constexpr double sampleRate = 44100;
constexpr double peak = 0.5;     ///< of full scale
constexpr double attack = 0.004; ///< seconds; without it each note would begin with a click

/// One overtone of a note: its frequency as a multiple of the note's, its loudness, and the time in
/// seconds in which it falls to a third.
struct Partial
{
    double ratio;
    double level;
    double decay;
};

struct Note
{
    double start;     ///< seconds
    double frequency; ///< hertz
    double level;
};

/// A thin glass that is tapped: overtones that do not fit each other, the high ones gone first.
const std::vector<Partial> glass{{1, 1, 0.34}, {2.76, 0.35, 0.16}, {5.4, 0.12, 0.07}};

/// A soft horn: true overtones, all of them slow.
const std::vector<Partial> horn{{1, 1, 0.3}, {2, 0.4, 0.24}, {3, 0.18, 0.18}, {4, 0.06, 0.12}};

/// A muted string: warm and short.
const std::vector<Partial> string{{1, 1, 0.11}, {2, 0.5, 0.07}, {3, 0.25, 0.045}, {5, 0.1, 0.03}};

using Samples = std::vector<double>;

Samples play(const std::vector<Note>& notes, const std::vector<Partial>& partials, double length)
{
    Samples samples(static_cast<std::size_t>(length * sampleRate));
    for (const Note& note : notes) {
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const double time = static_cast<double>(i) / sampleRate - note.start;
            if (time < 0)
                continue;
            for (const Partial& partial : partials) {
                samples[i] +=
                    note.level * partial.level * std::min(time / attack, 1.0) *
                    std::exp(-time / partial.decay) *
                    std::sin(2 * std::numbers::pi * note.frequency * partial.ratio * time);
            }
        }
    }
    return samples;
}

/// Scales to the common peak, and lets the last tenth fade so that the end does not click either.
void finish(Samples& samples)
{
    double loudest = 0;
    for (const double sample : samples)
        loudest = std::max(loudest, std::abs(sample));
    const auto size = static_cast<double>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] *=
            peak / loudest * std::min((size - static_cast<double>(i)) / (0.1 * size), 1.0);
}

void putNumber(std::string& file, std::uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        file.push_back(static_cast<char>(value >> (8 * i)));
}

/// The samples as a WAV file: 16 bits, one channel.
std::string wavFile(const Samples& samples)
{
    constexpr std::uint32_t bytesPerSample = 2;
    const auto dataSize = static_cast<std::uint32_t>(samples.size()) * bytesPerSample;
    std::string file = "RIFF";
    putNumber(file, 36 + dataSize, 4);
    file += "WAVEfmt ";
    putNumber(file, 16, 4); // size of this chunk
    putNumber(file, 1, 2);  // plain samples
    putNumber(file, 1, 2);  // channels
    putNumber(file, static_cast<std::uint32_t>(sampleRate), 4);
    putNumber(file, static_cast<std::uint32_t>(sampleRate) * bytesPerSample, 4);
    putNumber(file, bytesPerSample, 2);
    putNumber(file, 8 * bytesPerSample, 2);
    file += "data";
    putNumber(file, dataSize, 4);
    for (const double sample : samples)
        putNumber(file, static_cast<std::uint32_t>(std::lround(sample * 32767)), 2);
    return file;
}

bool write(const std::string& path, Samples samples)
{
    finish(samples);
    std::ofstream file(path, std::ios::binary);
    file << wavFile(samples) << std::flush;
    return file.good();
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fputs("usage: make_sounds FOLDER\n", stderr);
        return 2;
    }
    const std::string folder = argv[1];
    const bool written =
        write(folder + "/Glass.wav", play({{0, 1318.5, 1}}, glass, 1.4)) &&
        write(folder + "/Hero.wav",
              play({{0, 392, 0.8}, {0.14, 493.9, 0.9}, {0.28, 587.3, 1}}, horn, 1.3)) &&
        write(folder + "/Funk.wav",
              play({{0, 220, 1}, {0.13, 220, 0.5}, {0.26, 329.6, 0.9}}, string, 0.8));
    return written ? 0 : 1;
}
