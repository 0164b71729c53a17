#include "ManagedObjectContract.hpp"

namespace ZorvTest {

using ZorvFakes::MoCForm;

namespace {

std::string textOf(const YaltOamSpiMoAttribute_3T& attribute)
{
    static const char* const typeNames[] = {"int8",   "int16", "int32",  "int64",     "uint64", "uint8", "uint16",
                                            "uint32", "bool",  "string", "reference", "struct", "enum"};
    return std::string(typeNames[attribute.type]) + " " + ZorvFakes::MoValue::fromC(attribute).toString();
}

}  // namespace

// --- Objects

unsigned long ManagedObjectContractTest::begin(std::int32_t lockPolicy, std::uint32_t timeout)
{
    unsigned long tx = 0;
    EXPECT_EQ(0, master->createTransaction(lockPolicy, timeout, &tx));
    return tx;
}

std::string ManagedObjectContractTest::get(unsigned long tx, const std::string& dn, const std::string& attribute)
{
    YaltOamSpiMoAttributeResult_3T result{};
    const ZorvReturnT code = objects->getMoAttribute(tx, dn.c_str(), attribute.c_str(), &result);
    if (code != 0) {
        return std::to_string(code);
    }
    std::string text = textOf(*result.attribute);
    EXPECT_EQ(0, result.releaseAttrResultCB(&result));
    return text;
}

ManagedObjectContractTest::NamesT ManagedObjectContractTest::get(unsigned long tx, const std::string& dn,
                                                                 const NamesT& attributes)
{
    std::vector<const char*> names;
    for (const std::string& attribute : attributes) {
        names.push_back(attribute.c_str());
    }
    names.push_back(nullptr);
    YaltOamSpiMoAttributesResult_3T result{};
    const ZorvReturnT code = objects->getMoAttributes(tx, dn.c_str(), names.data(), &result);
    if (code != 0) {
        return {std::to_string(code)};
    }
    NamesT texts;
    for (std::uint32_t index = 0; index < result.numberOfAttributes; ++index) {
        texts.push_back(textOf(result.attributes[index]));
    }
    EXPECT_EQ(0, result.releaseAttributesResultCB(&result));
    return texts;
}

std::string ManagedObjectContractTest::committed(const std::string& dn, const std::string& attribute)
{
    const unsigned long tx = begin();
    std::string text = get(tx, dn, attribute);
    EXPECT_EQ(0, abort(tx));
    return text;
}

ManagedObjectContractTest::NamesT ManagedObjectContractTest::committedPorts()
{
    const unsigned long tx = begin();
    NamesT names = ports(tx);
    EXPECT_EQ(0, abort(tx));
    return names;
}

ZorvReturnT ManagedObjectContractTest::set(unsigned long tx, const std::string& dn, const std::string& attribute,
                                           const MoValue& value)
{
    const MoCForm form(value);
    const YaltOamSpiMoAttribute_3T given = form.get();
    return objects->setMoAttribute(tx, dn.c_str(), attribute.c_str(), &given);
}

ZorvReturnT ManagedObjectContractTest::set(unsigned long tx, const std::string& dn, std::uint32_t number)
{
    return set(tx, dn, "number", MoValue::uint32(number));
}

ZorvReturnT ManagedObjectContractTest::create(unsigned long tx, const std::string& parentDn,
                                              const std::string& className, const std::string& key,
                                              const AttributesT& attributes)
{
    std::vector<MoCForm> forms;
    std::vector<YaltOamSpiMoNamedAttribute_3T> named;
    for (const auto& [name, value] : attributes) {
        forms.emplace_back(value);
        named.push_back({name.c_str(), forms.back().get()});
    }
    return objects->createMo(tx, parentDn.c_str(), className.c_str(), key.c_str(),
                             named.empty() ? nullptr : named.data(), static_cast<std::uint32_t>(named.size()));
}

std::string ManagedObjectContractTest::exists(unsigned long tx, const std::string& dn)
{
    bool exists = false;
    const ZorvReturnT code = objects->existsMo(tx, dn.c_str(), &exists);
    return code != 0 ? std::to_string(code) : exists ? "true" : "false";
}

std::string ManagedObjectContractTest::count(unsigned long tx, const std::string& dn, const std::string& className)
{
    std::uint64_t count = 0;
    const ZorvReturnT code = objects->countMoChildren(tx, dn.c_str(), className.c_str(), &count);
    return std::to_string(code != 0 ? code : static_cast<std::int64_t>(count));
}

ManagedObjectContractTest::NamesT ManagedObjectContractTest::children(unsigned long tx, const std::string& parentDn,
                                                                      const std::string& className)
{
    std::uint64_t iterator = 0;
    ZorvReturnT code = objects->newMoIterator(tx, parentDn.c_str(), className.c_str(), &iterator);
    if (code != 0) {
        return {std::to_string(code)};
    }
    NamesT names;
    const char* name = nullptr;
    while ((code = objects->nextMo(iterator, &name)) == 0) {
        names.emplace_back(name);
    }
    EXPECT_EQ(-2, code);
    EXPECT_EQ(0, objects->finalizeMoIterator(iterator));
    return names;
}

// --- Participants

TransactionContractTest* TransactionContractTest::instance = nullptr;

template <int number>
struct TransactionContractTest::Resource {
    static YaltReturnT join(unsigned long tx) { return instance->called(number, "join", tx); }
    static YaltReturnT prepare(unsigned long tx) { return instance->called(number, "prepare", tx); }
    static YaltReturnT commit(unsigned long tx) { return instance->called(number, "commit", tx); }
    static YaltReturnT abort(unsigned long tx) { return instance->called(number, "abort", tx); }
    static YaltReturnT finish(unsigned long tx) { return instance->called(number, "finish", tx); }

    static constexpr YaltOamSpiTransactionalResource_1T table = {&join, &prepare, &commit, &abort, &finish};
};

const YaltOamSpiTransactionalResource_1T& TransactionContractTest::resource(int number)
{
    static constexpr const YaltOamSpiTransactionalResource_1T* tables[] = {&Resource<1>::table, &Resource<2>::table,
                                                                           &Resource<3>::table};
    return *tables[number - 1];
}

unsigned long TransactionContractTest::beginWith(int numberOfParticipants)
{
    const unsigned long tx = begin();
    for (int number = 1; number <= numberOfParticipants; ++number) {
        EXPECT_EQ(0, takePart(tx, number));
    }
    return tx;
}

EventJournal::LinesT TransactionContractTest::heard(unsigned long tx)
{
    const std::string handle = " " + std::to_string(tx);
    EventJournal::LinesT lines = journal.take();
    for (std::string& line : lines) {
        const std::size_t place = line.size() - std::min(handle.size(), line.size());
        EXPECT_EQ(handle, line.substr(place)) << "of another transaction: " << line;
        line.resize(place);
    }
    return lines;
}

ZorvReturnT TransactionContractTest::called(int number, const std::string& call, unsigned long tx)
{
    journal.write("r" + std::to_string(number) + " " + call + " " + std::to_string(tx));
    return reaction(number, call);
}

}  // namespace ZorvTest
