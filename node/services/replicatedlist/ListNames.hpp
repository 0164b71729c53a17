/// List and item names as they travel: counted texts with a final zero.
#pragma once

#include <optional>
#include <string_view>

#include "ZorvMwSpiReplicatedList_1.h"

namespace ZorvNode {

/// The text where it stands. None when the length does not fit the text, or the text is empty.
std::optional<std::string_view> toText(const ZorvMwSpiListNameT& name);

/// Zero-filled behind the text.
ZorvMwSpiListNameT toItemName(std::uint64_t number);

/// None when it is no item's name.
std::optional<std::uint64_t> toItemNumber(const ZorvMwSpiListNameT& name);

}  // namespace ZorvNode
