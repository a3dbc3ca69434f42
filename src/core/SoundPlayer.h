#pragma once

class QString;

/// Plays the sounds of the program by name.
class SoundPlayer
{
public:
    virtual ~SoundPlayer() = default;

    /// Starts the sound and returns at once. A name without a sound, or no way to play, is silence.
    virtual void play(const QString& name) = 0;
};
