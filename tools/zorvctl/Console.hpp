/// Where a command writes to, and how: in colours on a terminal only.
///
/// Failure: flush throws OutputClosed.
#pragma once

#include <ostream>
#include <string>

namespace ZorvCtl {

enum class Colour { none, bold, red, boldRed, yellow, cyan, magenta, green };

class Console {
public:
    Console(std::ostream& output, std::ostream& error) : out(output), err(error) {}

    /// Standard output and error as they are; no colours where NO_COLOR is set.
    static Console ofProcess();

    std::string coloured(const std::string& text, Colour colour) const;

    /// Hands over what was written, so that a reader that left is seen at once.
    void flush() const;

    /// One line, or more, on standard error.
    void tell(const std::string& text) const;

    std::ostream& out;
    std::ostream& err;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
    bool hasColours = false;
};

/// The colour of a severity by its name.
Colour colourOf(const std::string& severity);

}  // namespace ZorvCtl
