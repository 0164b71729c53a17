#include "Transcript.hpp"

#include <Poco/RegularExpression.h>
#include <Poco/String.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "ExpectedText.hpp"
#include "TerminalProcess.hpp"

namespace ZorvTest {

namespace {

using LinesT = std::vector<std::string>;

const std::string plainPrompt = "$ ";
const std::string terminalPrompt = "terminal$ ";
const std::string furtherPrompt = "> ";
const std::string commentMark = "# ";
const std::string settling = "(the node settles)";

struct Mask {
    const char* pattern;
    const char* name;
};

/// Events of transcripts happen in 2024, everything else now.
constexpr Mask masks[] = {
    {"(?!2024)20[0-9]{2}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}([.][0-9]{3}[+]00:00|Z)", "<TIME>"},
    {"(?<=<TIME>, )[0-9 minhs]+(?= ago\n)", "<DURATION>"},
    {"(?<=\"uptimeSeconds\": )[0-9]+", "<DURATION>"},
    {"(?<=\nprocess          )[0-9]+(?=\n)", "<PROCESS>"},
    {"(?<=\"processId\": )[0-9]+", "<PROCESS>"},
    {"by user [0-9]+ group [0-9]+ process [0-9]+", "by user <USER> group <GROUP> process <PROCESS>"},
    {"(connectionsAccepted|requests|streams|notificationsInInbox)( +)[0-9]+", "$1$2<NUMBER>"},  // up to the clock
    {"(?<=[)] in )[0-9]+[.][0-9] s", "<DURATION>"},
    {"(\r\\[[# ]{40}\\] [0-9]+ of [0-9]+ actions)+(?=\r\\[)", ""},  // how often a bar is drawn is up to the clock
};

bool beginsWith(const std::string& text, const std::string& begin)
{
    return text.compare(0, begin.size(), begin) == 0;
}

LinesT linesOf(const std::string& text)
{
    LinesT lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// What is to be done, without what is expected of it; a command of several lines is one.
LinesT stepsOf(const std::string& text)
{
    LinesT steps;
    bool inCommand = false;
    for (const std::string& line : linesOf(text)) {
        const bool isCommand = beginsWith(line, plainPrompt) || beginsWith(line, terminalPrompt);
        if (isCommand || beginsWith(line, commentMark) || line == settling) {
            steps.push_back(line);
        } else if (inCommand && beginsWith(line, furtherPrompt)) {
            steps.back() += "\n" + line;
            continue;
        }
        inCommand = isCommand;
    }
    return steps;
}

std::string withMarks(const std::string& text, const std::string& mark)
{
    std::string marked;
    for (const std::string& line : linesOf(text)) {
        marked += mark + line + "\n";
    }
    return marked;
}

std::string shellCommand(const std::string& step)
{
    const std::string lines = Poco::replace(step, "\n" + furtherPrompt, std::string("\n"));
    return lines.substr(lines.find(plainPrompt) + plainPrompt.size());
}

}  // namespace

std::vector<std::string> Transcript::environment() const
{
    const std::string folder = std::filesystem::path(ZORVCTL).parent_path();
    return {"PATH=" + folder + ":/usr/bin:/bin", "ZORV_SOCKET=" + files.socket(), "TZ=UTC", "LC_ALL=C", "NO_COLOR="};
}

void Transcript::play(const std::string& name)
{
    std::string result;
    bool afterComment = true;
    for (const std::string& step : stepsOf(readFile(expectedPath(name)))) {
        const bool isComment = beginsWith(step, commentMark);
        result += isComment && !afterComment ? "\n" : "";
        afterComment = isComment;
        playStep(step, result);
    }
    expectText(name, result);
}

void Transcript::playStep(const std::string& step, std::string& result) const
{
    result += step + "\n";
    if (step == settling) {
        node->settle();
    } else if (!beginsWith(step, commentMark)) {
        const ProcessResult ended = run(shellCommand(step), beginsWith(step, terminalPrompt));
        result += masked(ended.out) + withMarks(masked(ended.err), "2> ");
        result += ended.exitCode == 0 ? "" : "(exit code " + std::to_string(ended.exitCode) + ")\n";
    }
}

ProcessResult Transcript::run(const std::string& command, bool onTerminal) const
{
    const std::vector<std::string> shell = {"/bin/sh", "-c", "cd " + files.directory.path() + "\n" + command};
    return onTerminal ? TerminalProcess(shell, environment()).awaitEnd() : runProcess(shell, environment());
}

std::string Transcript::masked(std::string text) const
{
    Poco::replaceInPlace(text, files.directory.path(), std::string("<FOLDER>"));
    Poco::replaceInPlace(text, std::string(FM_LIBRARY), std::string("<LIBRARY>"));
    Poco::replaceInPlace(text, std::string(ZORV_VERSION), std::string("<VERSION>"));
    for (const Mask& mask : masks) {
        Poco::RegularExpression(mask.pattern).subst(text, mask.name, Poco::RegularExpression::RE_GLOBAL);
    }
    Poco::replaceInPlace(text, std::string("\033"), std::string("\\e"));
    Poco::replaceInPlace(text, std::string("\r"), std::string("\\r"));
    return text;
}

}  // namespace ZorvTest
