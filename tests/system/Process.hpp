/// Runs a program to its end and keeps what it printed.
#pragma once

#include <string>
#include <vector>

namespace ZorvTest {

struct ProcessResult {
    int exitCode = -1;  ///< 128 and the signal's number when a signal ended it
    std::string out;
    std::string err;
};

/// Waits for its end. @param environment "NAME=value" in addition to this process's own.
ProcessResult runProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment = {});

/// For a child process, which becomes the program.
[[noreturn]] void becomeProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment);

/// A program that runs beside the test, and is killed at the end of the scope if it still runs.
class RunningProcess {
public:
    explicit RunningProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment = {});
    ~RunningProcess();

    RunningProcess(const RunningProcess&) = delete;
    RunningProcess& operator=(const RunningProcess&) = delete;

    void signal(int number) const;

    /// Waits until standard output or standard error contains the text; false after ten seconds, or at its end.
    bool awaitOutput(const std::string& text);
    bool awaitError(const std::string& text);

    bool hasEnded();
    ProcessResult awaitEnd();

private:
    bool await(int file, const std::string& text);
    std::string read(int file) const;

    int outFile;
    int errFile;
    int pid;
    int status = 0;
    bool ended = false;
};

}  // namespace ZorvTest
