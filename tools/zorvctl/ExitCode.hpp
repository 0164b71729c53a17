/// How zorvctl ends.
#pragma once

namespace ZorvCtl {

enum ExitCode { done = 0, refused = 1, badInput = 2, noNode = 3, interrupted = 130 };

}  // namespace ZorvCtl
