#include "PatternSize.hpp"

#include <algorithm>
#include <cctype>
#include <vector>

namespace Zorv {
namespace {

class Meter {
public:
    explicit Meter(const std::string& text) : pattern(text) {}

    std::size_t measure()
    {
        while (position < pattern.size()) {
            step();
        }
        for (const std::size_t outside : open) {
            add(outside);
        }
        return size;
    }

private:
    void step()
    {
        switch (pattern[position]) {
        case '\\':
            takeAtom(position + 2);
            break;
        case '[':
            takeAtom(endOfClass());
            break;
        case '(':
            open.push_back(size);
            size = 0;
            takeAtom(position + 1);
            break;
        case ')':
            closeGroup();
            break;
        case '{':
            repeat();
            break;
        default:
            takeAtom(position + 1);
            break;
        }
    }

    void takeAtom(std::size_t end)
    {
        end = std::min(end, pattern.size());
        atom = end - position;
        add(atom);
        position = end;
    }

    /// The group is an atom of what it stands in.
    void closeGroup()
    {
        add(1);
        atom = size;
        if (!open.empty()) {
            add(open.back());
            open.pop_back();
        }
        ++position;
    }

    /// "{3}", "{3,}" and "{1,3}" write the atom out three times. Braces around anything else are characters.
    void repeat()
    {
        std::size_t count = 1;
        std::size_t end = position + 1;
        for (; end < pattern.size() && (isDigit(end) || pattern[end] == ','); ++end) {
            if (isDigit(end)) {
                count = std::max(count, number(end));
            }
        }
        if (end >= pattern.size() || pattern[end] != '}') {
            takeAtom(position + 1);
            return;
        }
        add(std::min(atom * (count - 1), largestPatternSize) + 1);
        atom = std::min(atom * count, largestPatternSize);
        position = end + 1;
    }

    bool isDigit(std::size_t at) const { return std::isdigit(static_cast<unsigned char>(pattern[at])) != 0; }

    /// The number that begins there, at most one that is too large anyway. @param at is moved to its last digit
    std::size_t number(std::size_t& at) const
    {
        std::size_t value = 0;
        for (;; ++at) {
            value = std::min(value * 10 + static_cast<std::size_t>(pattern[at] - '0'), largestPatternSize);
            if (at + 1 >= pattern.size() || !isDigit(at + 1)) {
                return value;
            }
        }
    }

    /// Behind its "]"; one that stands first is a member, and names like [:alpha:] have one of their own.
    std::size_t endOfClass() const
    {
        std::size_t at = position + 1;
        at += at < pattern.size() && pattern[at] == '^' ? 1 : 0;
        at += at < pattern.size() && pattern[at] == ']' ? 1 : 0;
        while (at < pattern.size() && pattern[at] != ']') {
            const std::size_t name = pattern.compare(at, 2, "[:") == 0 ? pattern.find(":]", at + 2) : std::string::npos;
            at = name != std::string::npos ? name + 2 : at + (pattern[at] == '\\' ? 2 : 1);
        }
        return at + 1;
    }

    void add(std::size_t more) { size = std::min(size + more, largestPatternSize); }

    const std::string& pattern;
    std::size_t position = 0;
    std::size_t size = 0;           // of what stands between the innermost open parenthesis and here
    std::size_t atom = 0;           // size of the last thing that a repetition can be of
    std::vector<std::size_t> open;  // size before each open parenthesis
};

}  // namespace

std::size_t patternSize(const std::string& pattern)
{
    return Meter(pattern).measure();
}

}  // namespace Zorv
