#include "FaultyDisk.hpp"

#include <algorithm>
#include <fstream>
#include <utility>

namespace ZorvNode {

/// What SQLite takes for a file; the one beneath stands right behind it.
struct DiskFile {
    sqlite3_file base;
    FaultyDisk* disk;
    char name[64];

    sqlite3_file* beneath() { return reinterpret_cast<sqlite3_file*>(this + 1); }

    static DiskFile& of(sqlite3_file* file) { return *reinterpret_cast<DiskFile*>(file); }

    static int open(sqlite3_vfs* vfs, const char* path, sqlite3_file* file, int flags, int* outFlags);
    static int remove(sqlite3_vfs* vfs, const char* path, int syncFolder);

    static int write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset)
    {
        const std::string bytes(static_cast<const char*>(data), static_cast<std::size_t>(size));
        const int code =
            change(file, {FaultyDisk::Kind::write, of(file).name, static_cast<std::size_t>(offset), bytes});
        return code != SQLITE_OK ? code : real(file)->xWrite(of(file).beneath(), data, size, offset);
    }

    static int truncate(sqlite3_file* file, sqlite3_int64 size)
    {
        const int code = change(file, {FaultyDisk::Kind::truncate, of(file).name, static_cast<std::size_t>(size), ""});
        return code != SQLITE_OK ? code : real(file)->xTruncate(of(file).beneath(), size);
    }

    /// The machine the test runs on keeps its power: nothing waits for the real disk.
    static int sync(sqlite3_file* file, int /*flags*/)
    {
        return change(file, {FaultyDisk::Kind::sync, of(file).name, 0, ""});
    }

    static int change(sqlite3_file* file, FaultyDisk::Step step) { return of(file).disk->begin(std::move(step)); }

    static const sqlite3_io_methods* real(sqlite3_file* file) { return of(file).beneath()->pMethods; }
};

namespace {

std::string nameOf(const char* path)
{
    const std::string text = path;
    return text.substr(text.rfind('/') + 1);
}

/// Version 1: no shared memory, no mapped files. A database with an exclusive lock needs neither.
const sqlite3_io_methods methods = {
    1,
    [](sqlite3_file* file) { return DiskFile::real(file)->xClose(DiskFile::of(file).beneath()); },
    [](sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
        return DiskFile::real(file)->xRead(DiskFile::of(file).beneath(), data, size, offset);
    },
    &DiskFile::write,
    &DiskFile::truncate,
    &DiskFile::sync,
    [](sqlite3_file* file, sqlite3_int64* size) {
        return DiskFile::real(file)->xFileSize(DiskFile::of(file).beneath(), size);
    },
    [](sqlite3_file* file, int level) { return DiskFile::real(file)->xLock(DiskFile::of(file).beneath(), level); },
    [](sqlite3_file* file, int level) { return DiskFile::real(file)->xUnlock(DiskFile::of(file).beneath(), level); },
    [](sqlite3_file* file, int* locked) {
        return DiskFile::real(file)->xCheckReservedLock(DiskFile::of(file).beneath(), locked);
    },
    [](sqlite3_file* file, int operation, void* argument) {
        return DiskFile::real(file)->xFileControl(DiskFile::of(file).beneath(), operation, argument);
    },
    [](sqlite3_file* file) { return DiskFile::real(file)->xSectorSize(DiskFile::of(file).beneath()); },
    [](sqlite3_file* file) { return DiskFile::real(file)->xDeviceCharacteristics(DiskFile::of(file).beneath()); },
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
};

FaultyDisk& diskOf(sqlite3_vfs* vfs)
{
    return *static_cast<FaultyDisk*>(vfs->pAppData);
}

}  // namespace

int DiskFile::open(sqlite3_vfs* vfs, const char* path, sqlite3_file* file, int flags, int* outFlags)
{
    DiskFile& made = of(file);
    made.base.pMethods = nullptr;
    made.disk = &diskOf(vfs);
    const std::string name = path != nullptr ? nameOf(path) : "";
    made.name[name.copy(made.name, sizeof(made.name) - 1)] = '\0';
    const int code = made.disk->beneath->xOpen(made.disk->beneath, path, made.beneath(), flags, outFlags);
    if (code == SQLITE_OK) {
        made.base.pMethods = &methods;
    }
    return code;
}

int DiskFile::remove(sqlite3_vfs* vfs, const char* path, int syncFolder)
{
    FaultyDisk& disk = diskOf(vfs);
    const int code = disk.begin({FaultyDisk::Kind::remove, nameOf(path), 0, ""});
    return code != SQLITE_OK ? code : disk.beneath->xDelete(disk.beneath, path, syncFolder);
}

