#include "files/InputError.hpp"

#include "files/LineText.hpp"

namespace ZorvInput {

namespace {

constexpr std::size_t longestValue = 200;

std::string shown(const std::string& value)
{
    return value.size() > longestValue ? toLineText(value.substr(0, longestValue)) + "..." : toLineText(value);
}

}  // namespace

ValueError::ValueError(const std::string& what, const std::string& value)
    : std::runtime_error(what + ", \"" + shown(value) + "\"")
{
}

}  // namespace ZorvInput
