#include "services/log/RotatingFile.hpp"

#include <Poco/Exception.h>
#include <Poco/Message.h>

#include <iostream>

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
    try {
        channel->log(Poco::Message("", text, Poco::Message::PRIO_INFORMATION));
        failing = false;
        return true;
    } catch (const Poco::Exception& e) {
        fail(e.displayText());
    } catch (const std::exception& e) {
        fail(e.what());
    }
    return false;
}

void RotatingFile::fail(const std::string& reason)
{
    ++numberOfFailures;
    if (!failing.exchange(true)) {
        std::cerr << "zorvd: cannot write " << path << ": " << reason << std::endl;
    }
    try {
        channel->close();  // a stream that has failed once would fail for ever
    } catch (const std::exception&) {
        // what could not be flushed is lost with it
    }
}

}  // namespace ZorvNode
