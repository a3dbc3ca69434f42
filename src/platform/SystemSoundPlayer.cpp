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

/// The end of a sound, which some backends report more than once.
class SoundEnd
{
public:
    static void report(ca_context*, uint32_t, int, void* end)
    {
        auto* self = static_cast<SoundEnd*>(end);
        const std::lock_guard lock(self->m_mutex);
        self->m_reported = true;
        self->m_condition.notify_one();
    }

    void wait(std::chrono::seconds atMost)
    {
        std::unique_lock lock(m_mutex);
        m_condition.wait_for(lock, atMost, [this] { return m_reported; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_reported = false;
};

/// Plays one sound to its end. With a context of its own, because a context whose server has gone
/// stays silent for ever, and because nothing has to be kept in memory between two sounds.
void playToEnd(const QByteArray& name, const QByteArray& file)
{
    static const Canberra canberra;
    if (!canberra)
        return;
    SoundEnd end; // destroyed after the context, which is the last to use it
    ca_context* createdContext = nullptr;
    if (canberra.createContext(&createdContext) != CA_SUCCESS)
        return;
    const std::unique_ptr<ca_context, decltype(canberra.destroyContext)> context(
        createdContext, canberra.destroyContext);
    canberra.changeProperties(context.get(), CA_PROP_APPLICATION_NAME, "Vantora",
                              CA_PROP_APPLICATION_ID, "io.github.vantora.Vantora", nullptr);

    ca_proplist* createdSound = nullptr;
    if (canberra.createList(&createdSound) != CA_SUCCESS)
        return;
    const std::unique_ptr<ca_proplist, decltype(canberra.destroyList)> sound(createdSound,
                                                                             canberra.destroyList);
    canberra.set(sound.get(), CA_PROP_EVENT_ID, name.constData());
    canberra.set(sound.get(), CA_PROP_MEDIA_FILENAME, file.constData());
    canberra.set(sound.get(), CA_PROP_CANBERRA_XDG_THEME_NAME, "vantora");
    canberra.set(sound.get(), CA_PROP_CANBERRA_CACHE_CONTROL, "never");
    canberra.set(sound.get(), CA_PROP_MEDIA_ROLE, "event");
    if (canberra.play(context.get(), 0, sound.get(), &SoundEnd::report, &end) == CA_SUCCESS)
        end.wait(longestSound);
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
