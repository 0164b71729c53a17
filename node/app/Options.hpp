/// The command line of zorvd.
#pragma once

#include <optional>
#include <string>

namespace ZorvNode {

struct Options {
    std::string config;
    bool acceptEmpty = false;  ///< a damaged store is set aside
};

/// None when there is nothing to run: help or version was asked for, or the line is wrong; exitCode tells which.
std::optional<Options> readOptions(int argc, char** argv, int& exitCode);

}  // namespace ZorvNode
