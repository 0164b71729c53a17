/* The published layout as a C11 compiler sees it. What changes it does not compile. */
#include <stddef.h>

#include "AllInterfaces.h"

#define ZORV_SIZE(type, size) _Static_assert(sizeof(type) == (size), "size of " #type);
#define ZORV_OFFSET(type, member, offset) \
    _Static_assert(offsetof(type, member) == (offset), "offset of " #type "." #member);
#include "Layout.inc"
