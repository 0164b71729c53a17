#include "stores/StateStore.hpp"

#include "ZorvMwSpiLog_1.h"
#include "stores/MemoryListStorage.hpp"
#include "stores/SqliteListStorage.hpp"
#include "stores/StoreFile.hpp"

namespace ZorvNode {

namespace {

using KindT = StoreError::Kind;

/// How to go on after the node did not start.
std::string advice(KindT kind)
{
    switch (kind) {
    case KindT::full:
        return "; make room on the disk and start again";
    case KindT::readOnly:
        return "; let this user write the file and its directory, or name another stateDirectory";
    case KindT::busy:
        return "; end the other process that has it open and start again";
    case KindT::damaged:
        return "; put a good copy in its place, or start with --accept-empty: the file is set aside and the node "
               "begins "
               "with empty lists";
    case KindT::newer:
        return "; start that later release, or name another stateDirectory";
    case KindT::foreign:
        return "; move it away, or name another stateDirectory";
    case KindT::other:
        break;
    }
    return "; see that its disk works, or name another stateDirectory";
}

}  // namespace

StateStore::StateStore(const StoreSettings& settings, const ListLimits& limits, const LogSinkT& log)
{
    if (settings.kind == StoreKind::memory) {
        lists = std::make_unique<MemoryListStorage>(limits);
        return;
    }
    try {
        openFile(settings, limits, log);
    } catch (const StoreError& e) {
        const StoreError advised(e.kind, e.what() + advice(e.kind));
        log(ZORV_LOG_ERROR, advised.what());
        throw StoreError(advised);
    }
}

void StateStore::openFile(const StoreSettings& settings, const ListLimits& limits, const LogSinkT& log)
{
    const std::string file = settings.directory + "/zorv.db";
    try {
        open(file, settings, limits, log);
    } catch (const StoreError& e) {
        if (e.kind != KindT::damaged || !settings.acceptEmpty) {
            throw;
        }
        life.reset();
        database.reset();
        const std::string aside = setStoreFileAside(file);
        log(ZORV_LOG_WARNING, std::string(e.what()) + "; set aside as " + aside + ", the node begins with empty lists");
        open(file, settings, limits, log);
    }
}

void StateStore::open(const std::string& file, const StoreSettings& settings, const ListLimits& limits,
                      const LogSinkT& log)
{
    ensureStoreFile(file, log);
    database = std::make_unique<Database>(file, storeSchema(), DatabaseSettings{settings.durability, {}}, log);
    lists = std::make_unique<SqliteListStorage>(*database, limits);
    life = std::make_unique<LifeRecord>(*database, settings.durability, LifeRecord::thisBoot(), log);
}

}  // namespace ZorvNode
