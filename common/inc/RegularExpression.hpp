/// A regular expression in POSIX extended syntax, searched unanchored, byte by byte.
///
/// Patterns come from applications, so they are harmless: matching takes time linear in the text, compiling is bounded in
/// time and memory. What exceeds the bounds (2000 characters, also when repetitions are written out) is an invalid pattern,
/// and so are back references.
///
/// Threads:   matching from any thread.
/// Failure:   an invalid pattern matches nothing; isExpressionValid and getErrorText tell.
#pragma once

#include <memory>
#include <string>

namespace re2 {
class RE2;
}

namespace Zorv {

class RegularExpression {
public:
    /// @param flags those of regcomp (POSIX <regex.h>): REG_EXTENDED is required; REG_ICASE, REG_NEWLINE and REG_NOSUB count.
    RegularExpression(const std::string& pattern, int flags);
    ~RegularExpression();

    RegularExpression(const RegularExpression&) = delete;
    RegularExpression& operator=(const RegularExpression&) = delete;

    bool isExpressionValid() const { return errorText.empty(); }

    /// Why the pattern is invalid; empty when it is valid.
    const std::string& getErrorText() const { return errorText; }

    /// True when the pattern is found anywhere in the text.
    bool match(const std::string& text) const;

private:
    std::unique_ptr<re2::RE2> expression;
    std::string errorText;
};

}  // namespace Zorv
