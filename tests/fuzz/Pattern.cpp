/// A DN as a pattern for DNs: any pattern against any text is valid or refused with a reason, costs little time and memory,
/// and finds a plain text exactly where that text is.
///
/// The input is a pattern, a line feed, and the text to search.
#include <regex.h>

#include <chrono>

#include "FuzzTarget.hpp"
#include "MemoryMeter.hpp"
#include "RegularExpression.hpp"

using namespace ZorvFuzz;

namespace {

constexpr std::size_t mostMemory = 10000000;         // bytes
constexpr std::chrono::milliseconds mostTime(1000);  // a hundred times what is promised: sanitizers and busy machines

struct Outcome {
    bool isValid = false;
    bool isFound = false;
};

Outcome search(const std::string& pattern, const std::string& text)
{
    const auto begun = std::chrono::steady_clock::now();
    const MemoryMeter meter;
    const Zorv::RegularExpression expression(pattern, REG_EXTENDED | REG_NOSUB);
    const Outcome outcome{expression.isExpressionValid(), expression.match(text)};
    require(outcome.isValid == expression.getErrorText().empty(), "a refused pattern has its reason");
    require(outcome.isValid || !outcome.isFound, "a refused pattern finds nothing");
    require(outcome.isFound == expression.match(text), "a pattern finds the same again");
    require(meter.getPeak() < mostMemory, "a pattern costs at most 10 MB");
    require(std::chrono::steady_clock::now() - begun < mostTime, "a pattern costs little time");
    return outcome;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input = textOf(data, size);
    const std::size_t end = std::min(input.find('\n'), input.size());
    const std::string pattern = input.substr(0, end);
    const std::string text = end < input.size() ? input.substr(end + 1) : "";
    const Outcome outcome = search(pattern, text);
    if (pattern.find_first_of("\\^$.[]|()?*+{}") == std::string::npos) {
        require(outcome.isValid, "a plain text is a pattern");
        require(outcome.isFound == (text.find(pattern) != std::string::npos), "a plain text finds itself");
    }
    return 0;
}
