#include "config/NodeConfiguration.hpp"

#include <algorithm>

#include "YaltMwSpiTrace_1.h"
#include "ZorvMwSpiLog_1.h"
#include "config/ApiConfiguration.hpp"

namespace ZorvNode {

namespace {

/// The component takes a sign in front of a number.
std::string withoutPlus(const std::string& text)
{
    return text.size() > 1 && text[0] == '+' ? text.substr(1) : text;
}

/// Reads one configuration; each section is a table of elements and what to do with them.
class Reader {
public:
    explicit Reader(const std::string& path) : reader(path)
    {
        configuration.file = Poco::Path(path).makeAbsolute().toString();
    }

    NodeConfiguration read(const XmlElement& document)
    {
        at(reader.getFile(), document, [&] {
            expectName(document, "ZorvNode");
            readSections(document);
        });
        complete(document);
        return std::move(configuration);
    }

private:
    using SectionT = SectionReader::SectionT;

    void readSections(const XmlElement& document)
    {
        NodeConfiguration& to = configuration;
        reader.read(document, "",
                    {{"library", [&](const XmlElement& it) { to.libraries.push_back(reader.path(it)); }},
                     {"model", reader.path(to.model)},
                     {"runDirectory", reader.path(to.runDirectory)},
                     {"logDirectory", reader.path(to.logDirectory)},
                     {"stateDirectory", reader.path(to.store.directory)},
                     {"api", [&](const XmlElement& it) { readApi(reader, it, to.api); }},
                     {"log", [&](const XmlElement& it) { readLog(it); }},
                     {"trace", [&](const XmlElement& it) { readTrace(it); }},
                     {"eventRouter", [&](const XmlElement& it) { readEventRouter(it); }},
                     {"replicatedLists", [&](const XmlElement& it) { readReplicatedLists(it); }},
                     {"managedObjects", [&](const XmlElement& it) { readManagedObjects(it); }},
                     {"storageAlarm", [&](const XmlElement& it) { readStorageAlarm(it); }},
                     {"ZorvFmComponent", [&](const XmlElement& it) { checkComponent(it); }}},
                    "library");
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
                at(reader.getFile(), parameter, [&] {
                    const std::string what = "ZorvFmComponent/" + parameter.name;
                    SectionReader::parseNumber(what, withoutPlus(trimmed(parameter.text)), 0, known->second);
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
        section["level"] =
            SectionReader::choice("log/level: not error, warning, notice or information", configuration.logLevel,
                                  std::map<std::string, std::int32_t>{{"error", ZORV_LOG_ERROR},
                                                                      {"warning", ZORV_LOG_WARNING},
                                                                      {"notice", ZORV_LOG_NOTICE},
                                                                      {"information", ZORV_LOG_INFORMATION}});
        reader.read(element, "log/", section);
    }

    void readTrace(const XmlElement& element)
    {
        SectionT section = rotation("trace/", configuration.traceRotation);
        section["group"] = [this](const XmlElement& it) { readGroup(it); };
        reader.read(element, "trace/", section, "group");
    }

    void readEventRouter(const XmlElement& element)
    {
        reader.read(element, "eventRouter/",
                    {{"queueBound", number("eventRouter/queueBound", configuration.queueBound, 1, 10000000)},
                     {"consumerBound", number("eventRouter/consumerBound", configuration.consumerBound, 1, 100000)},
                     {"inboxBound", number("eventRouter/inboxBound", configuration.inboxBound, 1, 1000000)}});
    }

    void readReplicatedLists(const XmlElement& element)
    {
        reader.read(
            element, "replicatedLists/",
            {{"listBound", number("replicatedLists/listBound", configuration.listBound, 1, 100000)},
             {"itemBound", number("replicatedLists/itemBound", configuration.itemBound, 1, 10000000)},
             {"store", SectionReader::choice("replicatedLists/store: not sqlite or memory", configuration.store.kind,
                                             {{"sqlite", StoreKind::sqlite}, {"memory", StoreKind::memory}})},
             {"durability",
              SectionReader::choice("replicatedLists/durability: not process or power", configuration.store.durability,
                                    {{"process", Durability::process}, {"power", Durability::power}})}});
    }

    void readManagedObjects(const XmlElement& element)
    {
        reader.read(element, "managedObjects/",
                    {{"transactionBound",
                      number("managedObjects/transactionBound", configuration.transactionBound, 1, 100000)}});
    }

    void readGroup(const XmlElement& element)
    {
        expectAttributes(element, {"name", "level"});
        const std::string& name = requiredAttribute(element, "name");
        const auto traceLevel =
            SectionReader::parseNumber("trace/group", requiredAttribute(element, "level"), 0, YALT_TRACE_DETAILED);
        if (!configuration.traceLevels.emplace(name, static_cast<std::int32_t>(traceLevel)).second) {
            throw ValueError("trace/group appears twice", name);
        }
    }

    void readStorageAlarm(const XmlElement& element)
    {
        expectAttributes(element, {"dn", "majorType", "minorType"});
        const auto type = [&](const char* name) {
            return static_cast<std::uint32_t>(SectionReader::parseNumber(
                std::string("storageAlarm/") + name, requiredAttribute(element, name), 0, UINT32_MAX));
        };
        configuration.storageAlarm = {requiredAttribute(element, "dn"), type("majorType"), type("minorType")};
    }

    static SectionT rotation(const std::string& section, Rotation& to)
    {
        return {{"fileSize", number(section + "fileSize", to.fileSize, 1000, 1000000000)},
                {"keptFiles", number(section + "keptFiles", to.keptFiles, 1, 100)}};
    }

    template <class NumberT>
    static SectionReader::ElementReaderT number(const std::string& what, NumberT& to, std::uint64_t low,
                                                std::uint64_t high)
    {
        return SectionReader::number(what, to, low, high);
    }

    void complete(const XmlElement& document)
    {
        at(reader.getFile(), document, [this] {
            if (configuration.libraries.empty()) {
                throw ValueError("element is missing", "library");
            }
            if (configuration.model.empty()) {
                throw ValueError("element is missing", "model");
            }
        });
        if (configuration.runDirectory.empty()) {
            configuration.runDirectory = reader.resolve("run");
        }
        if (configuration.logDirectory.empty()) {
            configuration.logDirectory = configuration.runDirectory + "/log";
        }
        if (configuration.store.directory.empty()) {
            configuration.store.directory = configuration.runDirectory + "/state";
        }
        if (configuration.api.socket.empty()) {
            configuration.api.socket = configuration.runDirectory + "/zorvd.sock";
            at(reader.getFile(), document, [this] {
                if (configuration.api.socket.size() > longestSocketPath) {
                    throw ValueError("longer than 107 bytes; name another one as api/socket", configuration.api.socket);
                }
            });
        }
        configuration.api.batchBound = std::min(configuration.api.batchBound, configuration.inboxBound);
    }

    const SectionReader reader;
    NodeConfiguration configuration;
};

}  // namespace

NodeConfiguration readNodeConfiguration(const std::string& path)
{
    return Reader(path).read(readXml(path));
}

}  // namespace ZorvNode
