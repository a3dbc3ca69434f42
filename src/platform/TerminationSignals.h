#pragma once

#include <memory>

class QSocketNotifier;

/// Turns the first signal that asks the process to end, as at the end of a session, into an orderly
/// quit. If that does not end it within some seconds, or a second one comes, it ends as it would
/// have without this.
class TerminationSignals
{
public:
    /// Needs the application object. There is one at a time.
    TerminationSignals();
    ~TerminationSignals();

    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
