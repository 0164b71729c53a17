#include "stores/LifeRecord.hpp"

#include <Poco/DateTimeFormat.h>
#include <Poco/DateTimeFormatter.h>
#include <Poco/Timestamp.h>

#include <fstream>

#include "ZorvMwSpiLog_1.h"

namespace ZorvNode {

namespace {

std::uint64_t now()
{
    return static_cast<std::uint64_t>(Poco::Timestamp().epochTime());
}

std::string timeText(std::uint64_t seconds)
{
    return Poco::DateTimeFormatter::format(Poco::Timestamp::fromEpochTime(static_cast<std::time_t>(seconds)),
                                           Poco::DateTimeFormat::ISO8601_FORMAT);
}

}  // namespace

LifeRecord::LifeRecord(Database& lifeDatabase, Durability durability, const std::string& boot, const LogSinkT& logSink)
    : database(lifeDatabase),
      log(logSink),
      synced(database, "UPDATE life SET syncedAt = ?")
{
    judge(durability, boot);
    Statement(database, "INSERT OR REPLACE INTO life (one, boot, syncedAt, ended) VALUES (1, ?, ?, 0)")
        .run(boot, now());
    database.beforeCheckpoint([this] { noteSync(); });
    database.checkpoint();  // an end with the machine is to be known whenever it comes
}

LifeRecord::~LifeRecord()
{
    database.beforeCheckpoint({});
    try {
        database.execute("UPDATE life SET ended = 1");
    } catch (const StoreError& e) {
        database.getWrites().failed(e.what());
    }
}

/// A life that ended with its process has lost nothing.
void LifeRecord::judge(Durability durability, const std::string& boot)
{
    Statement(database, "SELECT syncedAt FROM life WHERE ended = 0 AND boot <> ?")
        .each(
            [&](const Row& row) {
                const std::string what = database.getFile() + ": the machine stopped while the node ran; ";
                if (durability == Durability::process) {
                    log(ZORV_LOG_WARNING, what + "what changed after " + timeText(row.number(0)) + " may be lost");
                } else {
                    log(ZORV_LOG_NOTICE, what + "nothing is lost that was written by then");
                }
            },
            boot);
}

void LifeRecord::noteSync()
{
    synced.run(now());
}

std::string LifeRecord::thisBoot()
{
    std::ifstream file("/proc/sys/kernel/random/boot_id");
    std::string boot;
    std::getline(file, boot);
    return boot;
}

}  // namespace ZorvNode
