#include "stores/Database.hpp"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "stores/Statement.hpp"
#include "stores/Transaction.hpp"

namespace ZorvNode {

namespace {

using KindT = StoreError::Kind;

KindT kindOf(int code)
{
    switch (code & 0xff) {  // the primary code
    case SQLITE_FULL:
        return KindT::full;
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return KindT::readOnly;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return KindT::busy;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return KindT::damaged;
    default:
        return KindT::other;
    }
}

/// What is committed while it lives is no reason for the next checkpoint.
class Preparing {
public:
    explicit Preparing(bool& itsFlag) : flag(itsFlag) { flag = true; }
    ~Preparing() { flag = false; }

    Preparing(const Preparing&) = delete;
    Preparing& operator=(const Preparing&) = delete;

private:
    bool& flag;
};

std::string oneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

std::uint64_t numberOf(Database& database, const std::string& sql)
{
    std::uint64_t number = 0;
    Statement(database, sql).each([&](const Row& row) { number = row.number(0); });
    return number;
}

}  // namespace

void Database::Closer::operator()(sqlite3* opened) const
{
    sqlite3_close(opened);
}

Database::Database(const std::string& databaseFile, const Schema& schema, const DatabaseSettings& settings,
                   const LogSinkT& logSink)
    : file(databaseFile),
      writes(logSink, "writing the store", settings.calm),
      checkpointReport(logSink, "moving the log into " + databaseFile, settings.calm)
{
    open();
    adopt(schema);
    execute(settings.durability == Durability::power ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = NORMAL");
    sqlite3_db_config(handle.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    checkpointer = std::make_unique<Checkpointer>(
        settings.checkpoints, [this] { return tryCheckpoint(); }, [this] { syncLog(); });
    // Takes the place of the checkpoint that SQLite itself would make inside a commit.
    sqlite3_wal_hook(
        handle.get(),
        [](void* to, sqlite3*, const char*, int pages) {
            const auto& database = *static_cast<Database*>(to);
            if (!database.isPreparing) {
                database.checkpointer->committed(pages);
            }
            return SQLITE_OK;
        },
        this);
}

Database::~Database() = default;

void Database::open()
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    handle.reset(opened);
    if (code != SQLITE_OK) {
        throw failure(code);
    }
    sqlite3_extended_result_codes(handle.get(), 1);
    sqlite3_db_config(handle.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    execute("PRAGMA locking_mode = EXCLUSIVE");
    frame = std::make_unique<Frame>(*this);
}

/// Makes sure that the file is ours, whole, and of the latest version, before anything is written to it.
void Database::adopt(const Schema& schema)
{
    const auto latest = schema.steps.size();
    const bool isNew = numberOf(*this, "PRAGMA page_count") == 0;
    const auto application = static_cast<std::int32_t>(numberOf(*this, "PRAGMA application_id"));
    const auto version = numberOf(*this, "PRAGMA user_version");
    if (!isNew && application != schema.applicationId) {
        throw StoreError(KindT::foreign, file + ": is a database of another program");
    }
    if (version > latest) {
        throw StoreError(KindT::newer, file + ": has version " + std::to_string(version) + ", this release knows " +
                                           std::to_string(latest));
    }
    check();
    execute("PRAGMA journal_mode = WAL");
    if (version < latest) {
        Transaction upgrade(*this);
        std::for_each(schema.steps.begin() + static_cast<std::ptrdiff_t>(version), schema.steps.end(),
                      [this](const char* step) { execute(step); });
        execute("PRAGMA application_id = " + std::to_string(schema.applicationId));
        execute("PRAGMA user_version = " + std::to_string(latest));
        upgrade.commit();
    }
}

void Database::check()
{
    std::string verdict;
    Statement(*this, "PRAGMA quick_check(1)").each([&](const Row& row) { verdict = row.text(0); });
    if (verdict != "ok") {
        throw StoreError(KindT::damaged, file + ": is damaged: " + oneLine(verdict));
    }
}

void Database::execute(const std::string& sql)
{
    const std::lock_guard<Database> lock(*this);
    const int code = sqlite3_exec(handle.get(), sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        throw failure(code);
    }
}

void Database::checkpoint()
{
    const std::lock_guard<Database> lock(*this);
    if (preparation) {
        const Preparing now(isPreparing);
        preparation();
    }
    const int code = sqlite3_wal_checkpoint_v2(handle.get(), "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    if (code != SQLITE_OK) {
        throw failure(code);
    }
}

/// Most of a checkpoint's time goes into this sync. Made ahead, while nobody has to wait for the database, it leaves little
/// for the checkpoint's own, which also tells what goes wrong.
void Database::syncLog() const
{
    const int log = ::open((file + "-wal").c_str(), O_RDONLY | O_CLOEXEC);
    if (log >= 0) {
        static_cast<void>(fdatasync(log));
        close(log);
    }
}

void Database::whenFailing(const std::function<void()>& call)
{
    writes.whenFailing(call);
    checkpointReport.whenFailing(call);
}

void Database::beforeCheckpoint(std::function<void()> call)
{
    const std::lock_guard<Database> lock(*this);
    preparation = std::move(call);
}

bool Database::tryCheckpoint()
{
    try {
        checkpoint();
        checkpointReport.worked();
        return true;
    } catch (const StoreError& e) {
        checkpointReport.failed(e.what());
        return false;
    }
}

StoreError Database::failure(int code) const
{
    std::string text = file + ": " + oneLine(handle ? sqlite3_errmsg(handle.get()) : sqlite3_errstr(code));
    const int systemCode = handle ? sqlite3_system_errno(handle.get()) : 0;
    const int primary = code & 0xff;
    if (systemCode != 0 && (primary == SQLITE_IOERR || primary == SQLITE_CANTOPEN)) {
        text += ": " + std::generic_category().message(systemCode);
    }
    return {kindOf(code), text};
}

}  // namespace ZorvNode
