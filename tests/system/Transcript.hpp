/// A session at the shell of a node, commands and what they print, as a file in expected/ has it.
///
/// The file is both: its commands are run, and what comes is compared with the whole file.
///
///     # what the next commands are about
///     $ a shell command, in the node's folder, with zorvctl for that node
///     > its next line, if it has one
///     standard output
///     2> standard error
///     (exit code 1)                if it is not 0
///     terminal$ a command on a terminal; \e and \r stand for what moves and colours
///     (the node settles)           waits until all that was published has been handled
///
/// What differs from run to run stands in capitals between angle brackets: <FOLDER>, <TIME>, <PROCESS>.
///
/// Threads: one.
#pragma once

#include <string>
#include <vector>

#include "Process.hpp"
#include "RunningNode.hpp"

namespace ZorvTest {

class Transcript {
public:
    /// @param runningNode nullptr: none runs.
    Transcript(const NodeFiles& nodeFiles, const RunningNode* runningNode) : files(nodeFiles), node(runningNode) {}

    /// Runs the commands of a file in expected/ and expects what it has.
    void play(const std::string& name);

    /// For programs beside the transcript's.
    std::vector<std::string> environment() const;

    /// A program's output with what differs from run to run masked, and with what a terminal hides made visible.
    std::string masked(std::string text) const;

private:
    void playStep(const std::string& step, std::string& result) const;
    ProcessResult run(const std::string& command, bool onTerminal) const;

    const NodeFiles& files;
    const RunningNode* const node;
};

}  // namespace ZorvTest
