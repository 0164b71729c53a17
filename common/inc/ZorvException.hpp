/// The framework's exception: a text made like printf makes it.
///
/// Threads:   an exception object belongs to the thread that holds it.
/// Failure:   a text that cannot be formatted becomes the format itself.
#pragma once

#include <exception>
#include <string>

namespace Zorv {

class ZorvException : public std::exception {
public:
    /// Text from outside goes into the arguments, never into the format.
    explicit ZorvException(const char* format, ...) __attribute__((format(printf, 2, 3)));

    const char* what() const noexcept override { return text.c_str(); }

private:
    std::string text;
};

}  // namespace Zorv
