#include "Failure.hpp"

#include <cerrno>
#include <system_error>

namespace ZorvCtl {

NoNode::NoNode(const std::string& socketPath, const std::string& reason)
    : Failure(noNode, "no node answers on " + socketPath + ": " + reason +
                          "\nstart one with zorvd --config FILE, or systemctl start zorvd; "
                          "name another one's socket with --socket PATH")
{
}

OutputClosed::OutputClosed(int errorNumber)
    : Failure(errorNumber == EPIPE ? done : refused,
              errorNumber == EPIPE ? ""
                                   : "standard output takes no more: " + std::generic_category().message(errorNumber))
{
}

}  // namespace ZorvCtl
