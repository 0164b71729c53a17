/// What an alarm costs on the whole path, beside few active alarms or many.
#include <algorithm>
#include <cstdio>
#include <map>
#include <thread>

#include "Load.hpp"
#include "ManyTypes.hpp"
#include "Scenarios.hpp"

namespace ZorvBench {

namespace {

constexpr std::uint64_t rounds = 7;
constexpr std::uint64_t batch = 1000;
constexpr std::uint64_t patterns = 100;
constexpr std::uint64_t alarmsOfPattern = 10;
constexpr std::uint64_t stride = 7919;                   // a prime, so that it comes to every number
constexpr std::chrono::milliseconds untilRemoved(1200);  // what is cleared leaves the list in the next round

/// Active alarms that are touched in an order without pattern, a hundred of each type.
class FlatRun {
public:
    FlatRun(Load& drivenLoad, std::uint64_t numberActive) : load(drivenLoad), active(numberActive), fresh(numberActive)
    {
        for (std::uint64_t i = 0; i < active; ++i) {
            load.prepare(raiseOf(i));
        }
        load.send(active);
    }

    void perform()
    {
        const std::uint64_t first = fresh;
        const std::uint64_t touched = last;
        note("raise", prepare([&](std::uint64_t) { return raiseOf(fresh++); }), batch);
        // Nothing is reported of a repeated alarm, but of a new one behind it.
        prepare([&](std::uint64_t) { return raiseOf(next()); });
        load.prepare(raiseOf(fresh++));
        note("repeat", batch + 1, 1);
        last = touched;
        note("update", prepare([&](std::uint64_t) { return updateOf(next()); }), batch);
        last = touched;
        load.sendAtOnce(prepare([&](std::uint64_t) { return raiseOf(next()); }), batch);
        note("clear", prepare([&](std::uint64_t i) { return clearOf(first + i); }), batch);
        clearByPattern();
        std::this_thread::sleep_for(untilRemoved);
    }

    void sayMedians()
    {
        for (auto& [name, costs] : costsOf) {
            std::nth_element(costs.begin(), costs.begin() + rounds / 2, costs.end());
            say(name, costs[rounds / 2], "us");
        }
    }

private:
    static Sent raiseOf(std::uint64_t number)
    {
        Sent sent;
        sent.number = number;
        sent.minorType = typeOfMany(number);
        return sent;
    }

    static Sent updateOf(std::uint64_t number)
    {
        Sent sent = raiseOf(number);
        sent.text = "no light received for more than one minute";
        return sent;
    }

    static Sent clearOf(std::uint64_t number)
    {
        Sent sent = raiseOf(number);
        sent.severity = YALT_FM_SEVERITY_CLEARED;
        return sent;
    }

    static Sent clearOfTen(std::uint64_t ten)
    {
        char pattern[32];
        std::snprintf(pattern, sizeof(pattern), "Port=%05u.$", static_cast<unsigned>(ten));
        Sent sent = clearOf(ten * alarmsOfPattern);
        sent.dn = pattern;
        return sent;
    }

    /// Ten alarms of the type's hundred each. They are raised again afterwards.
    void clearByPattern()
    {
        std::vector<std::uint64_t> tens(patterns);
        for (std::uint64_t& ten : tens) {
            ten = lastTen = (lastTen + stride) % (active / alarmsOfPattern);
            load.prepare(clearOfTen(ten));
        }
        note("clear by pattern", patterns, patterns * alarmsOfPattern);
        for (const std::uint64_t ten : tens) {
            for (std::uint64_t i = 0; i < alarmsOfPattern; ++i) {
                load.prepare(raiseOf(ten * alarmsOfPattern + i));
            }
        }
        load.sendAtOnce(patterns * alarmsOfPattern, patterns * alarmsOfPattern);
    }

    template <class SentT>
    std::uint64_t prepare(SentT sent)
    {
        for (std::uint64_t i = 0; i < batch; ++i) {
            load.prepare(sent(i));
        }
        return batch;
    }

    void note(const std::string& name, std::uint64_t number, std::uint64_t reports)
    {
        costsOf[name].push_back(1e6 * load.sendAtOnce(number, reports) / static_cast<double>(number));
    }

    std::uint64_t next()
    {
        last = (last + stride) % active;
        return last;
    }

    Load& load;
    const std::uint64_t active;
    std::uint64_t fresh;  // the next that was never raised
    std::uint64_t last = 0;
    std::uint64_t lastTen = 0;
    std::map<std::string, std::vector<double>> costsOf;  // us, by what was done
};

}  // namespace

void measureFlat(const Choice& choice)
{
    LoadedNode node(choice.node);
    Load load(node);
    node.start();
    FlatRun run(load, choice.active);
    for (std::uint64_t i = 0; i < rounds; ++i) {
        run.perform();
    }
    run.sayMedians();
    node.stop();
}

}  // namespace ZorvBench
