// The published layout as a C++17 compiler sees it. What changes it does not compile.
#include <cstddef>
#include <type_traits>

#include "AllInterfaces.h"

#define ZORV_SIZE(type, size)                                \
    static_assert(sizeof(type) == (size), "size of " #type); \
    static_assert(std::is_standard_layout_v<type> && std::is_trivial_v<type>, #type " is plain data");
#define ZORV_OFFSET(type, member, offset) \
    static_assert(offsetof(type, member) == (offset), "offset of " #type "." #member);
#include "Layout.inc"
