/// The committed managed objects of the node and their model.
///
/// Threads:   any. A snapshot stays as it is, whatever is committed afterwards.
/// Failure:   a commit that does not fit what has happened meanwhile changes nothing.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "model/Model.hpp"
#include "model/ModelReader.hpp"
#include "services/managedobjects/MoChange.hpp"
#include "services/managedobjects/MoState.hpp"

namespace ZorvNode {

using namespace ZorvInput;

struct MoSnapshot {
    std::shared_ptr<const Model> model;
    std::shared_ptr<const MoState> state;
};

class MoStore {
public:
    explicit MoStore(ModelFile file);

    MoSnapshot snapshot() const;

    /// Replays writes that were made on a snapshot.
    /// @param optimistic refuse when one of the objects written has changed since the snapshot.
    /// @param inOrder called with the changes in the order of the commits, still inside the commit.
    bool commit(const MoSnapshot& base, const std::vector<MoWrite>& writes, bool optimistic,
                const std::function<void(std::vector<MoChange>)>& inOrder);

    /// Takes a new model file into use; read-only values that components have written stay.
    void replace(ModelFile file, const std::function<void(std::vector<MoChange>)>& inOrder);

private:
    mutable std::mutex mutex;
    MoSnapshot current;  // guarded by mutex
};

}  // namespace ZorvNode
