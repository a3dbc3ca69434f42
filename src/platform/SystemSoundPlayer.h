#pragma once

#include "core/SoundPlayer.h"

#include <QString>

#include <atomic>
#include <memory>

/// Plays the sounds of the theme "vantora" through the desktop's sound system, so that the user's
/// own theme and volume apply. A sound server that does not answer holds up nobody.
class SystemSoundPlayer : public SoundPlayer
{
public:
    /// `soundFolder` has the program's own sounds as NAME.wav; they play where the theme is not
    /// installed.
    explicit SystemSoundPlayer(QString soundFolder);

    void play(const QString& name) override;

private:
    QString m_soundFolder;
    std::shared_ptr<std::atomic<int>> m_playing;
};
