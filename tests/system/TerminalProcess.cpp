#include "TerminalProcess.hpp"

#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>

namespace ZorvTest {

namespace {

constexpr std::chrono::seconds longest(30);
constexpr int pollTime = 100;  // milliseconds

/// Ctrl-C is a signal; all else goes through as it is.
termios plainSettings()
{
    termios settings{};
    settings.c_cflag = CS8 | CREAD;
    settings.c_lflag = ISIG;
    settings.c_cc[VINTR] = 3;
    return settings;
}

}  // namespace

TerminalProcess::TerminalProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment)
{
    const termios settings = plainSettings();
    pid = forkpty(&terminal, nullptr, &settings, nullptr);
    if (pid < 0) {
        throw std::runtime_error("no terminal");
    }
    if (pid == 0) {
        becomeProgram(command, environment);
    }
}

TerminalProcess::~TerminalProcess()
{
    if (pid > 0) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
    close(terminal);
}

void TerminalProcess::type(const std::string& keys) const
{
    if (write(terminal, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size())) {
        throw std::runtime_error("the terminal takes no keys");
    }
}

bool TerminalProcess::awaitShown(const std::function<bool(const std::string& shown)>& isAsWanted)
{
    const auto latest = std::chrono::steady_clock::now() + longest;
    while (!isAsWanted(shown)) {
        if (std::chrono::steady_clock::now() > latest || !readMore()) {
            return false;
        }
    }
    return true;
}

ProcessResult TerminalProcess::awaitEnd()
{
    const auto latest = std::chrono::steady_clock::now() + longest;
    while (readMore()) {
        if (std::chrono::steady_clock::now() > latest) {
            kill(pid, SIGKILL);
        }
    }
    int status = 0;
    waitpid(pid, &status, 0);
    pid = -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), shown, ""};
}

/// False when nobody is at the other side of the terminal any more.
bool TerminalProcess::readMore()
{
    pollfd readable{terminal, POLLIN, 0};
    if (poll(&readable, 1, pollTime) == 0) {
        return true;
    }
    char block[4096];
    const ssize_t length = read(terminal, block, sizeof(block));
    shown.append(block, length > 0 ? static_cast<std::size_t>(length) : 0);
    return length > 0;
}

}  // namespace ZorvTest
