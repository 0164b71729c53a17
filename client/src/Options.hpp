/// Settings from what the application and its environment say.
#pragma once

#include "Settings.hpp"

namespace ZorvClient {

/// @param options null: the default ones.
ZorvClientResultT readOptions(const ZorvClientOptionsT* options, Settings& settings);

}  // namespace ZorvClient