FaultyDisk::FaultyDisk() : beneath(sqlite3_vfs_find(nullptr)), vfs(*beneath)
{
    vfs.szOsFile += static_cast<int>(sizeof(DiskFile));
    vfs.pNext = nullptr;
    vfs.zName = "faulty disk";
    vfs.pAppData = this;
    vfs.xOpen = &DiskFile::open;
    vfs.xDelete = &DiskFile::remove;
    sqlite3_vfs_register(&vfs, 1);
}

FaultyDisk::~FaultyDisk()
{
    release();
}

void FaultyDisk::release()
{
    sqlite3_vfs_unregister(&vfs);
    sqlite3_vfs_register(beneath, 1);
}

void FaultyDisk::failWith(int code)
{
    failAfter(0, code);
}

void FaultyDisk::failAfter(std::size_t changes, int code)
{
    const std::lock_guard<std::mutex> lock(mutex);
    changesLeft = changes;
    failure = code;
}

void FaultyDisk::block(std::shared_future<void> release)
{
    const std::lock_guard<std::mutex> lock(mutex);
    gate = std::move(release);
}

void FaultyDisk::awaitBlocked()
{
    blocked.get_future().wait();
}

int FaultyDisk::begin(Step step)
{
    std::unique_lock<std::mutex> lock(mutex);
    if (failure != SQLITE_OK && (changesLeft == 0 || changesLeft-- == 0)) {
        return failure;
    }
    steps.push_back(std::move(step));
    const std::shared_future<void> closed = std::exchange(gate, {});
    lock.unlock();
    if (closed.valid()) {
        blocked.set_value();
        closed.wait();
    }
    return SQLITE_OK;
}

std::size_t FaultyDisk::getNumberOfSteps() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return steps.size();
}

std::size_t FaultyDisk::lastSyncOfLog(std::size_t number) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (std::size_t step = number; step > 0; --step) {
        const std::string& file = steps[step - 1].file;
        const bool isLog = file.size() > 4 && file.compare(file.size() - 4, 4, "-wal") == 0;
        if (isLog && steps[step - 1].kind == Kind::sync) {
            return step;
        }
    }
    return 0;
}

namespace {

constexpr std::size_t sector = 512;

/// A write that was under way when the power went: some of its sectors.
void tear(std::string& content, std::size_t offset, const std::string& data, std::mt19937& dice)
{
    for (std::size_t begin = 0; begin < data.size(); begin += sector) {
        if (dice() % 2 == 0) {
            const std::size_t size = std::min(sector, data.size() - begin);
            content.resize(std::max(content.size(), offset + begin + size));
            content.replace(offset + begin, size, data, begin, size);
        }
    }
}

}  // namespace

void FaultyDisk::cutPower(std::size_t number, const std::map<std::string, std::string>& filesBefore, std::mt19937& dice,
                          const std::string& folder) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    std::map<std::string, std::string> synced = filesBefore;
    std::map<std::string, std::vector<const Step*>> pending;
    const auto apply = [](std::map<std::string, std::string>& files, const Step& step) {
        std::string& content = files[step.file];
        switch (step.kind) {
        case Kind::write:
            content.resize(std::max(content.size(), step.offset + step.data.size()));
            content.replace(step.offset, step.data.size(), step.data);
            break;
        case Kind::truncate:
            content.resize(step.offset);
            break;
        case Kind::remove:
            files.erase(step.file);
            break;
        default:
            break;
        }
    };
    for (std::size_t index = 0; index < number; ++index) {
        const Step& step = steps[index];
        if (step.kind != Kind::sync) {
            pending[step.file].push_back(&step);
            continue;
        }
        synced[step.file];
        for (const Step* const done : pending[step.file]) {
            apply(synced, *done);
        }
        pending[step.file].clear();
    }
    for (auto& [file, changes] : pending) {
        std::shuffle(changes.begin(), changes.end(), dice);
        const auto chance = dice() % 4;  // none, few, most or all of it has reached the disk
        for (const Step* const change : changes) {
            if (dice() % 3 < chance) {
                apply(synced, *change);
            } else if (change->kind == Kind::write && chance > 0) {
                tear(synced[file], change->offset, change->data, dice);
            }
        }
    }
    for (const auto& [file, content] : synced) {
        std::ofstream(folder + "/" + file, std::ios::binary | std::ios::trunc) << content;
    }
}

}  // namespace ZorvNode
