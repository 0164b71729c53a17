/// zorvctl from its command line to its exit code.
///
/// Threads: one; an interruption from any.
/// Failure: everything is told on the console's error stream and becomes an exit code; never throws.
#pragma once

#include <string>
#include <vector>

#include "Console.hpp"
#include "Interruption.hpp"

namespace ZorvCtl {

/// @param arguments without the program's name.
int run(std::vector<std::string> arguments, const Console& console, Interruption& interruption);

}  // namespace ZorvCtl
