#include "stores/StoreFile.hpp"

#include <Poco/DateTimeFormatter.h>
#include <Poco/Path.h>
#include <Poco/Timestamp.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "stores/Database.hpp"

namespace ZorvNode {

namespace {

using KindT = StoreError::Kind;

constexpr mode_t ownerOnly = 0600;
const char* const logSuffix = "-wal";

StoreError systemFailure(const std::string& file, const std::string& what)
{
    const int code = errno;
    const bool isFull = code == ENOSPC || code == EDQUOT;
    const bool isReadOnly = code == EACCES || code == EPERM || code == EROFS;
    return {isFull       ? KindT::full
            : isReadOnly ? KindT::readOnly
                         : KindT::other,
            file + ": " + what + ": " + std::generic_category().message(code)};
}

bool exists(const std::string& file)
{
    return std::filesystem::exists(std::filesystem::symlink_status(file));
}

/// A renamed file has its new name after a loss of power too.
void syncDirectoryOf(const std::string& file)
{
    const std::string directory = Poco::Path(file).parent().toString();
    const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool isSynced = descriptor >= 0 && fsync(descriptor) == 0;
    const StoreError error = systemFailure(directory, "cannot be synced");
    if (descriptor >= 0) {
        close(descriptor);
    }
    if (!isSynced) {
        throw StoreError(error);
    }
}

void makeEmpty(const std::string& file)
{
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, ownerOnly);
    if (descriptor < 0) {
        throw systemFailure(file, "cannot be made");
    }
    fchmod(descriptor, ownerOnly);  // whatever the umask
    close(descriptor);
}

void rename(const std::string& from, const std::string& to)
{
    if (std::rename(from.c_str(), to.c_str()) != 0) {
        throw systemFailure(from, "cannot be renamed");
    }
}

/// Under another name until it is complete, so that a file with the right name always is.
void make(const std::string& file, const LogSinkT& log)
{
    const std::string fresh = file + ".new";
    for (const char* const suffix : {"", logSuffix, "-journal"}) {
        unlink((fresh + suffix).c_str());  // of a node that was killed here
    }
    makeEmpty(fresh);
    Database(fresh, storeSchema(), {Durability::power, {}}, log);  // NOLINT(bugprone-unused-raii): made and closed
    rename(fresh, file);
    syncDirectoryOf(file);
}

void checkWritable(const std::string& file)
{
    const std::string directory = Poco::Path(file).parent().toString();
    if (faccessat(AT_FDCWD, directory.c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
        throw systemFailure(file, "its directory cannot be written");
    }
    if (exists(file) && faccessat(AT_FDCWD, file.c_str(), R_OK | W_OK, AT_EACCESS) != 0) {
        throw systemFailure(file, "cannot be written");
    }
}

}  // namespace

void ensureStoreFile(const std::string& file, const LogSinkT& log)
{
    checkWritable(file);
    if (!exists(file)) {
        if (exists(file + logSuffix)) {
            throw StoreError(KindT::damaged, file + ": is missing, its log is there");
        }
        make(file, log);
        return;
    }
    struct stat status {};
    if (stat(file.c_str(), &status) == 0 && status.st_size == 0) {
        throw StoreError(KindT::damaged, file + ": is empty");
    }
}

std::string setStoreFileAside(const std::string& file)
{
    const std::string first = file + ".corrupt-" + Poco::DateTimeFormatter::format(Poco::Timestamp(), "%Y%m%dT%H%M%SZ");
    std::string aside = first;
    for (int number = 2; exists(aside) || exists(aside + logSuffix); ++number) {
        aside = first + "-" + std::to_string(number);
    }
    for (const char* const suffix : {logSuffix, ""}) {  // the log first: it would be dropped beside a new file
        if (exists(file + suffix)) {
            rename(file + suffix, aside + suffix);
        }
    }
    syncDirectoryOf(file);
    return aside;
}

}  // namespace ZorvNode
