#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>

#include "Parts.hpp"

namespace ZorvBench {

namespace {

constexpr benchmark::IterationCount batch = 100;  // between two pauses
constexpr benchmark::IterationCount alarmsOfPattern = 10;

/// What a part does is looked at outside the measured time.
void expect(std::uint64_t expected, std::uint64_t number)
{
    if (number != expected) {
        throw std::runtime_error(std::to_string(number) + " alarms instead of " + std::to_string(expected));
    }
}

using PartT = void (*)(benchmark::State& state, ActiveAlarms& alarms);

std::vector<std::uint64_t> nextOf(ActiveAlarms& alarms)
{
    std::vector<std::uint64_t> numbers(batch);
    for (std::uint64_t& number : numbers) {
        number = alarms.next();
    }
    return numbers;
}

/// Of alarms that are not active, cleared meanwhile.
void raise(benchmark::State& state, ActiveAlarms& alarms)
{
    const std::uint64_t beyond = alarms.size();
    std::vector<std::uint64_t> numbers = nextOf(alarms);
    while (state.KeepRunningBatch(batch)) {
        for (const std::uint64_t number : numbers) {
            alarms.raise(beyond + number);
        }
        state.PauseTiming();
        expect(beyond + numbers.size(), alarms.countActive());
        for (const std::uint64_t number : numbers) {
            alarms.clear(beyond + number);
        }
        alarms.tick();
        numbers = nextOf(alarms);
        state.ResumeTiming();
    }
}

/// With the contents that the alarm has.
void repeat(benchmark::State& state, ActiveAlarms& alarms)
{
    const std::uint64_t before = alarms.getNumberSent();
    for (auto _ : state) {
        alarms.raise(alarms.next());
    }
    expect(before, alarms.getNumberSent());
}

/// With another text.
void update(benchmark::State& state, ActiveAlarms& alarms)
{
    const std::uint64_t before = alarms.getNumberSent();
    for (auto _ : state) {
        alarms.update(alarms.next());
    }
    expect(before + static_cast<std::uint64_t>(state.iterations()), alarms.getNumberSent());
}

/// And the removal from the list in the next round. The alarms are raised again meanwhile.
void clear(benchmark::State& state, ActiveAlarms& alarms)
{
    std::vector<std::uint64_t> numbers = nextOf(alarms);
    while (state.KeepRunningBatch(batch)) {
        for (const std::uint64_t number : numbers) {
            alarms.clear(number);
        }
        alarms.tick();
        state.PauseTiming();
        expect(alarms.size() - numbers.size(), alarms.countActive());
        for (const std::uint64_t number : numbers) {
            alarms.raise(number);
        }
        numbers = nextOf(alarms);
        state.ResumeTiming();
    }
}

/// Ten alarms of a hundred of the type, and their removal.
void clearByPattern(benchmark::State& state, ActiveAlarms& alarms)
{
    std::uint64_t number = alarms.next();
    for (auto _ : state) {
        alarms.clearTen(number);
        alarms.tick();
        state.PauseTiming();
        expect(alarms.size() - alarmsOfPattern, alarms.countActive());
        for (std::uint64_t i = 0; i < alarmsOfPattern; ++i) {
            alarms.raise(number - number % alarmsOfPattern + i);
        }
        number = alarms.next();
        state.ResumeTiming();
    }
}

void lookUp(benchmark::State& state, ActiveAlarms& alarms)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(alarms.lookUp(alarms.next()));
    }
}

void tick(benchmark::State& state, ActiveAlarms& alarms)
{
    for (auto _ : state) {
        alarms.tick();
    }
}

void summary(benchmark::State& state, ActiveAlarms& alarms)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(alarms.countActive());
    }
}

void add(Stage& stage, const char* name, PartT part, std::uint64_t number)
{
    benchmark::RegisterBenchmark(name, [&stage, part, number](benchmark::State& state) {
        part(state, stage.with(number));
    })->Arg(static_cast<std::int64_t>(number));
}

}  // namespace

void registerFlatParts(Stage& stage)
{
    add(stage, "tick", &tick, 10);
    for (const std::uint64_t number : {1000U, 100000U}) {
        add(stage, "tick", &tick, number);
        add(stage, "summary", &summary, number);
        add(stage, "look-up", &lookUp, number);
        add(stage, "raise", &raise, number);
        add(stage, "repeat", &repeat, number);
        add(stage, "update", &update, number);
        add(stage, "clear", &clear, number);
        add(stage, "clear by pattern", &clearByPattern, number);
    }
}

}  // namespace ZorvBench
