/// A directory that belongs to one process at a time: a file in it is locked, and holds the process id, while this object
/// lives. The lock ends with the process, however that ends.
///
/// Failure: std::runtime_error, one line.
#pragma once

#include <string>

namespace ZorvNode {

class DirectoryLock {
public:
    DirectoryLock(const std::string& lockedDirectory, const std::string& file);
    ~DirectoryLock();

    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

private:
    int open() const;
    void lock(int opened) const;
    std::string failure(const std::string& what) const;

    const std::string directory;
    const std::string path;
    int descriptor;
};

/// Makes a directory that only its owner may enter, and the ones above it as usual, unless it is there.
void makePrivateDirectory(const std::string& directory);

}  // namespace ZorvNode
