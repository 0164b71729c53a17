/// A node's services in this process, without any library: the parts are linked into the program and find them.
///
/// The model has many alarm types. Lists are kept in memory.
///
/// Threads:   one makes and destroys it; one at a time.
/// Failure:   std::exception.
#pragma once

#include "TemporaryDirectory.hpp"
#include "runtime/Node.hpp"

namespace ZorvBench {

class PartsNode {
public:
    PartsNode();
    ~PartsNode();

    PartsNode(const PartsNode&) = delete;
    PartsNode& operator=(const PartsNode&) = delete;

    ZorvNode::Node* operator->() { return &node; }

private:
    const ZorvTest::TemporaryDirectory folder;
    const ZorvNode::NodeConfiguration configuration;
    ZorvNode::Node node;
};

}  // namespace ZorvBench
