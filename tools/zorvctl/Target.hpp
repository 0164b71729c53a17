/// Path and query of a request, with everything in it encoded that has to be.
#pragma once

#include <string>

namespace ZorvCtl {

class Target {
public:
    explicit Target(std::string path) : text(std::move(path)) {}

    /// Appends "/segment".
    Target& segment(const std::string& value);

    /// Appends "name=value".
    Target& parameter(const std::string& name, const std::string& value);

    const std::string& str() const { return text; }

private:
    std::string text;
    bool hasQuery = false;
};

}  // namespace ZorvCtl
