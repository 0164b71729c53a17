/// What an answer of the node means for the notifications it answers.
#pragma once

#include "HttpReader.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace ZorvClient {

enum class Action {
    settle,  ///< answered: each is taken or rejected
    retry,   ///< the node could not take them, or the answer does not account for each of them: send all again, later
    split    ///< too much at once: send fewer
};

struct Rejection {
    std::string field;
    std::string reason;
    bool isRejected = false;
};

struct Verdict {
    Action action = Action::retry;
    std::vector<Rejection> items;  ///< when settled, one for each notification
};

/// @param count notifications in the request.
Verdict judge(const HttpAnswer& answer, std::size_t count);

}  // namespace ZorvClient
