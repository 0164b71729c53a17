#include "Layout.h"

/* A published layout is pinned here: what changes it does not compile. */

#define ZORV_SIZE(type, size) _Static_assert(sizeof(type) == (size), "size of " #type);
#define ZORV_OFFSET(type, member, offset) \
    _Static_assert(offsetof(type, member) == (offset), "offset of " #type "." #member);
#include "Layout.inc"
#undef ZORV_SIZE
#undef ZORV_OFFSET

static const ZorvLayoutEntry layout[] = {
#define ZORV_SIZE(type, size) {#type, sizeof(type)},
#define ZORV_OFFSET(type, member, offset) {#type "." #member, offsetof(type, member)},
#include "Layout.inc"
#undef ZORV_SIZE
#undef ZORV_OFFSET
};

const ZorvLayoutEntry* zorvLayoutInC(size_t* numberOfEntries)
{
    *numberOfEntries = sizeof layout / sizeof layout[0];
    return layout;
}
