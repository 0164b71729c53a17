/// Picks what counts out of the JSON of an answer: how many were taken, which were rejected, an error.
///
///     {"accepted": 1, "rejected": [{"item": 1, "field": "raise.dn", "reason": "…"}]}
///     {"error": {"reason": "…", "field": "…"}}
///
/// Other members are skipped. A member of the wrong type counts as missing.
///
/// Threads:   any.
/// Failure:   what is not JSON is as an empty object.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace ZorvClient {

struct AnswerItem {
    std::optional<std::size_t> item;
    std::string field;
    std::string reason;
};

struct AnswerJson {
    std::optional<std::size_t> accepted;
    std::optional<std::vector<AnswerItem>> rejected;
    AnswerItem error;
};

AnswerJson readAnswer(std::string body);

}  // namespace ZorvClient
