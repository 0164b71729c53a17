#include "Process.hpp"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace ZorvTest {

namespace {

constexpr std::chrono::seconds longest(10);
constexpr std::chrono::milliseconds pause(10);

/// An open file without a name: the program can fill it without anybody reading.
int namelessFile()
{
    char name[] = "/tmp/zorv-process-XXXXXX";
    const int file = mkostemp(name, O_CLOEXEC);
    if (file < 0) {
        throw std::runtime_error("no temporary file");
    }
    unlink(name);
    return file;
}

}  // namespace

void becomeProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    for (const std::string& variable : environment) {
        putenv(const_cast<char*>(variable.c_str()));
    }
    execv(arguments.front(), arguments.data());
    _exit(127);
}

RunningProcess::RunningProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment)
    : outFile(namelessFile()),
      errFile(namelessFile()),
      pid(fork())
{
    if (pid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);  // it does not outlive a test that crashes
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(outFile, STDOUT_FILENO);
        dup2(errFile, STDERR_FILENO);
        becomeProgram(command, environment);
    }
}

RunningProcess::~RunningProcess()
{
    if (!ended) {
        kill(pid, SIGKILL);
        waitpid(pid, &status, 0);
    }
    close(outFile);
    close(errFile);
}

void RunningProcess::signal(int number) const
{
    kill(pid, number);
}

bool RunningProcess::awaitOutput(const std::string& text)
{
    return await(outFile, text);
}

bool RunningProcess::awaitError(const std::string& text)
{
    return await(errFile, text);
}

bool RunningProcess::await(int file, const std::string& text)
{
    const auto latest = std::chrono::steady_clock::now() + longest;
    while (read(file).find(text) == std::string::npos) {
        if (hasEnded() || std::chrono::steady_clock::now() > latest) {
            return read(file).find(text) != std::string::npos;
        }
        std::this_thread::sleep_for(pause);
    }
    return true;
}

ProcessResult RunningProcess::awaitEnd()
{
    if (!ended) {
        waitpid(pid, &status, 0);
        ended = true;
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), read(outFile), read(errFile)};
}

std::string RunningProcess::read(int file) const
{
    std::string text;
    char block[4096];
    for (ssize_t length = 0; (length = pread(file, block, sizeof(block), static_cast<off_t>(text.size()))) > 0;) {
        text.append(block, static_cast<std::size_t>(length));
    }
    return text;
}

bool RunningProcess::hasEnded()
{
    ended = ended || waitpid(pid, &status, WNOHANG) == pid;
    return ended;
}

ProcessResult runProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment)
{
    return RunningProcess(command, environment).awaitEnd();
}

}  // namespace ZorvTest
