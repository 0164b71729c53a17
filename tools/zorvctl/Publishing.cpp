#include "Publishing.hpp"

#include "JsonAccess.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

constexpr int noneAccepted = 422;
constexpr std::chrono::seconds longestDelivery(90);

}  // namespace

std::optional<Rejection> publish(NodeConnection& connection, const std::string& json, const std::string& wait)
{
    const Answer answer =
        connection.exchange("POST", Target("/v1/notifications").parameter("wait", wait), json, longestDelivery);
    if (answer.status != noneAccepted) {
        expectGood(answer);
    }
    const auto rejected = entriesOf(answer.body, "rejected");
    if (rejected.empty()) {
        expectGood(answer);
        return std::nullopt;
    }
    return Rejection{static_cast<std::size_t>(numberOr(*rejected.front(), "item", 0)), reasonOf(*rejected.front())};
}

}  // namespace ZorvCtl
