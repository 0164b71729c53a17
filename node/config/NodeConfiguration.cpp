#include "config/NodeConfiguration.hpp"

#include <Poco/NumberParser.h>
#include <Poco/Path.h>

#include <functional>
#include <set>

#include "YaltMwSpiTrace_1.h"
#include "ZorvMwSpiLog_1.h"
#include "files/XmlChecks.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

std::uint64_t parseNumber(const std::string& what, const std::string& text, std::uint64_t low, std::uint64_t high)
{
    Poco::UInt64 number = 0;
    if (!Poco::NumberParser::tryParseUnsigned64(text, number) || number < low || number > high) {
        throw ValueError(what + ": not a number from " + std::to_string(low) + " to " + std::to_string(high), text);
    }
    return number;
}

/// Reads one configuration; each section is a table of elements and what to do with them.
class Reader {
public:
    explicit Reader(const std::string& path) : file(path), folder(Poco::Path(path).makeAbsolute().makeParent())
    {
        configuration.file = Poco::Path(path).makeAbsolute().toString();
    }

    NodeConfiguration read(const XmlElement& document)
    {
        at(file, document, [&] {
            expectName(document, "ZorvNode");
            readSections(document);
        });
        complete(document);
        return std::move(configuration);
    }

private:
    using ElementReaderT = std::function<void(const XmlElement&)>;
    using SectionT = std::map<std::string, ElementReaderT>;

    void readSections(const XmlElement& document)
    {
        NodeConfiguration& to = configuration;
        readSection(document, "",
                    {{"library", [&](const XmlElement& it) { to.libraries.push_back(path(it)); }},
                     {"model", [&](const XmlElement& it) { to.model = path(it); }},
                     {"runDirectory", [&](const XmlElement& it) { to.runDirectory = path(it); }},
                     {"logDirectory", [&](const XmlElement& it) { to.logDirectory = path(it); }},
                     {"stateDirectory", [&](const XmlElement& it) { to.store.directory = path(it); }},
                     {"log", [&](const XmlElement& it) { readLog(it); }},
                     {"trace", [&](const XmlElement& it) { readTrace(it); }},
                     {"eventRouter", [&](const XmlElement& it) { readEventRouter(it); }},
                     {"replicatedLists", [&](const XmlElement& it) { readReplicatedLists(it); }},
                     {"managedObjects", [&](const XmlElement& it) { readManagedObjects(it); }},
                     {"ZorvFmComponent", [&](const XmlElement& it) { checkComponent(it); }}});
    }

    /// The component reads its parameters itself. It can name a wrong one neither by place nor by value, so that is done
    /// here; what is not among these is the component's own affair.
    void checkComponent(const XmlElement& element) const
    {
        static const std::map<std::string, std::uint64_t> largest = {{"alarmToggleSilentTimeout", UINT64_MAX},
                                                                     {"transientRaiseAlarmFilterTime", UINT64_MAX},
                                                                     {"transientCeaseAlarmFilterTime", UINT64_MAX},
                                                                     {"alarmToggleTriggerCount", UINT32_MAX},
                                                                     {"alarmToggleWindowSize", UINT64_MAX}};
        for (const XmlElement& parameter : element.children) {
            const auto known = largest.find(parameter.name);
            if (known != largest.end() && !parameter.text.empty()) {
                at(file, parameter, [&] {
                    const std::string what = "ZorvFmComponent/" + parameter.name;
                    parseNumber(what, parameter.text, 0, known->second);
                    if (parameter.text != trimmed(parameter.text)) {
                        throw ValueError(what + ": blanks around the number", parameter.text);
                    }
                });
            }
        }
    }

    void readLog(const XmlElement& element)
    {
        SectionT section = rotation("log/", configuration.logRotation);
        section["level"] = choice("log/level: not error, warning, notice or information", configuration.logLevel,
                                  std::map<std::string, std::int32_t>{{"error", ZORV_LOG_ERROR},
                                                                      {"warning", ZORV_LOG_WARNING},
                                                                      {"notice", ZORV_LOG_NOTICE},
                                                                      {"information", ZORV_LOG_INFORMATION}});
        readSection(element, "log/", section);
    }

    void readTrace(const XmlElement& element)
    {
        SectionT section = rotation("trace/", configuration.traceRotation);
        section["group"] = [this](const XmlElement& it) { readGroup(it); };
        readSection(element, "trace/", section);
    }

