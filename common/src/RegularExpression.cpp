#include "RegularExpression.hpp"

#include <re2/re2.h>
#include <regex.h>

#include "PatternSize.hpp"

namespace Zorv {
namespace {

constexpr int memoryBound = 1 << 20;  // bytes, for program and matching state of one expression

/// The engine counts its program only when it has it. A thousand characters of repetitions take it a tenth of a second and
/// 20 MB until then; a pattern of this size takes 3 ms and 1 MB, and then 10 µs for each character of a text.
constexpr std::size_t sizeBound = 2000;

re2::RE2::Options toOptions(int flags)
{
    const bool lineWise = (flags & REG_NEWLINE) != 0;
    re2::RE2::Options options;
    options.set_encoding(re2::RE2::Options::EncodingLatin1);
    options.set_posix_syntax(true);
    options.set_longest_match(true);
    options.set_log_errors(false);
    options.set_max_mem(memoryBound);
    options.set_never_nl(false);
    options.set_dot_nl(!lineWise);
    options.set_one_line(!lineWise);
    options.set_case_sensitive((flags & REG_ICASE) == 0);
    return options;
}

}  // namespace

RegularExpression::RegularExpression(const std::string& pattern, int flags)
{
    if ((flags & REG_EXTENDED) == 0) {
        errorText = "basic syntax is not supported";
        return;
    }
    if (pattern.size() > sizeBound || patternSize(pattern) > sizeBound) {
        errorText = "pattern too large";
        return;
    }
    expression = std::make_unique<re2::RE2>(pattern, toOptions(flags));
    if (!expression->ok()) {
        errorText = expression->error();
    }
}

RegularExpression::~RegularExpression() = default;

bool RegularExpression::match(const std::string& text) const
{
    return isExpressionValid() && re2::RE2::PartialMatch(text, *expression);
}

}  // namespace Zorv
