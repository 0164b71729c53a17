#include "services/log/RotatingFile.hpp"

#include <Poco/Exception.h>
#include <Poco/Message.h>

#include <iostream>
#include <utility>

namespace ZorvNode {

RotatingFile::RotatingFile(const std::string& filePath, const Rotation& rotation)
    : path(filePath),
      channel(new Poco::FileChannel(filePath))
{
    channel->setProperty(Poco::FileChannel::PROP_ROTATION, std::to_string(rotation.fileSize));
    channel->setProperty(Poco::FileChannel::PROP_ARCHIVE, "number");
    channel->setProperty(Poco::FileChannel::PROP_PURGECOUNT, std::to_string(rotation.keptFiles));
    channel->setProperty(Poco::FileChannel::PROP_FLUSH, "true");
}

bool RotatingFile::write(const std::string& text)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto failure = append(text);
    if (!failure) {
        failing = false;
        return true;
    }
    ++numberOfFailures;
    latestLost = text;
    if (!std::exchange(failing, true)) {
        std::cerr << "zorvd: cannot write " << path << ": " << *failure << std::endl;
    }
    return false;
}

bool RotatingFile::tryAgain()
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (failing && !append(latestLost)) {
        failing = false;
        --numberOfFailures;
    }
    return !failing;
}

std::optional<std::string> RotatingFile::append(const std::string& text)
{
    std::string failure;
    try {
        channel->log(Poco::Message("", text, Poco::Message::PRIO_INFORMATION));
        return std::nullopt;
    } catch (const Poco::Exception& e) {
        failure = e.displayText();
    } catch (const std::exception& e) {
        failure = e.what();
    }
    try {
        channel->close();  // a stream that has failed once would fail for ever
    } catch (const std::exception&) {
        // what could not be flushed is lost with it
    }
    return failure;
}

}  // namespace ZorvNode
