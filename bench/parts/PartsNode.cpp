#include "PartsNode.hpp"

#include <filesystem>

#include "FmComponentManager.hpp"
#include "FmEventProducer.hpp"
#include "ManyTypes.hpp"

namespace ZorvBench {

namespace {

/// The library is not loaded: the node is never started.
ZorvNode::NodeConfiguration configurationOf(const ZorvTest::TemporaryDirectory& folder)
{
    const std::string file = folder.write(
        "node.xml", "<ZorvNode><library>none</library><model>" MODEL
                    "</model><log><level>warning</level></log><replicatedLists><itemBound>"
                    "1000000</itemBound><store>memory</store></replicatedLists><ZorvFmComponent/></ZorvNode>");
    const ZorvNode::NodeConfiguration configuration = ZorvNode::readNodeConfiguration(file);
    std::filesystem::create_directories(configuration.logDirectory);
    std::filesystem::create_directories(configuration.store.directory);
    return configuration;
}

}  // namespace

PartsNode::PartsNode()
    : configuration(configurationOf(folder)),
      node(configuration, modelWithManyTypes(configuration.model))
{
    const void* const portal = ZorvNode::PortalTables::accessor()->getPortal("1");
    ZorvFm::FmComponentManager::instance().setPortal(static_cast<const ZorvMgmtSpiPortal_1T*>(portal));
    ZorvFm::FmEventProducer::instance().start();
}

PartsNode::~PartsNode()
{
    ZorvFm::FmEventProducer::instance().stop();
    ZorvFm::FmComponentManager::instance().setPortal(nullptr);
}

}  // namespace ZorvBench
