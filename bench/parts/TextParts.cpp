#include <Poco/Base64Encoder.h>
#include <benchmark/benchmark.h>

#include <sstream>

#include "Alarm.hpp"
#include "FmNotifications.hpp"
#include "ManyTypes.hpp"
#include "Parts.hpp"
#include "Serialize.hpp"

namespace ZorvBench {

namespace {

constexpr std::uint64_t timeBetween = 1000000;  // ns

const ZorvFm::Alarm& typicalAlarm()
{
    static const ZorvFm::FmConfig config;
    static const ZorvFm::Alarm alarm = [] {
        ZorvFm::AlarmData data;
        data.dn = "ManagedElement=1,Equipment=1,Slot=1,Port=0000001";
        data.majorType = majorTypeOfMany;
        data.minorType = firstOfManyTypes;
        data.severity = YALT_FM_SEVERITY_MAJOR;
        data.eventTime = 1714543200000000000;
        data.stateful = true;
        data.specificProblem = "Loss of Signal";
        data.additionalText = "no light received for more than ten seconds";
        data.alarmId = 1;
        ZorvFm::Alarm made(config);
        made.init(data);
        return made;
    }();
    return alarm;
}

void serialize(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(typicalAlarm().serialize_v2());
    }
}

void deserialize(benchmark::State& state)
{
    const ZorvFm::FmConfig config;
    const std::string stored = typicalAlarm().serialize_v2();
    for (auto _ : state) {
        ZorvFm::Alarm alarm(config);
        alarm.deserialize_v2(stored);
        benchmark::DoNotOptimize(alarm.alarmId);
    }
}

void formatLogRecord(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(typicalAlarm().toLogString());
    }
}

void formatTime(benchmark::State& state)
{
    std::uint64_t time = typicalAlarm().eventTime;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZorvFm::AlarmData::formatTimeStr(time));
        time += timeBetween;
    }
}

void encode(benchmark::State& state)
{
    const std::string text = typicalAlarm().getAdditionalText();
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZorvFm::Serialize::toBase64(text));
    }
}

void encodeByLibrary(benchmark::State& state)
{
    const std::string text = typicalAlarm().getAdditionalText();
    for (auto _ : state) {
        std::ostringstream encoded;
        Poco::Base64Encoder encoder(encoded);
        encoder << text;
        encoder.close();
        benchmark::DoNotOptimize(encoded.str());
    }
}

/// Made and released.
void makeNotification(benchmark::State& state)
{
    for (auto _ : state) {
        auto* const notification = new ZorvFm::AlarmNotification(typicalAlarm());
        benchmark::DoNotOptimize(notification);
        notification->releaseRef();
    }
}

}  // namespace

void registerTextParts()
{
    benchmark::RegisterBenchmark("serialize", &serialize);
    benchmark::RegisterBenchmark("deserialize", &deserialize);
    benchmark::RegisterBenchmark("log record", &formatLogRecord);
    benchmark::RegisterBenchmark("time", &formatTime);
    benchmark::RegisterBenchmark("base64", &encode);
    benchmark::RegisterBenchmark("base64 by library", &encodeByLibrary);
    benchmark::RegisterBenchmark("notification", &makeNotification);
}

}  // namespace ZorvBench
