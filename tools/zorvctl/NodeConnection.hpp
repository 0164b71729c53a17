/// Requests to a node over its Unix-domain socket, each on a connection of its own, and the streams it sends.
///
/// Threads: one at a time; an interruption from any ends a request.
/// Failure: NoNode when nobody answers; Failure with the node's reason, and the field, when it refuses; Interrupted.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "EventStream.hpp"
#include "Interruption.hpp"
#include "Target.hpp"
#include "json/Json.hpp"

namespace ZorvCtl {

struct Answer {
    int status = 0;
    ZorvInput::JsonDocumentT body;
};

class NodeConnection {
public:
    NodeConnection(std::string path, Interruption& theInterruption);

    ZorvInput::JsonDocumentT get(const Target& target);

    /// @param body JSON; empty for none.
    ZorvInput::JsonDocumentT post(const Target& target, const std::string& body,
                                  std::chrono::seconds timeout = usualTimeout);
    ZorvInput::JsonDocumentT put(const Target& target, const std::string& body);

    /// The answer whatever its status, as long as it is JSON.
    Answer exchange(const std::string& method, const Target& target, const std::string& body,
                    std::chrono::seconds timeout = usualTimeout);

    /// @param lastEventId where the stream goes on; empty for none.
    std::unique_ptr<EventStream> follow(const Target& target, const std::string& lastEventId);

    Interruption& getInterruption() const { return interruption; }

    static constexpr std::chrono::seconds usualTimeout{60};

private:
    Poco::Net::StreamSocket connect(std::chrono::seconds timeout) const;
    ZorvInput::JsonDocumentT goodBody(Answer answer) const;

    const std::string socketPath;
    Interruption& interruption;
};

/// `FIELD: reason` from an error answer.
std::string reasonOf(const ZorvInput::JsonT& error);

/// Throws Failure with the node's reason when the status says that it has refused.
void expectGood(const Answer& answer);

}  // namespace ZorvCtl
