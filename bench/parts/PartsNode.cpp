#include "PartsNode.hpp"

#include <filesystem>

#include "FmComponentManager.hpp"
#include "FmEventProducer.hpp"
#include "model/ModelReader.hpp"

namespace ZorvBench {

namespace {

const std::string alarmModel = "ManagedElement=1,SystemFunctions=1,Fm=1,FmAlarmModel=many";

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

template <class ScalarT>
ZorvInput::MoValue valueOf(std::int32_t type, ScalarT scalar)
{
    return {type, {ZorvInput::MoScalarT(scalar)}};
}

ZorvInput::MoInstanceT alarmType(std::uint32_t minorType)
{
    auto type = std::make_shared<ZorvInput::MoInstance>();
    type->dn = alarmModel + ",FmAlarmType=" + std::to_string(minorType);
    type->attributes = {
        {"majorType", valueOf(YALT_MO_ATTRIBUTE_UINT32, std::uint64_t{PartsNode::majorType})},
        {"minorType", valueOf(YALT_MO_ATTRIBUTE_UINT32, std::uint64_t{minorType})},
        {"isStateful", valueOf(YALT_MO_ATTRIBUTE_BOOL, true)},
        {"eventType", valueOf(YALT_MO_ATTRIBUTE_ENUM, std::int32_t{2})},
        {"probableCause", valueOf(YALT_MO_ATTRIBUTE_UINT32, std::uint64_t{29})},
        {"specificProblem", valueOf(YALT_MO_ATTRIBUTE_STRING, std::string("Loss of Signal"))},
    };
    return type;
}

ZorvInput::ModelFile modelWithManyTypes(const std::string& path)
{
    ZorvInput::ModelFile file = ZorvInput::readModel(path);
    auto model = std::make_shared<ZorvInput::MoInstance>();
    model->dn = alarmModel;
    file.tree.put(std::move(model));
    for (std::uint32_t i = 0; i < PartsNode::numberOfTypes; ++i) {
        file.tree.put(alarmType(PartsNode::firstType + i));
    }
    return file;
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
