#include "json/JsonFields.hpp"

#include <cstring>
#include <sstream>

namespace ZorvInput {

namespace {

constexpr std::ptrdiff_t trackedMembers = 64;  // more than any object has that is right

std::string shortNumber(double number)
{
    std::ostringstream text;
    text.precision(15);
    text << number;
    return text.str();
}

}  // namespace

std::string JsonFields::pathOf(const std::string& name) const
{
    return outer == nullptr ? name : outer->pathOf(ownName) + "." + name;
}

const JsonT& JsonFields::get(const char* name)
{
    const auto found = object.FindMember(name);
    if (found == object.MemberEnd()) {
        throw FieldError(pathOf(name), "missing");
    }
    const std::ptrdiff_t position = found - object.MemberBegin();
    if (position < trackedMembers) {
        asked |= std::uint64_t(1) << static_cast<unsigned>(position);
    }
    return found->value;
}

std::string JsonFields::text(const char* name)
{
    const JsonT& value = get(name);
    if (!value.IsString()) {
        throw FieldError(pathOf(name), "not a text", jsonText(value));
    }
    if (std::memchr(value.GetString(), 0, value.GetStringLength()) != nullptr) {
        throw FieldError(pathOf(name), "contains U+0000, which ends a text");
    }
    return {value.GetString(), value.GetStringLength()};
}

std::string JsonFields::text(const char* name, const std::string& fallback)
{
    return has(name) ? text(name) : fallback;
}

bool JsonFields::boolean(const char* name)
{
    const JsonT& value = get(name);
    if (!value.IsBool()) {
        throw FieldError(pathOf(name), "not true or false", jsonText(value));
    }
    return value.GetBool();
}

std::int64_t JsonFields::integer(const char* name, std::int64_t low, std::int64_t high)
{
    const JsonT& value = get(name);
    if (!value.IsInt64() || value.GetInt64() < low || value.GetInt64() > high) {
        throw FieldError(pathOf(name), "not a number from " + std::to_string(low) + " to " + std::to_string(high),
                         jsonText(value));
    }
    return value.GetInt64();
}

double JsonFields::number(const char* name, double low, double high)
{
    const JsonT& value = get(name);
    if (!value.IsNumber() || !(value.GetDouble() >= low && value.GetDouble() <= high)) {
        throw FieldError(pathOf(name), "not a number from " + shortNumber(low) + " to " + shortNumber(high),
                         jsonText(value));
    }
    return value.GetDouble();
}

JsonFields JsonFields::fields(const char* name)
{
    const JsonT& value = get(name);
    if (!value.IsObject()) {
        throw FieldError(pathOf(name), "not an object", jsonText(value));
    }
    return JsonFields(value, this, name);
}

void JsonFields::expectNoOther() const
{
    std::ptrdiff_t position = 0;
    for (const auto& member : object.GetObject()) {
        const bool known =
            position < trackedMembers && ((asked >> static_cast<unsigned>(position)) & std::uint64_t(1)) != 0;
        if (!known) {
            throw FieldError(pathOf(jsonText(member.name)), "unknown field");
        }
        ++position;
    }
}

}  // namespace ZorvInput
