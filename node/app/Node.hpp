/// A node: all services, the component libraries, and the order in which they come and go.
///
/// Up: services, libraries in the order of the configuration, components in the order of their registration. Down: the
/// reverse, components first; a library with a thread still in it stays mapped.
///
/// Threads:   one thread constructs, starts, stops and destroys it.
/// Failure:   the constructor throws StoreError; start throws LoadError or StartError after it has backed out.
#pragma once

#include <memory>
#include <ostream>
#include <vector>

#include "config/NodeConfiguration.hpp"
#include "ingress/FmNotificationSource.hpp"
#include "lifecycle/ComponentRunner.hpp"
#include "lifecycle/LoadedLibrary.hpp"
#include "northbound/FollowPrinter.hpp"
#include "portal/PortalTables.hpp"
#include "services/eventrouter/EventRouterTable.hpp"
#include "services/log/LogTable.hpp"
#include "services/managedobjects/CmEventPublisher.hpp"
#include "services/managedobjects/ManagedObjectTable.hpp"
#include "services/managedobjects/ManagementClient.hpp"
#include "services/modelrepository/ModelRepositoryTable.hpp"
#include "services/replicatedlist/ReplicatedListTable.hpp"
#include "services/trace/TraceTable.hpp"
#include "services/transactions/TransactionTables.hpp"
#include "stores/StateStore.hpp"

namespace ZorvNode {

class Node {
public:
    /// @param follow where northbound notifications are printed; null: nowhere.
    Node(const NodeConfiguration& nodeConfiguration, ModelFile modelFile, std::ostream* follow,
         std::function<void()> onFollowFailed);
    ~Node();

    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    void start();
    void stop();

    /// Takes a model file, already checked, into use.
    void replaceModel(ModelFile file);

    void log(std::int32_t level, const std::string& text);

    /// Grows with everything that the services do for components.
    std::uint64_t getActivity() const;

    LogService logs;
    TraceService trace;
    EventRouter router;
    FmNotificationSource source;
    MoStore store;
    ModelRepository repository;
    TransactionService transactions;
    InterfacePortal portal;
    CmEventPublisher cmEvents;
    ManagedObjectService objects;
    ManagementClient management;
    StateStore state;
    ReplicatedListService lists;

private:
    void provideServices();
    bool awaitCallbacks();

    const NodeConfiguration& configuration;

    const EventRouterTable routerTable;
    const ModelRepositoryTable repositoryTable;
    const TransactionTables transactionTables;
    const ManagedObjectTable objectTable;
    const LogTable logTable;
    const TraceTable traceTable;
    const ReplicatedListTable listTable;
    const PortalTables portalTables;

    ComponentRunner runner;
    std::vector<std::unique_ptr<LoadedLibrary>> libraries;

public:
    FollowPrinter follower;  // last: it is the first to go
};

}  // namespace ZorvNode
