#include "scenario/JsonFields.hpp"

#include <Poco/JSON/Stringifier.h>

#include <cmath>
#include <sstream>
#include <utility>

#include "files/InputError.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

std::string shortNumber(double number)
{
    std::ostringstream text;
    text.precision(15);
    text << number;
    return text.str();
}

}  // namespace

std::string jsonText(const Poco::Dynamic::Var& value)
{
    if (isJsonText(value)) {
        return value.convert<std::string>();
    }
    std::ostringstream text;
    Poco::JSON::Stringifier::stringify(value, text);
    return text.str();
}

bool isJsonText(const Poco::Dynamic::Var& value)
{
    return !value.isEmpty() && value.type() == typeid(std::string);
}

JsonFields::JsonFields(Poco::JSON::Object::Ptr jsonObject, std::string parentPath)
    : object(std::move(jsonObject)),
      path(std::move(parentPath))
{
}

Poco::Dynamic::Var JsonFields::get(const std::string& name)
{
    asked.insert(name);
    if (!object->has(name)) {
        throw ValueError(path + name + ": missing");
    }
    return object->get(name);
}

std::string JsonFields::text(const std::string& name)
{
    const Poco::Dynamic::Var value = get(name);
    if (!isJsonText(value)) {
        throw ValueError(path + name + ": not a text", jsonText(value));
    }
    return value.convert<std::string>();
}

std::string JsonFields::text(const std::string& name, const std::string& fallback)
{
    return has(name) ? text(name) : fallback;
}

std::int64_t JsonFields::integer(const std::string& name, std::int64_t low, std::int64_t high)
{
    const Poco::Dynamic::Var value = get(name);
    if (!value.isEmpty() && value.isInteger() && !value.isBoolean()) {
        try {
            const auto number = value.convert<Poco::Int64>();
            if (number >= low && number <= high) {
                return number;
            }
        } catch (const Poco::RangeException&) {
            // above every bound
        }
    }
    throw ValueError(path + name + ": not a number from " + std::to_string(low) + " to " + std::to_string(high),
                     jsonText(value));
}

double JsonFields::number(const std::string& name, double low, double high)
{
    const Poco::Dynamic::Var value = get(name);
    if (!value.isEmpty() && value.isNumeric() && !value.isBoolean()) {
        const auto number = value.convert<double>();
        if (std::isfinite(number) && number >= low && number <= high) {
            return number;
        }
    }
    throw ValueError(path + name + ": not a number from " + shortNumber(low) + " to " + shortNumber(high),
                     jsonText(value));
}

JsonFields JsonFields::fields(const std::string& name)
{
    const Poco::Dynamic::Var value = get(name);
    if (value.isEmpty() || value.type() != typeid(Poco::JSON::Object::Ptr)) {
        throw ValueError(path + name + ": not an object", jsonText(value));
    }
    return JsonFields(value.extract<Poco::JSON::Object::Ptr>(), path + name + ".");
}

void JsonFields::expectNoOther() const
{
    for (const auto& [name, value] : *object) {
        if (asked.count(name) == 0) {
            throw ValueError("unknown field", path + name);
        }
    }
}

}  // namespace ZorvNode
