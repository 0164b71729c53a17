/// How a server takes alarms and lists them: what is sent to it, and what is read in its answers.
///
/// The same alarm for each: resource, type, severity, text and time.
///
/// Threads: any; holds nothing that changes.
#pragma once

#include <memory>
#include <string>

namespace ZorvBench {

class AlarmServer {
public:
    virtual ~AlarmServer() = default;

    /// Whole requests that raise one alarm, or the alarms first to first + count - 1.
    virtual std::string raiseOne(int number) const = 0;
    virtual std::string raiseMany(int first, int count) const = 0;

    /// The request for the first page of the active alarms.
    virtual std::string list() const = 0;

    /// The request for the next page; empty when there is none.
    virtual std::string listAfter(const std::string& page) const = 0;

    virtual int alarmsOn(const std::string& page) const = 0;

    /// The request for the number of active alarms; empty for a server whose alarms are active when it has acknowledged them.
    virtual std::string countActive() const = 0;
    virtual int activeIn(const std::string& answer) const = 0;
};

/// @param name "node" or "alertmanager".
std::unique_ptr<AlarmServer> makeServer(const std::string& name);

}  // namespace ZorvBench
