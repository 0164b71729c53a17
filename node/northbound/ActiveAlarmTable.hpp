/// The active alarms as a table, read through the "FmAlarm" managed objects inside one transaction.
///
/// The columns are the class's attributes as the model repository tells them.
///
/// Failure: MoError.
#pragma once

#include <ostream>

#include "services/managedobjects/ManagementClient.hpp"
#include "services/modelrepository/ModelRepository.hpp"

namespace ZorvNode {

class ActiveAlarmTable {
public:
    ActiveAlarmTable(ManagementClient& managementClient, ManagedObjectService& objectService,
                     const ModelRepository& modelRepository, const MoStore& moStore)
        : management(managementClient),
          objects(objectService),
          repository(modelRepository),
          store(moStore)
    {
    }

    void print(std::ostream& out) const;

private:
    using RowT = std::vector<std::string>;

    RowT columns() const;
    std::vector<std::string> childrenOf(unsigned long txHandle, const std::string& parentDn,
                                        const std::string& className) const;
    RowT readRow(unsigned long txHandle, const std::string& dn, const RowT& attributes) const;

    ManagementClient& management;
    ManagedObjectService& objects;
    const ModelRepository& repository;
    const MoStore& store;
};

}  // namespace ZorvNode
