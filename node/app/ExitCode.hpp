/// How zorvd ends.
#pragma once

namespace ZorvNode {

enum ExitCode { done = 0, failed = 1, badInput = 2 };

}  // namespace ZorvNode