    void readEventRouter(const XmlElement& element)
    {
        readSection(element, "eventRouter/",
                    {{"queueBound", number("eventRouter/queueBound", configuration.queueBound, 1, 10000000)},
                     {"consumerBound", number("eventRouter/consumerBound", configuration.consumerBound, 1, 100000)},
                     {"retainedNotifications",
                      number("eventRouter/retainedNotifications", configuration.retainedNotifications, 0, 1000000)}});
    }

    void readReplicatedLists(const XmlElement& element)
    {
        readSection(
            element, "replicatedLists/",
            {{"listBound", number("replicatedLists/listBound", configuration.listBound, 1, 100000)},
             {"itemBound", number("replicatedLists/itemBound", configuration.itemBound, 1, 10000000)},
             {"store", choice("replicatedLists/store: not sqlite or memory", configuration.store.kind,
                              {{"sqlite", StoreKind::sqlite}, {"memory", StoreKind::memory}})},
             {"durability", choice("replicatedLists/durability: not process or power", configuration.store.durability,
                                   {{"process", Durability::process}, {"power", Durability::power}})}});
    }

    void readManagedObjects(const XmlElement& element)
    {
        readSection(element, "managedObjects/",
                    {{"transactionBound",
                      number("managedObjects/transactionBound", configuration.transactionBound, 1, 100000)}});
    }

    void readGroup(const XmlElement& element)
    {
        expectAttributes(element, {"name", "level"});
        const std::string& name = requiredAttribute(element, "name");
        const auto traceLevel = parseNumber("trace/group", requiredAttribute(element, "level"), 0, YALT_TRACE_DETAILED);
        if (!configuration.traceLevels.emplace(name, static_cast<std::int32_t>(traceLevel)).second) {
            throw ValueError("trace/group appears twice", name);
        }
    }

    static SectionT rotation(const std::string& section, Rotation& to)
    {
        return {{"fileSize", number(section + "fileSize", to.fileSize, 1000, 1000000000)},
                {"keptFiles", number(section + "keptFiles", to.keptFiles, 1, 100)}};
    }

    template <class NumberT>
    static ElementReaderT number(const std::string& what, NumberT& to, std::uint64_t low, std::uint64_t high)
    {
        return [=, &to](const XmlElement& element) {
            expectAttributes(element, {});
            to = static_cast<NumberT>(parseNumber(what, trimmed(element.text), low, high));
        };
    }

    template <class ValueT>
    static ElementReaderT choice(const std::string& otherwise, ValueT& to, const std::map<std::string, ValueT>& values)
    {
        return [=, &to](const XmlElement& element) {
            const std::string text = trimmed(element.text);
            const auto found = values.find(text);
            if (found == values.end()) {
                throw ValueError(otherwise, text);
            }
            to = found->second;
        };
    }

    std::string path(const XmlElement& element) const
    {
        const std::string text = trimmed(element.text);
        if (text.empty()) {
            throw ValueError(element.name + ": no path", text);
        }
        return Poco::Path(folder).resolve(text).toString();
    }

    void readSection(const XmlElement& section, const std::string& prefix, const SectionT& known) const
    {
        expectAttributes(section, {});
        expectNoText(section);
        std::set<std::string> seen;
        for (const XmlElement& element : section.children) {
            at(file, element, [&] {
                const auto found = known.find(element.name);
                if (found == known.end()) {
                    throw ValueError("unknown element", prefix + element.name);
                }
                const bool repeatable = element.name == "library" || element.name == "group";
                if (!seen.insert(element.name).second && !repeatable) {
                    throw ValueError("element appears twice", prefix + element.name);
                }
                found->second(element);
            });
        }
    }

    void complete(const XmlElement& document)
    {
        at(file, document, [this] {
            if (configuration.libraries.empty()) {
                throw ValueError("element is missing", "library");
            }
            if (configuration.model.empty()) {
                throw ValueError("element is missing", "model");
            }
        });
        if (configuration.runDirectory.empty()) {
            configuration.runDirectory = Poco::Path(folder).resolve("run").toString();
        }
        if (configuration.logDirectory.empty()) {
            configuration.logDirectory = configuration.runDirectory + "/log";
        }
        if (configuration.store.directory.empty()) {
            configuration.store.directory = configuration.runDirectory + "/state";
        }
    }

    const std::string file;
    const Poco::Path folder;
    NodeConfiguration configuration;
};

}  // namespace

NodeConfiguration readNodeConfiguration(const std::string& path)
{
    return Reader(path).read(readXml(path));
}

}  // namespace ZorvNode
