/// A component that implements class "Alarm": the contract's own provider of objects "Alarm=1" and "Alarm=2" in "Node=1".
///
/// Its calls write the journal: "join", "prepare", "existsMo Node=1,Alarm=1", "getMoAttribute Node=1,Alarm=1 text",
/// "release", "setMoAttribute Node=1,Alarm=1 text", "createMo Node=1 Alarm=3", "action Node=1,Alarm=1 acknowledge" and so on.
///
/// Threads: one object at a time; called on the test's thread.
#pragma once

#include <functional>
#include <string>

#include "EventJournal.hpp"
#include "YaltOamSpiManagedObject_3.h"
#include "YaltOamSpiTransaction_1.h"
#include "ZorvMgmtSpiComponent_1.h"

namespace ZorvTest {

class AlarmComponent {
public:
    AlarmComponent(EventJournal& itsJournal, const YaltOamSpiTransaction_1T* itsTransactions);
    ~AlarmComponent();

    AlarmComponent(const AlarmComponent&) = delete;
    AlarmComponent& operator=(const AlarmComponent&) = delete;

    static const ZorvMgmtSpiComponent_1T* descriptor();

    /// What a call answers and does, by its operation.
    std::function<ZorvReturnT(const std::string& operation)> reaction = [](const std::string&) { return 0; };

private:
    struct Objects;
    struct Resource;

    ZorvReturnT called(const std::string& operation, const std::string& arguments = "");

    EventJournal& journal;
    const YaltOamSpiTransaction_1T* const transactions;
    int given = 0;  // names given by the iteration

    static AlarmComponent* instance;
};

}  // namespace ZorvTest
