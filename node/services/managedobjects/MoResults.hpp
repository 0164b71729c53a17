/// Memory of what transactions have read: attribute results and iterations, until they are released or the transaction ends.
///
/// Threads: any.
#pragma once

#include <map>
#include <memory>
#include <mutex>

#include "model/ValueConversion.hpp"

namespace ZorvNode {

using namespace ZorvInput;

/// An open iteration: names of own objects, or the iteration of a component that implements the class.
struct MoIteration {
    unsigned long txHandle = 0;
    std::string className;
    std::vector<std::string> names;
    std::size_t next = 0;
    const YaltOamSpiManagedObject_3T* implementer = nullptr;
    std::uint64_t innerId = 0;
    std::size_t asked = 0;  // for the next object, how often
    bool closed = false;    // the names already given out live on
};

class MoResults {
public:
    using IterationT = std::shared_ptr<MoIteration>;

    /// Keeps values for a transaction; their place is the key for release.
    const YaltOamSpiMoAttribute_3T* keep(unsigned long txHandle, std::unique_ptr<CValues> values);

    /// False when nothing is kept there.
    bool release(const YaltOamSpiMoAttribute_3T* place);

    std::uint64_t open(MoIteration iteration);
    IterationT find(std::uint64_t iteratorId);

    void finish(unsigned long txHandle);

private:
    struct Kept {
        unsigned long txHandle;
        std::unique_ptr<CValues> values;
    };

    std::mutex mutex;
    std::map<const YaltOamSpiMoAttribute_3T*, Kept> kept;  // guarded by mutex
    std::map<std::uint64_t, IterationT> iterations;        // guarded by mutex
    std::uint64_t lastIterator = 0;                        // guarded by mutex
};

}  // namespace ZorvNode
