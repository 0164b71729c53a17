#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Layout.h"

// A published layout is pinned here: what changes it does not compile.

#define ZORV_SIZE(type, size)                                \
    static_assert(sizeof(type) == (size), "size of " #type); \
    static_assert(std::is_standard_layout_v<type> && std::is_trivial_v<type>, #type " is plain data");
#define ZORV_OFFSET(type, member, offset) \
    static_assert(offsetof(type, member) == (offset), "offset of " #type "." #member);
#include "Layout.inc"
#undef ZORV_SIZE
#undef ZORV_OFFSET

namespace {

using Layout = std::vector<std::pair<std::string, size_t>>;

Layout layoutInC()
{
    size_t numberOfEntries = 0;
    const auto* entries = zorvLayoutInC(&numberOfEntries);
    Layout layout;
    for (size_t i = 0; i < numberOfEntries; ++i) {
        layout.emplace_back(entries[i].name, entries[i].value);
    }
    return layout;
}

TEST(LayoutTest, bothLanguagesSeeTheSameLayout)
{
    const Layout layoutInCpp = {
#define ZORV_SIZE(type, size) {#type, sizeof(type)},
#define ZORV_OFFSET(type, member, offset) {#type "." #member, offsetof(type, member)},
#include "Layout.inc"
#undef ZORV_SIZE
#undef ZORV_OFFSET
    };

    EXPECT_EQ(layoutInCpp, layoutInC());
}

}  // namespace
