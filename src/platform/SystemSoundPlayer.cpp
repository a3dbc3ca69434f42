#include "platform/SystemSoundPlayer.h"

#include <QFile>

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
    SoundEnd end; // destroyed after the context, which is the last to use it
    ca_context* created = nullptr;
    if (ca_context_create(&created) != CA_SUCCESS)
        return;
    const std::unique_ptr<ca_context, decltype(&ca_context_destroy)> context(created,
                                                                             &ca_context_destroy);
    if (ca_context_change_props(context.get(), CA_PROP_APPLICATION_NAME, "Vantora",
                                CA_PROP_APPLICATION_ID, "io.github.vantora.Vantora",
                                nullptr) != CA_SUCCESS)
        return;
    ca_proplist* createdSound = nullptr;
    if (ca_proplist_create(&createdSound) != CA_SUCCESS)
        return;
    const std::unique_ptr<ca_proplist, decltype(&ca_proplist_destroy)> sound(createdSound,
                                                                             &ca_proplist_destroy);
    ca_proplist_sets(sound.get(), CA_PROP_EVENT_ID, name.constData());
    ca_proplist_sets(sound.get(), CA_PROP_MEDIA_FILENAME, file.constData());
    ca_proplist_sets(sound.get(), CA_PROP_CANBERRA_XDG_THEME_NAME, "vantora");
    ca_proplist_sets(sound.get(), CA_PROP_CANBERRA_CACHE_CONTROL, "never");
    ca_proplist_sets(sound.get(), CA_PROP_MEDIA_ROLE, "event");
    if (ca_context_play_full(context.get(), 0, sound.get(), &SoundEnd::report, &end) == CA_SUCCESS)
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
