/// Assertion for classes of which one object may live at a time.
#pragma once

#include <cassert>
#include <cstddef>

/// The extra macro lets NULL expand before assert turns the condition into text.
#define ZORV_ASSERT(condition) assert(condition)
