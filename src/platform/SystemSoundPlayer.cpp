#include "platform/SystemSoundPlayer.h"

#include <QFile>

#include <canberra.h>

#include <chrono>
#include <future>
#include <system_error>
#include <thread>

namespace {

/// Sounds at once, counting those that wait for a server that does not answer.
constexpr int mostPlaying = 4;

/// No sound of a theme is longer than this.
constexpr std::chrono::seconds longestSound{10};

void reportEnd(ca_context*, uint32_t, int, void* ended)
{
    static_cast<std::promise<void>*>(ended)->set_value();
}

/// Plays one sound to its end. With a context of its own, because a context whose server has gone
/// stays silent for ever, and because nothing has to be kept in memory between two sounds.
void playToEnd(const QByteArray& name, const QByteArray& file)
{
    ca_context* context = nullptr;
    if (ca_context_create(&context) != CA_SUCCESS)
        return;
    ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Vantora", CA_PROP_APPLICATION_ID,
                            "io.github.vantora.Vantora", nullptr);
    ca_proplist* sound = nullptr;
    if (ca_proplist_create(&sound) == CA_SUCCESS) {
        ca_proplist_sets(sound, CA_PROP_EVENT_ID, name.constData());
        ca_proplist_sets(sound, CA_PROP_MEDIA_FILENAME, file.constData());
        ca_proplist_sets(sound, CA_PROP_CANBERRA_XDG_THEME_NAME, "vantora");
        ca_proplist_sets(sound, CA_PROP_CANBERRA_CACHE_CONTROL, "never");
        ca_proplist_sets(sound, CA_PROP_MEDIA_ROLE, "event");
        std::promise<void> ended;
        if (ca_context_play_full(context, 0, sound, reportEnd, &ended) == CA_SUCCESS)
            ended.get_future().wait_for(longestSound);
        ca_proplist_destroy(sound);
        // Destroying the context ends the sound, and with it the last use of `ended`.
        ca_context_destroy(context);
        return;
    }
    ca_context_destroy(context);
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
