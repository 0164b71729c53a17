/// Managed objects as JSON, seen inside one transaction.
///
/// Threads:   the transaction's.
/// Ownership: valid as long as the transaction.
/// Failure:   MoError.
#pragma once

#include <functional>

#include "services/managedobjects/ManagementClient.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvNode {

class ObjectView {
public:
    ObjectView(ManagedObjectService& objectService, const MoStore& store, unsigned long txHandle);

    /// DNs of the children of one class; "" is above the root.
    std::vector<std::string> childrenOf(const std::string& parentDn, const std::string& className) const;

    /// DNs of all children, class by class.
    std::vector<std::string> childrenOf(const std::string& parentDn) const;

    /// DNs of all objects of a class, wherever the model lets them be.
    std::vector<std::string> instancesOf(const std::string& className) const;

    /// DNs of all objects that may contain objects of a class; "" among them when the root may.
    std::vector<std::string> parentsOf(const std::string& className) const;

    bool exists(const std::string& dn) const { return objects.exists(tx, dn); }

    /// The values of all attributes of the object's class, in the class's order.
    std::vector<MoValue> read(const std::string& dn) const;

    /// The same as members of the JSON object that is being written.
    void write(ZorvInput::JsonWriter& json, const std::string& dn) const;

    const ClassDescription& classAt(const std::string& dn) const;

    /// -2 no such class in the model.
    const ClassDescription& classNamed(const std::string& className) const;

private:
    std::vector<std::string> parentsOf(const std::string& className, unsigned levelsLeft) const;

    ManagedObjectService& objects;
    const MoSnapshot snapshot;
    const unsigned long tx;
};

/// Runs an operation on the view of one transaction.
void viewObjects(ManagementClient& management, ManagedObjectService& objects, const MoStore& store,
                 const std::function<void(const ObjectView&)>& operation);

}  // namespace ZorvNode
