#include <sys/stat.h>

#include "app/Application.hpp"
#include "app/ExitCode.hpp"

namespace {

constexpr mode_t nothingForOthers = 027;  // logs have mode 0640; whoever starts the node may be stricter

}  // namespace

int main(int argc, char** argv)
{
    umask(nothingForOthers | umask(nothingForOthers));
    int exitCode = ZorvNode::done;
    const auto options = ZorvNode::readOptions(argc, argv, exitCode);
    return options ? ZorvNode::Application(*options).run() : exitCode;
}
