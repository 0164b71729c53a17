/// What the tests of the managed objects stand on: an active alarm list in the hands of the test, and the reading side of
/// the middleware.
#pragma once

#include <mutex>
#include <vector>

#include "AlarmSamples.hpp"
#include "FmAlarmMoImpl.hpp"
#include "FmTest.hpp"
#include "NbiAlarmList.hpp"
#include "TimeZone.hpp"
#include "YaltInterfaceBinders.hpp"

namespace ZorvFm {

/// Holds what the test says, and counts how often it is read.
class TestAlarms : public NbiAlarmList {
public:
    void set(const std::vector<AlarmData>& newAlarms)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        alarms = newAlarms;
    }

    int timesRead() const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return reads;
    }

    void getNbiAlarms(std::vector<AlarmData>& result) override
    {
        const std::lock_guard<std::mutex> lock(mutex);
        ++reads;
        result = alarms;
    }

private:
    mutable std::mutex mutex;
    std::vector<AlarmData> alarms;  // guarded by mutex
    int reads = 0;                  // guarded by mutex
};

inline AlarmData alarmWithId(std::uint64_t alarmId, const std::string& text = "")
{
    AlarmData alarm = fullAlarm();
    alarm.alarmId = alarmId;
    alarm.additionalText = text;
    return alarm;
}

class MoImplTest : public FmTest {
protected:
    MoImplTest()
    {
        impl.setTxService(middleware.transactions.participantTable());
        impl.setTxResource(&resource.getInterface());
    }

    /// The attribute as "code text"; "-2" and the like when it cannot be read.
    std::string attribute(const std::string& name, const std::string& dn = "FmAlarm=6", unsigned long txHandle = 1)
    {
        YaltOamSpiMoAttributeResult_3T result{};
        const YaltReturnT code = impl.getMoAttribute(txHandle, dn.c_str(), name.c_str(), &result);
        if (code != ZORV_RETURN_OK) {
            EXPECT_EQ(nullptr, result.attribute);
            return std::to_string(code);
        }
        std::string text = shown(*result.attribute);
        EXPECT_EQ(ZORV_RETURN_OK, result.releaseAttrResultCB(&result));
        return text;
    }

    static std::string shown(const YaltOamSpiMoAttribute_3T& attribute)
    {
        return std::to_string(attribute.type) + " " + ZorvFakes::MoValue::fromC(attribute).toString();
    }

    bool exists(const std::string& dn, unsigned long txHandle = 1)
    {
        bool found = false;
        EXPECT_EQ(ZORV_RETURN_OK, impl.existsMo(txHandle, dn.c_str(), &found));
        return found;
    }

    std::uint64_t newIterator(unsigned long txHandle = 1)
    {
        std::uint64_t iterator = 0;
        EXPECT_EQ(ZORV_RETURN_OK,
                  impl.newMoIterator(txHandle, "ManagedElement=1,SystemFunctions=1,Fm=1", "FmAlarm", &iterator));
        return iterator;
    }

    /// The next name; "-2" and the like when there is none.
    std::string next(std::uint64_t iterator)
    {
        const char* name = nullptr;
        const YaltReturnT code = impl.nextMo(iterator, &name);
        return code == ZORV_RETURN_OK ? name : std::to_string(code);
    }

    /// All names of an iteration.
    std::vector<std::string> rest(std::uint64_t iterator)
    {
        std::vector<std::string> names;
        const char* name = nullptr;
        while (impl.nextMo(iterator, &name) == ZORV_RETURN_OK) {
            names.emplace_back(name);
        }
        return names;
    }

    TestAlarms alarms;
    FmAlarmMoImpl impl;
    const Zorv::TransactionalResource1Binder<FmAlarmMoImpl> resource{impl};

private:
    const TimeZone utc{"UTC0"};
};

}  // namespace ZorvFm
