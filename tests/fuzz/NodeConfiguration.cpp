/// The node's configuration file: any file is refused with one line, or makes a configuration whose bounds fit together.
#include "config/NodeConfiguration.hpp"

#include "InputErrors.hpp"
#include "InputFile.hpp"

using namespace ZorvFuzz;
using namespace ZorvNode;

namespace {

bool isAbsolute(const std::string& path)
{
    return !path.empty() && path.front() == '/';
}

void check(const NodeConfiguration& configuration)
{
    require(!configuration.libraries.empty(), "there is a library");
    for (const std::string& library : configuration.libraries) {
        require(isAbsolute(library), "a library's path is absolute");
    }
    require(isAbsolute(configuration.model) && isAbsolute(configuration.runDirectory) &&
                isAbsolute(configuration.logDirectory) && isAbsolute(configuration.store.directory) &&
                isAbsolute(configuration.api.socket),
            "paths are absolute");
    require(configuration.inboxBound > 0, "the inbox holds something");
    require(configuration.api.batchBound > 0 && configuration.api.batchBound <= configuration.inboxBound,
            "a batch fits into the inbox");
    require(configuration.logLevel >= 3 && configuration.logLevel <= 6, "the log level exists");
    for (const auto& [group, level] : configuration.traceLevels) {
        require(level >= 0, "a trace level exists");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const InputFile file;
    const std::string path = file.write(textOf(data, size));
    try {
        check(readNodeConfiguration(path));
    } catch (const ZorvInput::InputError& e) {
        requireOneLine(e, path);
    }
    return 0;
}
