#include "YaltInterfaceBinders.hpp"

#include <csignal>
#include <optional>
#include <stdexcept>
#include <string>

#include "CommonTest.hpp"

using testing::ElementsAre;
using testing::KilledBySignal;

namespace Zorv {
namespace {

/// An implementer that writes down its calls and answers each with another code.
class Implementer {
public:
    YaltReturnT newMoIterator(unsigned long txHandle, const char* parentDn, const char* className, uint64_t* iteratorId)
    {
        *iteratorId = 77;
        return tell(1, "newMoIterator " + std::to_string(txHandle) + " " + parentDn + " " + className);
    }

    YaltReturnT nextMo(uint64_t iteratorId, const char** name)
    {
        *name = "Port=4";
        return tell(2, "nextMo " + std::to_string(iteratorId));
    }

    YaltReturnT finalizeMoIterator(uint64_t iteratorId)
    {
        return tell(3, "finalizeMoIterator " + std::to_string(iteratorId));
    }

    YaltReturnT existsMo(unsigned long txHandle, const char* dn, bool* exists)
    {
        *exists = true;
        return tell(4, "existsMo " + std::to_string(txHandle) + " " + dn);
    }

    YaltReturnT countMoChildren(unsigned long txHandle, const char* dn, const char* className, uint64_t* count)
    {
        *count = 88;
        return tell(5, "countMoChildren " + std::to_string(txHandle) + " " + dn + " " + className);
    }

    YaltReturnT getMoAttribute(unsigned long txHandle, const char* dn, const char* name,
                               YaltOamSpiMoAttributeResult_3T* result)
    {
        *result = {nullptr, nullptr};
        return tell(6, "getMoAttribute " + std::to_string(txHandle) + " " + dn + " " + name);
    }

    YaltReturnT getMoAttributes(unsigned long txHandle, const char* dn, const char* const* names,
                                YaltOamSpiMoAttributesResult_3T* results)
    {
        *results = {0, nullptr, nullptr};
        return tell(7, "getMoAttributes " + std::to_string(txHandle) + " " + dn + " " + *names);
    }

    YaltReturnT setMoAttribute(unsigned long txHandle, const char* dn, const char* name,
                               const YaltOamSpiMoAttribute_3T* attribute)
    {
        return tell(8, "setMoAttribute " + std::to_string(txHandle) + " " + dn + " " + name + " " +
                           std::to_string(attribute->type));
    }

    YaltReturnT createMo(unsigned long txHandle, const char* parentDn, const char* className, const char* key,
                         const YaltOamSpiMoNamedAttribute_3T*, uint32_t numberOfAttributes)
    {
        return tell(9, "createMo " + std::to_string(txHandle) + " " + parentDn + " " + className + " " + key + " " +
                           std::to_string(numberOfAttributes));
    }

    YaltReturnT deleteMo(unsigned long txHandle, const char* dn)
    {
        return tell(10, "deleteMo " + std::to_string(txHandle) + " " + dn);
    }

    YaltReturnT action(unsigned long txHandle, const char* dn, const char* name, const YaltOamSpiMoNamedAttribute_3T*,
                       uint32_t numberOfParameters, YaltOamSpiMoAttributeResult_3T*)
    {
        return tell(11, "action " + std::to_string(txHandle) + " " + dn + " " + name + " " +
                            std::to_string(numberOfParameters));
    }

    YaltReturnT join(unsigned long txHandle) { return tell(12, "join " + std::to_string(txHandle)); }
    YaltReturnT prepare(unsigned long txHandle) { return tell(13, "prepare " + std::to_string(txHandle)); }
    YaltReturnT commit(unsigned long txHandle) { return tell(14, "commit " + std::to_string(txHandle)); }
    YaltReturnT abort(unsigned long txHandle) { return tell(15, "abort " + std::to_string(txHandle)); }
    YaltReturnT finish(unsigned long txHandle) { return tell(16, "finish " + std::to_string(txHandle)); }

