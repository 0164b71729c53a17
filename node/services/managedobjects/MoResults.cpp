#include "services/managedobjects/MoResults.hpp"

#include <utility>

namespace ZorvNode {

namespace {

using LockT = std::lock_guard<std::mutex>;

template <class MapT, class FitsT>
void eraseIf(MapT& entries, FitsT fits)
{
    for (auto it = entries.begin(); it != entries.end();) {
        it = fits(it->second) ? entries.erase(it) : std::next(it);
    }
}

}  // namespace

const YaltOamSpiMoAttribute_3T* MoResults::keep(unsigned long txHandle, std::unique_ptr<CValues> values)
{
    const LockT lock(mutex);
    const YaltOamSpiMoAttribute_3T* const place = values->data();
    kept.insert_or_assign(place, Kept{txHandle, std::move(values)});
    return place;
}

bool MoResults::release(const YaltOamSpiMoAttribute_3T* place)
{
    const LockT lock(mutex);
    return kept.erase(place) > 0;
}

std::uint64_t MoResults::open(MoIteration iteration)
{
    const LockT lock(mutex);
    iterations.emplace(++lastIterator, std::make_shared<MoIteration>(std::move(iteration)));
    return lastIterator;
}

MoResults::IterationT MoResults::find(std::uint64_t iteratorId)
{
    const LockT lock(mutex);
    const auto found = iterations.find(iteratorId);
    return found != iterations.end() ? found->second : nullptr;
}

void MoResults::finish(unsigned long txHandle)
{
    const LockT lock(mutex);
    eraseIf(kept, [txHandle](const Kept& entry) { return entry.txHandle == txHandle; });
    eraseIf(iterations, [txHandle](const IterationT& entry) { return entry->txHandle == txHandle; });
}

}  // namespace ZorvNode
