/// What travels through a thread's input pipe.
///
/// Ownership: the pipe's once pushed, the popping thread's once popped.
#pragma once

#include <cstdint>

namespace Zorv {

using MessageTypeT = std::int32_t;

class PipeMessage {
public:
    explicit PipeMessage(MessageTypeT messageType) : type(messageType) {}
    virtual ~PipeMessage() = default;

    PipeMessage(const PipeMessage&) = delete;
    PipeMessage& operator=(const PipeMessage&) = delete;

    MessageTypeT getType() const { return type; }

private:
    const MessageTypeT type;
};

}  // namespace Zorv
