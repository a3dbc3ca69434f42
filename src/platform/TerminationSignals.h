#pragma once

#include <memory>

class QSocketNotifier;

/// Turns the signals that ask a process to end, as at the end of a session, into an orderly quit.
class TerminationSignals
{
public:
    /// Holds the signals back, in this thread and in those that it starts from now on.
    TerminationSignals();
    ~TerminationSignals();

    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Quits the application when one comes, or has come. Needs the application object.
    void quitWhenReceived();

private:
    int m_file; ///< readable when a signal has come; −1 if there is no such thing
    std::unique_ptr<QSocketNotifier> m_notifier;
};
