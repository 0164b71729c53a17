#include "Console.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <map>

#include "Failure.hpp"

namespace ZorvCtl {

namespace {

const char* startOf(Colour colour)
{
    switch (colour) {
    case Colour::bold:
        return "\033[1m";
    case Colour::red:
        return "\033[31m";
    case Colour::boldRed:
        return "\033[1;31m";
    case Colour::yellow:
        return "\033[33m";
    case Colour::cyan:
        return "\033[36m";
    case Colour::magenta:
        return "\033[35m";
    case Colour::green:
        return "\033[32m";
    default:
        return "";
    }
}

}  // namespace

Console Console::ofProcess()
{
    Console console(std::cout, std::cerr);
    const char* const noColour = std::getenv("NO_COLOR");
    console.outIsTerminal = ::isatty(STDOUT_FILENO) != 0;
    console.errIsTerminal = ::isatty(STDERR_FILENO) != 0;
    console.hasColours = console.outIsTerminal && (noColour == nullptr || *noColour == '\0');
    return console;
}

std::string Console::coloured(const std::string& text, Colour colour) const
{
    return hasColours && colour != Colour::none ? startOf(colour) + text + "\033[0m" : text;
}

void Console::flush() const
{
    if (!out.flush()) {
        out.clear();
        errno = 0;
        out.put('\n').flush();  // why it failed may be long forgotten: ask again
        throw OutputClosed(errno);
    }
}

void Console::tell(const std::string& text) const
{
    std::string lines = "zorvctl: " + text + "\n";
    for (std::size_t end = lines.find('\n'); end + 1 < lines.size(); end = lines.find('\n', end + 1)) {
        lines.insert(end + 1, "zorvctl: ");
    }
    err << lines << std::flush;
}

Colour colourOf(const std::string& severity)
{
    static const std::map<std::string, Colour> colours = {
        {"CRITICAL", Colour::boldRed}, {"MAJOR", Colour::red},     {"MINOR", Colour::yellow},
        {"WARNING", Colour::cyan},     {"CLEARED", Colour::green}, {"INDETERMINATE", Colour::magenta}};
    const auto found = colours.find(severity);
    return found == colours.end() ? Colour::none : found->second;
}

}  // namespace ZorvCtl
