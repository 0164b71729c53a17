#include "services/log/LogTail.hpp"

#include <algorithm>

namespace ZorvNode {

void LogTail::add(const std::string& line)
{
    const std::lock_guard<std::mutex> lock(mutex);
    lines.push_back(line);
    if (lines.size() > keptLines) {
        lines.pop_front();
        ++first;
    }
    changed.notify_all();
}

std::uint64_t LogTail::beginOf(std::uint64_t number) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return first + lines.size() - std::min<std::uint64_t>(number, lines.size());
}

bool LogTail::next(std::uint64_t& position, std::chrono::milliseconds patience, std::string& line) const
{
    std::unique_lock<std::mutex> lock(mutex);
    if (!changed.wait_for(lock, patience, [&] { return position < first + lines.size(); })) {
        return false;
    }
    position = std::max(position, first);
    line = lines[static_cast<std::size_t>(position - first)];
    ++position;
    return true;
}

}  // namespace ZorvNode
