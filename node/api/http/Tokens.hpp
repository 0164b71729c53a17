/// Bearer tokens from a file: lines "PERMISSION TOKEN", with PERMISSION one of read, publish and manage; each includes
/// the ones before it. Empty lines and lines that begin with # are passed over.
///
/// Threads:   unchangeable once read.
/// Failure:   the constructor throws InputError; a file that others may read is refused.
#pragma once

#include <string>
#include <vector>

#include "api/http/Caller.hpp"

namespace ZorvNode {

class Tokens {
public:
    explicit Tokens(const std::string& path);

    /// @param authorization value of the header; a caller without permissions when it names no token of ours.
    Caller callerOf(const std::string& authorization, const std::string& peer) const;

private:
    struct Token {
        std::string text;
        Caller caller;
    };

    std::vector<Token> tokens;
};

}  // namespace ZorvNode