    std::vector<std::string> told;
    bool failsKnown = false;
    bool failsUnknown = false;

private:
    YaltReturnT tell(YaltReturnT code, const std::string& call)
    {
        if (failsKnown) {
            throw std::runtime_error("%s fails");
        }
        if (failsUnknown) {
            throw 5;
        }
        told.push_back(call);
        return code;
    }
};

class YaltInterfaceBindersTest : public CommonTest {
protected:
    Implementer implementer;
    std::optional<ManagedObject3Binder<Implementer>> objectBinder{std::in_place, implementer};
    std::optional<TransactionalResource1Binder<Implementer>> resourceBinder{std::in_place, implementer};
    const YaltOamSpiManagedObject_3T& objects = objectBinder->getInterface();
    const YaltOamSpiTransactionalResource_1T& resource = resourceBinder->getInterface();
};

TEST_F(YaltInterfaceBindersTest, everyManagedObjectCallReachesItsOperation)
{
    uint64_t number = 0;
    const char* name = nullptr;
    const char* names[] = {"first", nullptr};
    bool exists = false;
    YaltOamSpiMoAttributeResult_3T result{};
    YaltOamSpiMoAttributesResult_3T results{};
    const YaltOamSpiMoAttribute_3T attribute{YALT_MO_ATTRIBUTE_ENUM, 0, nullptr};

    EXPECT_EQ(1, objects.newMoIterator(17, "A=1", "B", &number));
    EXPECT_EQ(77U, number);
    EXPECT_EQ(2, objects.nextMo(5, &name));
    EXPECT_STREQ("Port=4", name);
    EXPECT_EQ(3, objects.finalizeMoIterator(6));
    EXPECT_EQ(4, objects.existsMo(18, "A=2", &exists));
    EXPECT_TRUE(exists);
    EXPECT_EQ(5, objects.countMoChildren(19, "A=3", "C", &number));
    EXPECT_EQ(88U, number);
    EXPECT_EQ(6, objects.getMoAttribute(20, "A=4", "name", &result));
    EXPECT_EQ(7, objects.getMoAttributes(21, "A=5", names, &results));
    EXPECT_EQ(8, objects.setMoAttribute(22, "A=6", "kind", &attribute));
    EXPECT_EQ(9, objects.createMo(23, "A=7", "D", "key", nullptr, 0));
    EXPECT_EQ(10, objects.deleteMo(24, "A=8"));
    EXPECT_EQ(11, objects.action(25, "A=9", "reset", nullptr, 0, &result));

    EXPECT_THAT(implementer.told,
                ElementsAre("newMoIterator 17 A=1 B", "nextMo 5", "finalizeMoIterator 6", "existsMo 18 A=2",
                            "countMoChildren 19 A=3 C", "getMoAttribute 20 A=4 name", "getMoAttributes 21 A=5 first",
                            "setMoAttribute 22 A=6 kind 12", "createMo 23 A=7 D key 0", "deleteMo 24 A=8",
                            "action 25 A=9 reset 0"));
}

TEST_F(YaltInterfaceBindersTest, everyTransactionalResourceCallReachesItsOperation)
{
    EXPECT_EQ(12, resource.join(1));
    EXPECT_EQ(13, resource.prepare(2));
    EXPECT_EQ(14, resource.commit(3));
    EXPECT_EQ(15, resource.abort(4));
    EXPECT_EQ(16, resource.finish(5));

    EXPECT_THAT(implementer.told, ElementsAre("join 1", "prepare 2", "commit 3", "abort 4", "finish 5"));
}

TEST_F(YaltInterfaceBindersTest, exceptionsNeverReachTheMiddleware)
{
    implementer.failsKnown = true;
    EXPECT_EQ(-1, objects.finalizeMoIterator(1));
    EXPECT_EQ(-1, resource.finish(1));
    implementer.failsKnown = false;
    implementer.failsUnknown = true;
    EXPECT_EQ(-1, objects.finalizeMoIterator(1));
    EXPECT_EQ(-1, resource.join(1));

    EXPECT_THAT(journal(),
                ElementsAre("log 3 Managed object call: %s fails", "log 3 Transactional resource call: %s fails",
                            "log 3 Managed object call: unknown exception",
                            "log 3 Transactional resource call: unknown exception"));
}

TEST_F(YaltInterfaceBindersTest, aFurtherBinderAfterTheFirstOneIsGone)
{
    Implementer other;
    objectBinder.reset();
    resourceBinder.reset();
    objectBinder.emplace(other);
    resourceBinder.emplace(other);

    objectBinder->getInterface().finalizeMoIterator(5);
    resourceBinder->getInterface().join(6);

    EXPECT_THAT(other.told, ElementsAre("finalizeMoIterator 5", "join 6"));
}

using YaltInterfaceBindersDeathTest = YaltInterfaceBindersTest;

TEST_F(YaltInterfaceBindersDeathTest, aSecondManagedObjectBinder)
{
    EXPECT_EXIT(ManagedObject3Binder<Implementer> second(implementer), KilledBySignal(SIGABRT), "`!_instance'");
}

TEST_F(YaltInterfaceBindersDeathTest, aSecondTransactionalResourceBinder)
{
    EXPECT_EXIT(TransactionalResource1Binder<Implementer> second(implementer), KilledBySignal(SIGABRT), "`!_instance'");
}

}  // namespace
}  // namespace Zorv
