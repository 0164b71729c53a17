/// The files of a small node, in a folder of the test's own, each replaceable by a bad one.
#pragma once

#include <string>
#include <vector>

#include "Process.hpp"
#include "TemporaryDirectory.hpp"

namespace ZorvTest {

class NodeFiles {
public:
    NodeFiles()
    {
        writeConfiguration(std::string(BAD_LIBRARIES) + "/WellBehaved.so");
        directory.write("model.xml", "<ZorvModel>\n<class name=\"Node\"/>\n<object dn=\"Node=1\"/>\n</ZorvModel>\n");
    }

    /// @param further elements.
    void writeConfiguration(const std::string& library, const std::string& further = "",
                            const std::string& parameters = "") const
    {
        directory.write("node.xml", "<ZorvNode>\n<library>" + library + "</library>\n<model>model.xml</model>\n" +
                                        further + "<ZorvFmComponent>" + parameters +
                                        "</ZorvFmComponent>\n</ZorvNode>\n");
    }

    std::string path(const std::string& name) const { return directory.path(name); }
    std::string socket() const { return path("run/zorvd.sock"); }

    /// The command line that starts the node, with further arguments behind it.
    std::vector<std::string> command(const std::vector<std::string>& further = {}) const
    {
        std::vector<std::string> line = {ZORVD, "--config", path("node.xml")};
        line.insert(line.end(), further.begin(), further.end());
        return line;
    }

    /// For a node that is to refuse its start.
    ProcessResult runNode() const { return runProcess(command()); }

    const TemporaryDirectory directory;
};

}  // namespace ZorvTest
