#include "services/trace/TraceService.hpp"

#include <unistd.h>

#include <utility>

#include "LocalTime.hpp"
#include "files/LineText.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

std::string baseName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

TraceService::TraceService(const std::string& filePath, const Rotation& rotation,
                           std::map<std::string, std::int32_t> levels)
    : configured(std::move(levels)),
      file(filePath, rotation)
{
}

ZorvReturnT TraceService::getLevel(const std::string& group, const std::int32_t** level)
{
    const LevelCell* cell = find(group);
    if (cell == nullptr) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    *level = cell->place();
    return ZORV_RETURN_OK;
}

ZorvReturnT TraceService::setLevel(const std::string& group, std::int32_t level)
{
    LevelCell* cell = find(group);
    if (cell == nullptr) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    cell->set(level);
    return ZORV_RETURN_OK;
}

std::map<std::string, std::int32_t> TraceService::getLevels()
{
    std::map<std::string, std::int32_t> levels = configured;
    const std::lock_guard<std::mutex> lock(mutex);
    for (const auto& [group, cell] : groups) {
        levels[group] = cell.get();
    }
    return levels;
}

ZorvReturnT TraceService::write(const std::string& group, std::int32_t level, const TraceLocation& location,
                                const std::string& text)
{
    const LevelCell* cell = find(group);
    if (cell == nullptr) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    if (level > cell->get()) {
        return ZORV_RETURN_OK;
    }
    const std::string line = Zorv::localTimeText() + " " + std::to_string(gettid()) + " " + group + " " +
                             std::to_string(level) + " " + baseName(location.file) + ":" +
                             std::to_string(location.line) + " " + location.function + " " + text;
    return file.write(toLineText(line)) ? ZORV_RETURN_OK : ZORV_RETURN_FAILED;
}

LevelCell* TraceService::find(const std::string& group)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto known = groups.find(group);
    if (known != groups.end()) {
        return &known->second;
    }
    if (groups.size() >= groupBound) {
        return nullptr;
    }
    const auto level = configured.find(group);
    return &groups.try_emplace(group, level != configured.end() ? level->second : 0).first->second;
}

}  // namespace ZorvNode
