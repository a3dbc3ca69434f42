#include "platform/SystemSoundPlayer.h"

#include <QFile>
#include <QLibrary>

#include <canberra.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace {

/// Sounds at once, counting those that wait for a server that does not answer.
constexpr int mostPlaying = 4;

/// No sound of a theme is longer than this.
constexpr std::chrono::seconds longestSound{10};

/// The sound library's functions, or null ones where it is not installed. It is loaded at the first
/// sound: with all that it brings along, it would be a good part of the program's start and size.
struct Canberra
{
    Canberra()
    {
        QLibrary library(QStringLiteral("canberra"), 0);
        createContext = load<decltype(&ca_context_create)>(library, "ca_context_create");
        destroyContext = load<decltype(&ca_context_destroy)>(library, "ca_context_destroy");
        changeProperties =
            load<decltype(&ca_context_change_props)>(library, "ca_context_change_props");
        play = load<decltype(&ca_context_play_full)>(library, "ca_context_play_full");
        createList = load<decltype(&ca_proplist_create)>(library, "ca_proplist_create");
        destroyList = load<decltype(&ca_proplist_destroy)>(library, "ca_proplist_destroy");
        set = load<decltype(&ca_proplist_sets)>(library, "ca_proplist_sets");
    }

    explicit operator bool() const
    {
        return createContext && destroyContext && changeProperties && play && createList &&
               destroyList && set;
    }

    decltype(&ca_context_create) createContext;
    decltype(&ca_context_destroy) destroyContext;
    decltype(&ca_context_change_props) changeProperties;
    decltype(&ca_context_play_full) play;
    decltype(&ca_proplist_create) createList;
    decltype(&ca_proplist_destroy) destroyList;
    decltype(&ca_proplist_sets) set;

private:
    template <typename Function>
    static Function load(QLibrary& library, const char* name)
    {
        return reinterpret_cast<Function>(library.resolve(name));
    }
};

/// One sound on its way through the sound system.
struct Playback
{
    ca_context* context = nullptr;
    std::mutex mutex;
    std::condition_variable changed;
    bool hasEnded = false;

    /// Called from a thread of the sound system; by some backends more than once.
    static void reportEnd(ca_context*, uint32_t, int, void* playback)
    {
        auto* self = static_cast<Playback*>(playback);
        const std::lock_guard lock(self->mutex);
        self->hasEnded = true;
        self->changed.notify_one();
    }

    void waitForEnd()
    {
        std::unique_lock lock(mutex);
        changed.wait_for(lock, longestSound, [this] { return hasEnded; });
    }
};

/// Keeps this playback until the next one has ended, and lets go of the one before it. At once
/// would be too early: the thread that reported the end may still be running code of a plugin that
/// is unloaded with its last context.
void retire(const Canberra& canberra, std::unique_ptr<Playback> playback)
{
    static std::atomic<Playback*> last = nullptr;
    const std::unique_ptr<Playback> before(last.exchange(playback.release()));
    if (before)
        canberra.destroyContext(before->context);
}

/// Plays one sound to its end. With a context of its own, because a context whose server has gone
/// stays silent for ever.
void playToEnd(const QByteArray& name, const QByteArray& file)
{
    static const Canberra canberra;
    if (!canberra)
        return;
    auto playback = std::make_unique<Playback>();
    if (canberra.createContext(&playback->context) != CA_SUCCESS)
        return;
    canberra.changeProperties(playback->context, CA_PROP_APPLICATION_NAME, "Vantora",
                              CA_PROP_APPLICATION_ID, "io.github.vantora.Vantora", nullptr);

    ca_proplist* sound = nullptr;
    if (canberra.createList(&sound) == CA_SUCCESS) {
        canberra.set(sound, CA_PROP_EVENT_ID, name.constData());
        canberra.set(sound, CA_PROP_MEDIA_FILENAME, file.constData());
        canberra.set(sound, CA_PROP_CANBERRA_XDG_THEME_NAME, "vantora");
        canberra.set(sound, CA_PROP_CANBERRA_CACHE_CONTROL, "never");
        canberra.set(sound, CA_PROP_MEDIA_ROLE, "event");
        if (canberra.play(playback->context, 0, sound, &Playback::reportEnd, playback.get()) ==
            CA_SUCCESS)
            playback->waitForEnd();
        canberra.destroyList(sound);
    }
    retire(canberra, std::move(playback));
}

} // namespace

SystemSoundPlayer::SystemSoundPlayer(QString soundFolder)
    : m_soundFolder(std::move(soundFolder))
    , m_playing(std::make_shared<std::atomic<int>>(0))
{}

void SystemSoundPlayer::play(const QString& name)
{
    if (m_playing->fetch_add(1) >= mostPlaying) {
        m_playing->fetch_sub(1);
        return;
    }
    const QByteArray file =
        QFile::encodeName(m_soundFolder + QLatin1Char('/') + name + QStringLiteral(".wav"));
    try {
        // Detached: at the end of the process nobody waits for a server that does not answer.
        std::thread([playing = m_playing, name = name.toUtf8(), file] {
            playToEnd(name, file);
            playing->fetch_sub(1);
        }).detach();
    } catch (const std::system_error&) {
        m_playing->fetch_sub(1);
    }
}
