/// How to mend what the model reader complains about.
#pragma once

#include <string>

namespace ZorvCtl {

/// One sentence for each kind of error. @param error the reader's line.
std::string modelHint(const std::string& error);

}  // namespace ZorvCtl
