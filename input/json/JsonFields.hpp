/// Fields of a JSON object, each asked for, with its place in the messages.
///
/// Ownership: the JSON document and the outer fields outlive it.
/// Failure:   FieldError.
#pragma once

#include <cstdint>
#include <string>

#include "json/FieldError.hpp"
#include "json/Json.hpp"

namespace ZorvInput {

class JsonFields {
public:
    /// The outermost object.
    explicit JsonFields(const JsonT& jsonObject) : JsonFields(jsonObject, nullptr, "") {}

    bool has(const char* name) const { return object.HasMember(name); }
    const JsonT& get(const char* name);  ///< throws when it is missing
    std::string text(const char* name);
    std::string text(const char* name, const std::string& fallback);
    bool boolean(const char* name);
    std::int64_t integer(const char* name, std::int64_t low, std::int64_t high);
    double number(const char* name, double low, double high);
    JsonFields fields(const char* name);

    /// Throws at a field that nobody has asked for, and at one that stands there twice.
    void expectNoOther() const;

    const JsonT& json() const { return object; }

    /// "raise.dn".
    std::string pathOf(const std::string& name) const;

private:
    JsonFields(const JsonT& jsonObject, const JsonFields* outerFields, const char* itsName)
        : object(jsonObject),
          outer(outerFields),
          ownName(itsName)
    {
    }

    const JsonT& object;
    const JsonFields* const outer;
    const char* const ownName;
    std::uint64_t asked = 0;  // one bit for each of the first members
};

}  // namespace ZorvInput
