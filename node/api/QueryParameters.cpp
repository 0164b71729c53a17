#include "api/QueryParameters.hpp"

#include "files/Number.hpp"

namespace ZorvNode {

std::optional<std::string> QueryParameters::text(const std::string& name)
{
    asked.insert(name);
    const auto found = request.query.find(name);
    return found != request.query.end() ? std::optional<std::string>(found->second) : std::nullopt;
}

std::optional<std::uint64_t> QueryParameters::number(const std::string& name, std::uint64_t low, std::uint64_t high)
{
    const auto value = text(name);
    if (!value) {
        return std::nullopt;
    }
    std::uint64_t parsed = 0;
    if (!ZorvInput::parseUnsigned(*value, parsed) || parsed < low || parsed > high) {
        throw HttpError(400, "not a number from " + std::to_string(low) + " to " + std::to_string(high), name);
    }
    return parsed;
}

bool QueryParameters::flag(const std::string& name, bool fallback)
{
    const auto value = text(name);
    if (value && *value != "true" && *value != "false") {
        throw HttpError(400, "not true or false", name);
    }
    return value ? *value == "true" : fallback;
}

void QueryParameters::expectNoOther() const
{
    for (const auto& [name, value] : request.query) {
        if (asked.count(name) == 0) {
            throw HttpError(400, "no such parameter", name);
        }
    }
}

}  // namespace ZorvNode
