/// Why a command ends early, with the exit code that it means.
#pragma once

#include <stdexcept>
#include <string>

#include "ExitCode.hpp"

namespace ZorvCtl {

/// Lines for people, each to be printed behind the name of the program; none where nothing is left to say.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode code, const std::string& text) : std::runtime_error(text), exitCode(code) {}

    ExitCode getExitCode() const { return exitCode; }

private:
    ExitCode exitCode;
};

/// Nobody listens on the socket, or who listened went away before the answer.
class NoNode : public Failure {
public:
    NoNode(const std::string& socketPath, const std::string& reason);
};

/// Ctrl-C; whoever pressed it knows.
class Interrupted : public Failure {
public:
    Interrupted() : Failure(ExitCode::interrupted, "") {}
};

/// Standard output takes no more; without text when its reader has left, which is nobody's fault.
class OutputClosed : public Failure {
public:
    explicit OutputClosed(int errorNumber);
};

}  // namespace ZorvCtl
