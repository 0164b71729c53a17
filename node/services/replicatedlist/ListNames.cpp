#include "services/replicatedlist/ListNames.hpp"

#include <cstring>

#include "files/Number.hpp"

namespace ZorvNode {

namespace {

const std::string itemPrefix = "item-";

}  // namespace

std::optional<std::string> toText(const ZorvMwSpiListNameT& name)
{
    const std::size_t length = strnlen(name.value, ZORV_LIST_NAME_SIZE);
    if (length == 0 || name.length != length + 1) {
        return std::nullopt;
    }
    return std::string(name.value, length);
}

ZorvMwSpiListNameT toItemName(std::uint64_t number)
{
    ZorvMwSpiListNameT name{};
    const std::string text = itemPrefix + std::to_string(number);
    text.copy(name.value, text.size());
    name.length = static_cast<std::uint16_t>(text.size() + 1);
    return name;
}

std::optional<std::uint64_t> toItemNumber(const ZorvMwSpiListNameT& name)
{
    const auto text = toText(name);
    std::uint64_t number = 0;
    const bool isNumbered = text && text->compare(0, itemPrefix.size(), itemPrefix) == 0 &&
                            ZorvInput::parseUnsigned(text->substr(itemPrefix.size()), number);
    if (!isNumbered || itemPrefix + std::to_string(number) != *text) {
        return std::nullopt;
    }
    return number;
}

}  // namespace ZorvNode
