/// A text file that is put aside when it has grown to its size, with a number of older ones kept (".0" is the newest).
///
/// Its mode is 0640 when the process has the umask 027.
///
/// Threads:   any.
/// Failure:   a text that cannot be written is lost and counted, and nothing of it stands in the file; the first of a row of
///            failures is told on standard error. Each further write tries to open the file again. The latest of them can
///            still be written later.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace ZorvNode {

struct Rotation {
    std::uint64_t fileSize = 1000000;
    std::uint32_t keptFiles = 5;
};

class RotatingFile {
public:
    RotatingFile(const std::string& filePath, const Rotation& fileRotation);
    ~RotatingFile();

    RotatingFile(const RotatingFile&) = delete;
    RotatingFile& operator=(const RotatingFile&) = delete;

    /// Appends the text and a newline, and hands it to the operating system. False when it was lost.
    bool write(const std::string& text);

    std::uint64_t getNumberOfFailures() const { return numberOfFailures; }

    /// When the latest text was lost: writes that one. Whether the file can be written.
    bool tryAgain();

private:
    /// Nothing, or why the text was not written.
    std::optional<std::string> append(const std::string& text);
    bool open();
    void close();
    void putAside();
    bool writeLine(const std::string& text);

    const std::string path;
    const Rotation rotation;
    std::mutex mutex;
    int descriptor = -1;     // guarded by mutex; -1: not open
    std::uint64_t size = 0;  // guarded by mutex; bytes in the file
    bool failing = false;    // guarded by mutex
    std::string latestLost;  // guarded by mutex; while it fails
    std::atomic<std::uint64_t> numberOfFailures{0};
};

}  // namespace ZorvNode
