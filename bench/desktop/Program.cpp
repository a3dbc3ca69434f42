#include "bench/desktop/Program.h"

#include "bench/desktop/Waiting.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

Program::Program(QByteArrayList command)
{
    std::vector<char*> arguments;
    for (QByteArray& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    std::array<int, 2> output{};
    if (pipe2(output.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");

    m_startedAt = Clock::now();
    m_pid = fork();
    if (m_pid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        setpgid(0, 0); // an interrupt from the terminal is for this process to handle
        dup2(output[1], STDOUT_FILENO);
        dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
        execvp(arguments.front(), arguments.data());
        _exit(127);
    }
    close(output[1]);
    m_output = output[0];
    if (m_pid < 0)
        throw std::runtime_error("no process");
}

Program::~Program()
{
    kill(m_pid, SIGTERM);
    while (waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
    }
    close(m_output);
}

bool Program::hasEnded() const
{
    siginfo_t ended = {};
    return waitid(P_PID, static_cast<id_t>(m_pid), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           ended.si_pid != 0;
}

void Program::waitBeside(std::chrono::milliseconds time) const
{
    if (waitUntil([&] { return hasEnded(); }, time))
        throw std::runtime_error("a program ended before it was measured");
}

void Program::waitForEnd() const
{
    siginfo_t ended = {};
    while (waitid(P_PID, static_cast<id_t>(m_pid), &ended, WEXITED | WNOWAIT) != 0)
        throwIfInterrupted();
    if (ended.si_code != CLD_EXITED || ended.si_status != 0)
        throw std::runtime_error("a program failed");
}

QByteArray Program::readLine() const
{
    QByteArray line;
    char letter = 0;
    while (true) {
        const ssize_t count = read(m_output, &letter, 1);
        throwIfInterrupted();
        if (count <= 0)
            return {};
        if (letter == '\n')
            return line;
        line.append(letter);
    }
}
