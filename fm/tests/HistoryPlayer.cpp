#include "HistoryPlayer.hpp"

#include "FmEventProducer.hpp"
#include "RealNode.hpp"

namespace ZorvFm {
namespace {

using Reference::Happening;
using Reference::History;
using Reference::ReferenceModel;
using Lines = std::vector<std::string>;

void append(Lines& lines, const std::string& what, const Lines& more)
{
    for (const std::string& line : more) {
        lines.push_back(what + line);
    }
}

std::string joined(const std::string& what, std::initializer_list<std::uint64_t> numbers)
{
    std::string line = what;
    for (const std::uint64_t number : numbers) {
        line += " " + std::to_string(number);
    }
    return line;
}

/// Everything that can be seen of a node, with the journal since the last look.
template <class NodeT>
Lines lookAt(NodeT& node)
{
    Lines lines = node.takeJournal();
    append(lines, "stored ", node.storedItems());
    append(lines, "visible ", node.visibleAlarms());
    const Reference::Summary summary = node.countSummary();
    lines.push_back(
        joined("summary", {summary.total, summary.critical, summary.major, summary.minor, summary.warning}));
    const Reference::StatusNumbers status = node.statusNumbers();
    lines.push_back(joined("status", {status.lastStateful, status.lastStateless, status.timeOfStateful,
                                      status.timeOfStateless, status.timeOfCheck}));
    lines.push_back(node.fmObject());
    return lines;
}

std::optional<std::string> difference(ReferenceModel& model, RealNode& node)
{
    const Lines expected = lookAt(model);
    const Lines actual = lookAt(node);
    if (expected == actual) {
        return std::nullopt;
    }
    std::size_t place = 0;
    while (place < expected.size() && place < actual.size() && expected[place] == actual[place]) {
        ++place;
    }
    const auto lineOf = [&](const Lines& lines) { return place < lines.size() ? lines[place] : "(nothing more)"; };
    return "expected: " + lineOf(expected) + "\n  actual: " + lineOf(actual) + "\n";
}

History without(History history, std::size_t step)
{
    history.steps.erase(history.steps.begin() + static_cast<std::ptrdiff_t>(step));
    return history;
}

ReferenceModel modelOf(const History& history, const Reference::Consumers& consumers,
                       const ZorvFakes::VirtualClock& clock)
{
    ReferenceModel model(history.configuration, consumers);
    model.setTime(clock.monotonic(), clock.realTime());
    model.setTypes(history.types);
    for (const Reference::Survivor& survivor : history.survivors) {
        model.plantStored(survivor.asStored());
    }
    return model;
}

}  // namespace

HistoryPlayer::HistoryPlayer(ZorvFakes::Middleware& fakes) : middleware(fakes)
{
    using ZorvFakes::Topic;
    middleware.fmModel.plant();
    middleware.objects.plant("ManagedElement=12", {{"externalId", ZorvFakes::MoValue::none(YALT_MO_ATTRIBUTE_STRING)}});
    middleware.clock.turnOn();
    FmEventProducer::instance().start();
    consumers.alarm3 = middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3);
    consumers.alarm2 = middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2);
    consumers.rebuilt3 = middleware.router.addConsumer(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3);
    consumers.rebuilt2 = middleware.router.addConsumer(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2);
    middleware.journal.showOnly({Topic::Log, Topic::Record, Topic::Router});
    ZorvFakes::FakeLog::setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_NOTICE);
    ZorvFakes::FakeTrace::setLevels(0);
}

HistoryPlayer::~HistoryPlayer()
{
    FmEventProducer::instance().stop();
}

std::optional<std::string> HistoryPlayer::play(const History& history)
{
    middleware.clock.advance(std::chrono::seconds(1));  // the first round of ticks is not to meet the last history's
    RealNode node(middleware, history);
    ReferenceModel model = modelOf(history, consumers, middleware.clock);
    node.start(false);
    model.start(false);
    std::optional<std::string> found = difference(model, node);
    if (found) {
        return "at the start\n" + *found;
    }
    for (std::size_t i = 0; i < history.steps.size(); ++i) {
        std::visit(Happening<RealNode>(node), history.steps[i]);
        std::visit(Happening<ReferenceModel>(model), history.steps[i]);
        found = difference(model, node);
        if (found) {
            return "at step " + std::to_string(i) + ", " + toText(history.steps[i]) + "\n" + *found;
        }
    }
    return std::nullopt;
}

History HistoryPlayer::shrink(History history)
{
    for (std::size_t step = history.steps.size(); step-- > 0;) {
        History shorter = without(history, step);
        if (play(shorter)) {
            history = std::move(shorter);
        }
    }
    return history;
}

}  // namespace ZorvFm
