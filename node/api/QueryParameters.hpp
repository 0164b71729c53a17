/// The query of a request, each parameter asked for, checked and named in messages.
///
/// Failure: HttpError 400.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "api/http/HttpMessage.hpp"

namespace ZorvNode {

class QueryParameters {
public:
    explicit QueryParameters(const HttpRequest& httpRequest) : request(httpRequest) {}

    /// None when it is not there.
    std::optional<std::string> text(const std::string& name);
    std::optional<std::uint64_t> number(const std::string& name, std::uint64_t low, std::uint64_t high);
    bool flag(const std::string& name, bool fallback);

    /// Throws at a parameter that nobody has asked for.
    void expectNoOther() const;

private:
    const HttpRequest& request;
    std::set<std::string> asked;
};

}  // namespace ZorvNode
