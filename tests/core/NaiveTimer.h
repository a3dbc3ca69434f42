#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

/// The rules of the timer told once more, plainly and in whole eighths of a second, for comparison
/// with the engine. It shares no type and no arithmetic with it.
struct NaiveTimer
{
    struct Entry
    {
        int phase;
        double seconds;
        long long reps;
    };

    bool demo = false;
    long long now = 0; // every time is in eighths of a second
    int phase = 0;     // 0 sitting, 1 standing, 2 push-ups
    char state = 'r';  // running, paused, complete
    long long left = 0;
    std::optional<long long> end;
    long long kept = 0;
    bool ticking = false;
    long long cycle = 1;
    long long minutes[2] = {40, 15};
    long long pushups = 50;
    bool compact = false;

    // What came out since this was last cleared.
    std::vector<std::string> sounds;
    std::vector<Entry> entries;
    std::vector<std::string> writes;
    std::vector<bool> compactSet;
    int notices = 0;

    long long lengthOf(int timedPhase) const
    {
        if (demo)
            return timedPhase == 0 ? 10 * 8 : 8 * 8;
        return minutes[timedPhase] * 60 * 8;
    }

    void launch()
    {
        const long long defaults[] = {40, 15};
        for (int i = 0; i < 2; ++i)
            if (minutes[i] <= 0)
                minutes[i] = defaults[i];
        if (pushups <= 0)
            pushups = 50;
        cycle = 1;
        start(0);
        notices = 0; // nobody can listen yet
    }

    void start(int next)
    {
        phase = next;
        kept = 0;
        state = 'r';
        notices += 3;
        if (next == 2) {
            end.reset();
            left = 0;
            ticking = false;
        } else {
            left = lengthOf(next);
            beginTicking(left);
        }
    }

    void beginTicking(long long forTime)
    {
        end = now + forTime;
        ticking = true;
        look();
    }

    void look()
    {
        if (state != 'r' || !end)
            return;
        left = *end - now;
        ++notices;
        if (left <= 0) {
            left = 0;
            state = 'c';
            ++notices;
            ticking = false;
            soundOfPhase();
        }
    }

    void fire()
    {
        if (ticking)
            look();
    }

    void togglePause()
    {
        if (phase == 2 || state == 'c')
            return;
        ++notices;
        if (state == 'r') {
            kept = left;
            state = 'p';
            ticking = false;
        } else {
            const long long again = kept;
            kept = 0;
            state = 'r';
            beginTicking(again);
        }
    }

    void advance(bool confirmed)
    {
        if (confirmed)
            soundOfPhase();
        if (phase == 2) {
            if (confirmed)
                entries.push_back({2, 0, pushups});
            ++cycle;
            ++notices;
            start(0);
            return;
        }
        const long long spent = state == 'c' ? lengthOf(phase) : lengthOf(phase) - left;
        if (spent >= (demo ? 8 : 60 * 8))
            entries.push_back({phase, static_cast<double>(spent) / 8, 0});
        start(phase + 1);
    }

    void soundOfPhase()
    {
        const char* names[] = {"Glass", "Hero", "Funk"};
        sounds.push_back(names[phase]);
    }

    void setMinutes(int ofPhase, long long value)
    {
        const long long more = (value - minutes[ofPhase]) * 60 * 8;
        minutes[ofPhase] = value;
        ++notices;
        writeNumbers();
        if (demo || phase != ofPhase || more == 0)
            return;
        if (state == 'r' && end) {
            *end += more;
            left = left + more < 8 ? 8 : left + more;
            ++notices;
        } else if (state == 'p') {
            kept = kept + more < 8 ? 8 : kept + more;
            left = kept;
            ++notices;
        }
    }

    void setPushups(long long value)
    {
        pushups = value;
        ++notices;
        writeNumbers();
    }

    void writeNumbers()
    {
        writes.push_back("sittingMinutes=" + std::to_string(minutes[0]));
        writes.push_back("standingMinutes=" + std::to_string(minutes[1]));
        writes.push_back("pushupCount=" + std::to_string(pushups));
    }

    void setCompact(bool value)
    {
        compact = value;
        ++notices;
        writes.push_back(value ? "compactMode=true" : "compactMode=false");
        compactSet.push_back(value);
    }

    void restartCycle()
    {
        cycle = 1;
        ++notices;
        start(0);
    }

    void pose(int posedPhase, char posedState, long long posedLeft)
    {
        ticking = false;
        end.reset();
        phase = posedPhase;
        state = posedState;
        left = posedLeft;
        notices += 3;
    }

    std::string time() const
    {
        const long long seconds = left <= 0 ? 0 : (left + 7) / 8;
        char text[64];
        std::snprintf(text, sizeof text, "%lld:%02lld", seconds / 60, seconds % 60);
        return text;
    }

    std::string title() const
    {
        const std::string emoji[] = {"🪑", "🧍", "💪"};
        if (phase == 2)
            return emoji[2] + " ×" + std::to_string(pushups);
        if (state == 'r')
            return emoji[phase] + " " + time();
        if (state == 'p')
            return emoji[phase] + " ⏸ " + time();
        return emoji[phase] + " ✓";
    }

    /// The part still to come, or -1 for none.
    double part() const
    {
        if (phase == 2 || lengthOf(phase) <= 0)
            return -1;
        if (left <= 0)
            return 0;
        if (left >= lengthOf(phase))
            return 1;
        return static_cast<double>(left) / static_cast<double>(lengthOf(phase));
    }
};
