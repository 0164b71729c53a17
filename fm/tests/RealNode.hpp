/// Alarm handler, model connector and status in a middleware of fakes, driven as the worker drives them: what a history
/// is played to beside the reference model.
#pragma once

#include <memory>

#include "FmAlarmHandler.hpp"
#include "FmConfig.hpp"
#include "History.hpp"
#include "MOConnector.hpp"
#include "Middleware.hpp"
#include "Status.hpp"

namespace ZorvFm {

class RealNode {
public:
    /// Not started yet.
    /// @param fakes connected, with the FM object planted, the clock on and northbound notifications started.
    RealNode(ZorvFakes::Middleware& fakes, const Reference::History& history);

    /// Leaves nothing of the history in the middleware.
    ~RealNode();

    RealNode(const RealNode&) = delete;
    RealNode& operator=(const RealNode&) = delete;

    void start(bool keepsMemory);
    void notify(const Reference::Notification& notification);
    void passTime(std::uint64_t nanoseconds);
    void tickAll();
    void suppress(int value);
    void saveSummary();
    void setTypes(const std::vector<Reference::AlarmType>& types);
    void failNext(Reference::Operation operation, int code);

    std::vector<std::string> takeJournal() { return middleware.journal.take(); }
    std::vector<std::string> storedItems() const;
    std::vector<std::string> visibleAlarms() const;
    Reference::Summary countSummary();
    Reference::StatusNumbers statusNumbers() const;
    std::string fmObject() const { return middleware.fmModel.summary(); }

private:
    /// What a life of the process holds.
    struct Memory {
        explicit Memory(const FmConfig& config) : handler(config, connector, status) {}

        Status status;
        MOConnector connector;
        FmAlarmHandler handler;
    };

    void deleteList(const std::string& name);

    ZorvFakes::Middleware& middleware;
    FmConfig config;
    std::unique_ptr<Memory> memory;
};

}  // namespace ZorvFm
