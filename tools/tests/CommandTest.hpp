/// Runs zorvctl's commands against a scripted node, in the time zone UTC.
#pragma once

#include <gmock/gmock.h>

#include <condition_variable>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <sstream>
#include <thread>

#include "Interruption.hpp"
#include "Program.hpp"
#include "ScriptedNode.hpp"

namespace ZorvCtl {

struct Outcome {
    int exitCode = -1;
    std::string out;
    std::string err;
};

/// As it looks when a test fails.
inline std::ostream& operator<<(std::ostream& stream, const Outcome& outcome)
{
    return stream << "exit code " << outcome.exitCode << "\nout:\n" << outcome.out << "err:\n" << outcome.err;
}

inline bool operator==(const Outcome& left, const Outcome& right)
{
    return left.exitCode == right.exitCode && left.out == right.out && left.err == right.err;
}

class CommandTest : public ::testing::Test {
protected:
    CommandTest()
    {
        ::setenv("TZ", "UTC", 1);
        ::tzset();
    }

    Outcome run(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"--socket", node.socket()});
        return runAsIs(std::move(arguments));
    }

    Outcome runAsIs(std::vector<std::string> arguments)
    {
        std::ostringstream out;
        std::ostringstream err;
        Console console(out, err);
        console.outIsTerminal = console.errIsTerminal = console.hasColours = onTerminal;
        const int exitCode = ZorvCtl::run(std::move(arguments), console, interruption);
        return {exitCode, out.str(), err.str()};
    }

    /// Runs a command that does not end by itself, and presses Ctrl-C once the node has been asked so many times.
    Outcome runUntilRequests(std::vector<std::string> arguments, std::size_t requests)
    {
        std::thread fingers([&] {
            node.awaitRequests(requests);
            std::this_thread::sleep_for(std::chrono::milliseconds(200));  // what was answered is to be printed first
            interruption.interrupt();
        });
        Outcome outcome = run(std::move(arguments));
        fingers.join();
        return outcome;
    }

    ZorvTest::ScriptedNode node;
    Interruption interruption;
    bool onTerminal = false;
};

}  // namespace ZorvCtl
