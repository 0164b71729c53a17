#include "Verdict.hpp"

#include "AnswerReader.hpp"

#include <utility>

namespace ZorvClient {

namespace {

/// False when the answer does not say of each notification what became of it.
bool readItems(const AnswerJson& json, std::vector<Rejection>& items)
{
    if (!json.accepted || !json.rejected) {
        return false;
    }
    for (const AnswerItem& each : *json.rejected) {
        if (!each.item || *each.item >= items.size() || items[*each.item].isRejected) {
            return false;
        }
        items[*each.item] = Rejection{each.field, each.reason, true};
    }
    return *json.accepted + json.rejected->size() == items.size();
}

Verdict rejectAll(const HttpAnswer& answer, const AnswerItem& error, std::size_t count)
{
    Rejection rejection{error.field, error.reason, true};
    if (rejection.reason.empty()) {
        rejection = {"", std::to_string(answer.status) + " " + answer.statusText, true};
    }
    return {Action::settle, std::vector<Rejection>(count, rejection)};
}

}  // namespace

Verdict judge(const HttpAnswer& answer, std::size_t count)
{
    const bool isRefusal = answer.status >= 400 && answer.status < 500;
    if (answer.status == 408 || answer.status == 429 || (answer.status != 200 && !isRefusal)) {
        return {Action::retry, {}};
    }
    if (answer.status == 413 && count > 1) {
        return {Action::split, {}};
    }
    const AnswerJson json = readAnswer(answer.body);
    if (answer.status == 200 || answer.status == 422) {
        std::vector<Rejection> items(count);
        if (readItems(json, items)) {
            return {Action::settle, std::move(items)};
        }
    }
    return isRefusal ? rejectAll(answer, json.error, count) : Verdict{Action::retry, {}};
}

}  // namespace ZorvClient
