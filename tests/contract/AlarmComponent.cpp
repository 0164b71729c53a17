#include "AlarmComponent.hpp"

namespace ZorvTest {

namespace {

constexpr std::uint64_t innerIterator = 5;

const YaltOamSpiMoAttributeValue_3T fire = [] {
    YaltOamSpiMoAttributeValue_3T value{};
    value.stringValue = "fire";
    return value;
}();
const YaltOamSpiMoAttribute_3T attribute = {YALT_MO_ATTRIBUTE_STRING, 1, &fire};

}  // namespace

AlarmComponent* AlarmComponent::instance = nullptr;

AlarmComponent::AlarmComponent(EventJournal& itsJournal, const YaltOamSpiTransaction_1T* itsTransactions)
    : journal(itsJournal),
      transactions(itsTransactions)
{
    instance = this;
}

AlarmComponent::~AlarmComponent()
{
    instance = nullptr;
}

ZorvReturnT AlarmComponent::called(const std::string& operation, const std::string& arguments)
{
    journal.write(operation + (arguments.empty() ? "" : " " + arguments));
    return reaction(operation);
}

struct AlarmComponent::Resource {
    static YaltReturnT join(unsigned long tx)
    {
        const ZorvReturnT answer = instance->called("join");
        return answer == 0 ? instance->transactions->registerParticipant(tx, &table) : answer;
    }

    static YaltReturnT prepare(unsigned long) { return instance->called("prepare"); }
    static YaltReturnT commit(unsigned long) { return instance->called("commit"); }
    static YaltReturnT abort(unsigned long) { return instance->called("abort"); }
    static YaltReturnT finish(unsigned long) { return instance->called("finish"); }

    static constexpr YaltOamSpiTransactionalResource_1T table = {&join, &prepare, &commit, &abort, &finish};
};

struct AlarmComponent::Objects {
    static YaltReturnT newMoIterator(unsigned long, const char* parentDn, const char* className, uint64_t* iteratorId)
    {
        instance->given = 0;
        *iteratorId = innerIterator;
        return instance->called("newMoIterator", std::string(parentDn) + " " + className);
    }

    static YaltReturnT nextMo(uint64_t iteratorId, const char** name)
    {
        static const char* const names[] = {"Alarm=1", "Alarm=2"};
        const ZorvReturnT answer = instance->called("nextMo", std::to_string(iteratorId));
        if (answer != 0 || instance->given == 2) {
            return answer != 0 ? answer : ZORV_RETURN_NOT_FOUND;
        }
        *name = names[instance->given++];
        return ZORV_RETURN_OK;
    }

    static YaltReturnT finalizeMoIterator(uint64_t iteratorId)
    {
        return instance->called("finalizeMoIterator", std::to_string(iteratorId));
    }

    static YaltReturnT existsMo(unsigned long, const char* dn, bool* exists)
    {
        *exists = dn == std::string("Node=1,Alarm=1") || dn == std::string("Node=1,Alarm=2");
        return instance->called("existsMo", dn);
    }

    static YaltReturnT countMoChildren(unsigned long, const char* dn, const char* className, uint64_t* count)
    {
        *count = 2;
        return instance->called("countMoChildren", std::string(dn) + " " + className);
    }

    static YaltReturnT releaseOne(YaltOamSpiMoAttributeResult_3T*) { return instance->called("release"); }
    static YaltReturnT releaseAll(YaltOamSpiMoAttributesResult_3T*) { return instance->called("release all"); }

    static YaltReturnT getMoAttribute(unsigned long, const char* dn, const char* name,
                                      YaltOamSpiMoAttributeResult_3T* result)
    {
        *result = {&attribute, &releaseOne};
        return instance->called("getMoAttribute", std::string(dn) + " " + name);
    }

    static YaltReturnT getMoAttributes(unsigned long, const char* dn, const char* const* names,
                                       YaltOamSpiMoAttributesResult_3T* result)
    {
        std::string arguments = dn;
        for (; *names != nullptr; ++names) {
            arguments += std::string(" ") + *names;
        }
        *result = {1, &attribute, &releaseAll};
        return instance->called("getMoAttributes", arguments);
    }

    static YaltReturnT setMoAttribute(unsigned long, const char* dn, const char* name, const YaltOamSpiMoAttribute_3T*)
    {
        return instance->called("setMoAttribute", std::string(dn) + " " + name);
    }

    static YaltReturnT createMo(unsigned long, const char* parentDn, const char* className, const char* keyValue,
                                const YaltOamSpiMoNamedAttribute_3T*, uint32_t numberOfAttributes)
    {
        return instance->called("createMo", std::string(parentDn) + " " + className + "=" + keyValue + " " +
                                                std::to_string(numberOfAttributes));
    }

    static YaltReturnT deleteMo(unsigned long, const char* dn) { return instance->called("deleteMo", dn); }

    static YaltReturnT action(unsigned long, const char* dn, const char* actionName,
                              const YaltOamSpiMoNamedAttribute_3T*, uint32_t numberOfParameters,
                              YaltOamSpiMoAttributeResult_3T* result)
    {
        *result = {&attribute, &releaseOne};
        return instance->called("action",
                                std::string(dn) + " " + actionName + " " + std::to_string(numberOfParameters));
    }

    static constexpr YaltOamSpiManagedObject_3T table = {
        &newMoIterator,   &nextMo,         &finalizeMoIterator, &existsMo, &countMoChildren, &getMoAttribute,
        &getMoAttributes, &setMoAttribute, &createMo,           &deleteMo, &action,
    };

    static const void* getInterface(const ZorvMgmtSpiInterface_1* identity)
    {
        return std::string(identity->interfaceName) == "YaltOamSpiManagedObject" ? static_cast<const void*>(&table)
                                                                                 : &Resource::table;
    }
};

const ZorvMgmtSpiComponent_1T* AlarmComponent::descriptor()
{
    static const ZorvMgmtSpiInterface_1 objects = {"AlarmComponent", "YaltOamSpiManagedObject", "3"};
    static const ZorvMgmtSpiInterface_1 resource = {"AlarmComponent", "YaltOamSpiTransactionalResource", "1"};
    static const ZorvMgmtSpiInterface_1* const offered[] = {&objects, &resource, nullptr};
    static const ZorvMgmtSpiInterface_1* const none[] = {nullptr};
    static const auto startOrStop = [](ZorvStateChangeReason) -> ZorvReturnT { return 0; };
    static const ZorvMgmtSpiComponent_1T component = {
        "AlarmComponent", offered, none, none, startOrStop, startOrStop, &Objects::getInterface,
    };
    return &component;
}

}  // namespace ZorvTest
