/// Server-sent events on a response that does not end.
#pragma once

#include <ostream>

#include "api/http/HttpMessage.hpp"
#include "api/http/HttpServices.hpp"

namespace ZorvNode {

class EventWriter final : public EventSink {
public:
    EventWriter(std::ostream& stream, const OpenConnections& openConnections)
        : out(stream),
          connections(openConnections)
    {
        sendNothing();  // the head goes out at once
    }

    bool send(const std::string& name, const std::string& id, const std::string& data) override
    {
        out << "event: " << name << '\n';
        if (!id.empty()) {
            out << "id: " << id << '\n';
        }
        out << "data: " << data << "\n\n" << std::flush;  // JSON has no line feeds
        return isOpen();
    }

    bool sendNothing() override
    {
        out << ":\n\n" << std::flush;
        return isOpen();
    }

    bool isOpen() const override { return static_cast<bool>(out) && !connections.areEnding(); }

private:
    std::ostream& out;
    const OpenConnections& connections;
};

}  // namespace ZorvNode
