/// A text file that is put aside when it has grown to its size, with a number of older ones kept (".0" is the newest).
///
/// Its mode is 0640 when the process has the umask 027.
///
/// Threads:   any.
/// Failure:   a text that cannot be written is lost and counted; the first of a row of failures is told on standard error.
///            Each further write tries to open the file again.
#pragma once

#include <Poco/AutoPtr.h>
#include <Poco/FileChannel.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>

namespace ZorvNode {

struct Rotation {
    std::uint64_t fileSize = 1000000;
    std::uint32_t keptFiles = 5;
};

class RotatingFile {
public:
    RotatingFile(const std::string& filePath, const Rotation& rotation);

    RotatingFile(const RotatingFile&) = delete;
    RotatingFile& operator=(const RotatingFile&) = delete;

    /// Appends the text and a newline, and hands it to the operating system. False when it was lost.
    bool write(const std::string& text);

    std::uint64_t getNumberOfFailures() const { return numberOfFailures; }

    /// Whether the latest text was lost.
    bool isFailing() const { return failing; }

private:
    void fail(const std::string& reason);

    const std::string path;
    std::mutex mutex;
    Poco::AutoPtr<Poco::FileChannel> channel;  // guarded by mutex
    std::atomic<bool> failing{false};
    std::atomic<std::uint64_t> numberOfFailures{0};
};

}  // namespace ZorvNode
