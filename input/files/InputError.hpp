/// A file from outside is not as it should be: one line that says where, what and which value.
#pragma once

#include <stdexcept>
#include <string>

namespace ZorvInput {

/// What is wrong and with which value; the place is added by whoever knows it.
class ValueError : public std::runtime_error {
public:
    explicit ValueError(const std::string& what) : std::runtime_error(what) {}

    /// `what, "value"`: a long value is cut, control characters are escaped.
    ValueError(const std::string& what, const std::string& value);
};

/// `FILE:LINE: what, "value"`, or `FILE: what` where no line is to blame.
class InputError : public std::runtime_error {
public:
    InputError(const std::string& file, const std::string& what) : std::runtime_error(file + ": " + what) {}
    InputError(const std::string& file, unsigned long line, const ValueError& error)
        : std::runtime_error(file + ":" + std::to_string(line) + ": " + error.what())
    {
    }
};

}  // namespace ZorvInput
