/// A field of a JSON object is not as it should be.
#pragma once

#include <string>

#include "files/InputError.hpp"
#include "files/LineText.hpp"

namespace ZorvInput {

/// `FIELD: reason`, `FIELD: reason, "value"`. Control characters in a field's name are escaped.
class FieldError : public ValueError {
public:
    FieldError(const std::string& fieldPath, const std::string& reason)
        : ValueError(toLineText(fieldPath) + ": " + reason),
          field(toLineText(fieldPath))
    {
    }
    FieldError(const std::string& fieldPath, const std::string& reason, const std::string& value)
        : ValueError(toLineText(fieldPath) + ": " + reason, value),
          field(toLineText(fieldPath))
    {
    }

    const std::string& getField() const { return field; }

    /// What is wrong, without the field.
    std::string getReason() const { return std::string(what()).substr(field.size() + 2); }

private:
    std::string field;
};

}  // namespace ZorvInput
