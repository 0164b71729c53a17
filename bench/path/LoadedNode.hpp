/// A node in this process with the fault management library loaded, in a folder of its own: filters off, default durability.
///
/// Threads: one makes and destroys it.
#pragma once

#include <memory>
#include <string>

#include "TemporaryDirectory.hpp"
#include "runtime/Node.hpp"

namespace ZorvBench {

struct NodeChoice {
    std::string store = "memory";
    std::string logLevel = "warning";
};

class LoadedNode {
public:
    explicit LoadedNode(const NodeChoice& choice);
    ~LoadedNode();

    void start();
    void stop();

    /// Ends the node, and makes a new one that finds the state of the old; not started.
    void renew();

    ZorvNode::Node& operator*() { return *node; }
    ZorvNode::Node* operator->() { return node.get(); }

    const ZorvNode::NodeConfiguration& getConfiguration() const { return configuration; }

private:
    const ZorvTest::TemporaryDirectory folder;
    const ZorvNode::NodeConfiguration configuration;
    std::unique_ptr<ZorvNode::Node> node;
};

}  // namespace ZorvBench
