#include "LoadedNode.hpp"

#include <filesystem>

#include "ManyTypes.hpp"

namespace ZorvBench {

namespace {

ZorvNode::NodeConfiguration configurationOf(const ZorvTest::TemporaryDirectory& folder, const NodeChoice& choice)
{
    const std::string file = folder.write(
        "node.xml", "<ZorvNode><library>" FM_LIBRARY "</library><model>" MODEL "</model><log><level>" +
                        choice.logLevel +
                        "</level><fileSize>1000000000</fileSize></log><eventRouter><queueBound>1000000</queueBound>"
                        "</eventRouter><replicatedLists><itemBound>1000000</itemBound><store>" +
                        choice.store + "</store></replicatedLists><ZorvFmComponent/></ZorvNode>");
    const ZorvNode::NodeConfiguration configuration = ZorvNode::readNodeConfiguration(file);
    std::filesystem::create_directories(configuration.logDirectory);
    std::filesystem::create_directories(configuration.store.directory);
    return configuration;
}

}  // namespace

LoadedNode::LoadedNode(const NodeChoice& choice) : configuration(configurationOf(folder, choice))
{
    renew();
}

LoadedNode::~LoadedNode()
{
    stop();
}

void LoadedNode::start()
{
    node->start();
}

void LoadedNode::stop()
{
    node->stop();
}

void LoadedNode::renew()
{
    node.reset();
    node = std::make_unique<ZorvNode::Node>(configuration, modelWithManyTypes(configuration.model));
}

}  // namespace ZorvBench
