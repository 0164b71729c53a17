#include "services/replicatedlist/ListNames.hpp"

#include <charconv>
#include <cstring>
#include <iterator>
#include <system_error>

namespace ZorvNode {

namespace {

constexpr std::string_view itemPrefix = "item-";

}  // namespace

std::optional<std::string_view> toText(const ZorvMwSpiListNameT& name)
{
    const std::size_t length = strnlen(name.value, ZORV_LIST_NAME_SIZE);
    if (length == 0 || name.length != length + 1) {
        return std::nullopt;
    }
    return std::string_view(name.value, length);
}

ZorvMwSpiListNameT toItemName(std::uint64_t number)
{
    ZorvMwSpiListNameT name{};
    itemPrefix.copy(name.value, itemPrefix.size());
    const char* const end = std::to_chars(name.value + itemPrefix.size(), std::end(name.value), number).ptr;
    name.length = static_cast<std::uint16_t>(end - name.value + 1);
    return name;
}

std::optional<std::uint64_t> toItemNumber(const ZorvMwSpiListNameT& name)
{
    const auto text = toText(name);
    if (!text || text->substr(0, itemPrefix.size()) != itemPrefix) {
        return std::nullopt;
    }
    const std::string_view digits = text->substr(itemPrefix.size());
    const char* const end = digits.data() + digits.size();
    std::uint64_t number = 0;
    const auto read = std::from_chars(digits.data(), end, number);
    const bool isAsWritten = read.ec == std::errc() && read.ptr == end && (digits.size() == 1 || digits.front() != '0');
    return isAsWritten ? std::optional<std::uint64_t>(number) : std::nullopt;
}

}  // namespace ZorvNode
