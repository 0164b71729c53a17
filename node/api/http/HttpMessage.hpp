/// A request as handlers see it, and what they answer.
#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <string>

#include "api/http/Caller.hpp"

namespace ZorvNode {

struct HttpRequest {
    std::string method;
    std::string path;                          ///< decoded, without the query
    std::map<std::string, std::string> query;  ///< decoded; of a name that stands twice the last one counts
    std::string lastEventId;                   ///< "": none
    std::string publicationId;                 ///< "": none
    std::string body;
    Caller caller;
};

/// Where a handler writes server-sent events.
class EventSink {
public:
    virtual ~EventSink() = default;

    /// False when the reader is gone or the server stops: nothing more is to be sent. id "": none.
    virtual bool send(const std::string& name, const std::string& id, const std::string& data) = 0;

    /// False when it is known already that nothing more is to be sent.
    virtual bool isOpen() const = 0;

    /// Keeps the connection alive and finds out whether the reader is still there.
    virtual bool sendNothing() = 0;
};

struct HttpResponse {
    int status = 200;
    std::string body;  ///< JSON

    /// Instead of a body: runs on the connection's thread until it returns.
    std::function<void(EventSink&)> stream;
};

/// An answer other than success, as an Error object with one line for people.
class HttpError : public std::runtime_error {
public:
    /// @param fieldName the parameter or field that is to blame; "": none.
    HttpError(int httpStatus, const std::string& reason, std::string fieldName = "")
        : std::runtime_error(reason),
          status(httpStatus),
          field(std::move(fieldName))
    {
    }

    const int status;
    const std::string field;
};

}  // namespace ZorvNode
