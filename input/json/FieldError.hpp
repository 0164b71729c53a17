/// A field of a JSON object is not as it should be.
#pragma once

#include <string>

#include "files/InputError.hpp"

namespace ZorvInput {

/// `FIELD: reason`, `FIELD: reason, "value"`.
class FieldError : public ValueError {
public:
    FieldError(const std::string& fieldPath, const std::string& reason)
        : ValueError(fieldPath + ": " + reason),
          field(fieldPath)
    {
    }
    FieldError(const std::string& fieldPath, const std::string& reason, const std::string& value)
        : ValueError(fieldPath + ": " + reason, value),
          field(fieldPath)
    {
    }

    const std::string& getField() const { return field; }

    /// What is wrong, without the field.
    std::string getReason() const { return std::string(what()).substr(field.size() + 2); }

private:
    std::string field;
};

}  // namespace ZorvInput
