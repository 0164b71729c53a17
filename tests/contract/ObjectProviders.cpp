#include "FakeManagedObjects.hpp"
#include "ManagedObjectContract.hpp"
#include "TemporaryDirectory.hpp"
#include "model/ModelReader.hpp"
#include "services/managedobjects/ManagedObjectTable.hpp"
#include "services/transactions/TransactionTables.hpp"

namespace ZorvTest {

using namespace ZorvInput;

namespace {

// --- The node's

const char* const contractModel = R"(<ZorvModel>
  <enum name="Colour">
    <member name="BLACK" value="-1"/>
    <member name="RED" value="1"/>
    <member name="GREEN" value="2"/>
  </enum>
  <struct name="Pair"><attribute name="name" type="string"/><attribute name="number" type="int32"/></struct>

  <class name="Node">
    <attribute name="number" type="uint32" max="100"/>
    <attribute name="names" type="string" sequence="true"/>
  </class>
  <class name="Port" parent="Node">
    <attribute name="number" type="uint32" default="7" max="100"/>
    <attribute name="state" type="string" readOnly="true"/>
  </class>
  <class name="Sample" parent="Node">
    <attribute name="int8" type="int8"/>
    <attribute name="int16" type="int16"/>
    <attribute name="int32" type="int32"/>
    <attribute name="int64" type="int64"/>
    <attribute name="uint8" type="uint8"/>
    <attribute name="uint16" type="uint16"/>
    <attribute name="uint32" type="uint32"/>
    <attribute name="uint64" type="uint64"/>
    <attribute name="bool" type="bool"/>
    <attribute name="string" type="string"/>
    <attribute name="reference" type="reference"/>
    <attribute name="enum" type="Colour"/>
    <attribute name="struct" type="Pair"/>
    <attribute name="numbers" type="int16" sequence="true"/>
    <attribute name="structs" type="Pair" sequence="true"/>
    <attribute name="nothing" type="Pair"/>
  </class>
  <class name="Alarm" parent="Node" implementer="AlarmComponent"><attribute name="text" type="string"/></class>

  <object dn="Node=1">
    <names>one</names>
    <names>two</names>
    <object dn="Port=1"/>
    <object dn="Port=2"><number>9</number></object>
    <object dn="Sample=1">
      <int8>-128</int8>
      <int16>-32768</int16>
      <int32>-2147483648</int32>
      <int64>-9223372036854775808</int64>
      <uint8>255</uint8>
      <uint16>65535</uint16>
      <uint32>4294967295</uint32>
      <uint64>18446744073709551615</uint64>
      <bool>true</bool>
      <string>100% L&#xFC;fter</string>
      <reference>Node=1,Port=1</reference>
      <enum>BLACK</enum>
      <struct><name>a</name><number>-5</number></struct>
      <numbers>3</numbers>
      <numbers>-1</numbers>
      <structs><name>a</name><number>1</number></structs>
      <structs><name>b</name><number>2</number></structs>
    </object>
  </object>
</ZorvModel>
)";

class NoListener : public ZorvNode::MoChangeListener {
public:
    void onChanged(unsigned long, std::vector<ZorvNode::MoChange>) override {}
    void onFinished() override {}
};

ZorvNode::ModelFile readContractModel()
{
    const TemporaryDirectory directory;
    return ZorvNode::readModel(directory.write("model.xml", contractModel));
}

class NodeObjects : public FullObjectImplementation {
public:
    ~NodeObjects() override { transactions.stopTimer(); }

    const YaltOamSpiManagedObject_3T* objects() const override { return ZorvNode::ManagedObjectTable::table(); }
    const ZorvOamSpiTransactionMaster_1T* master() const override { return ZorvNode::TransactionTables::master(); }
    const YaltOamSpiTransaction_1T* participants() const override { return ZorvNode::TransactionTables::participant(); }

    void passTime(std::chrono::seconds time) override
    {
        passed += time;
        transactions.abortExpired();
    }

    void startTimer() override { transactions.startTimer(); }

    unsigned long beginManagement() override
    {
        unsigned long tx = 0;
        EXPECT_EQ(0, transactions.create(ZORV_LOCK_POLICY_NONE, 60, ZorvNode::TransactionOrigin::management, tx));
        return tx;
    }

    void install(const ZorvMgmtSpiComponent_1T* component) override
    {
        EXPECT_EQ(0, portal.registerComponent(component));
    }

private:
    std::chrono::seconds passed{0};
    ZorvNode::InterfacePortal portal;
    NoListener listener;
    ZorvNode::TransactionService transactions{transactionBound,
                                              [this] { return std::chrono::steady_clock::now() + passed; }};
    ZorvNode::MoStore store{readContractModel()};
    ZorvNode::ManagedObjectService service{store, transactions, portal, listener};
    const ZorvNode::TransactionTables transactionTables{transactions};
    const ZorvNode::ManagedObjectTable objectTable{service};
};

// --- The fakes

class FakeObjects : public ObjectImplementation {
public:
    FakeObjects()
    {
        using ZorvFakes::MoValue;
        fake.plant("Node=1",
                   {{"number", MoValue::none(YALT_MO_ATTRIBUTE_UINT32)}, {"names", MoValue::texts({"one", "two"})}});
        fake.plant("Node=1,Port=1", {{"number", MoValue::uint32(7)}});
        fake.plant("Node=1,Port=2", {{"number", MoValue::uint32(9)}});
        plantSample();
    }

    const YaltOamSpiManagedObject_3T* objects() const override { return ZorvFakes::FakeManagedObjects::table(); }
    const ZorvOamSpiTransactionMaster_1T* master() const override { return ZorvFakes::FakeTransactions::masterTable(); }

    const YaltOamSpiTransaction_1T* participants() const override
    {
        return ZorvFakes::FakeTransactions::participantTable();
    }

private:
    static ZorvFakes::MoValue numbers(std::int32_t type, const std::vector<std::int64_t>& values)
    {
        ZorvFakes::MoValue value = ZorvFakes::MoValue::none(type);
        for (const std::int64_t number : values) {
            value.values.push_back({static_cast<std::uint64_t>(number), {}, {}});
        }
        return value;
    }

    static ZorvFakes::MoValue pair(const std::string& name, std::int32_t number)
    {
        using ZorvFakes::MoValue;
        return MoValue::structure({{"name", MoValue::text(name)}, {"number", MoValue::int32(number)}});
    }

    void plantSample()
    {
        using ZorvFakes::MoValue;
        MoValue pairs = pair("a", 1);
        pairs.values.push_back(pair("b", 2).values.front());
        fake.plant("Node=1,Sample=1", {{"int8", numbers(YALT_MO_ATTRIBUTE_INT8, {INT8_MIN})},
                                       {"int16", numbers(YALT_MO_ATTRIBUTE_INT16, {INT16_MIN})},
                                       {"int32", numbers(YALT_MO_ATTRIBUTE_INT32, {INT32_MIN})},
                                       {"int64", numbers(YALT_MO_ATTRIBUTE_INT64, {INT64_MIN})},
                                       {"uint8", numbers(YALT_MO_ATTRIBUTE_UINT8, {UINT8_MAX})},
                                       {"uint16", numbers(YALT_MO_ATTRIBUTE_UINT16, {UINT16_MAX})},
                                       {"uint32", numbers(YALT_MO_ATTRIBUTE_UINT32, {UINT32_MAX})},
                                       {"uint64", MoValue::uint64(UINT64_MAX)},
                                       {"bool", MoValue::boolean(true)},
                                       {"string", MoValue::text("100% L\xC3\xBC"
                                                                "fter")},
                                       {"reference", MoValue::reference("Node=1,Port=1")},
                                       {"enum", MoValue::enumeration(-1)},
                                       {"struct", pair("a", -5)},
                                       {"numbers", numbers(YALT_MO_ATTRIBUTE_INT16, {3, -1})},
                                       {"structs", pairs},
                                       {"nothing", MoValue::none(YALT_MO_ATTRIBUTE_STRUCT)}});
    }

    ZorvFakes::Journal journal;
    ZorvFakes::FakeTransactions transactions{journal};
    ZorvFakes::FakeManagedObjects fake{journal, transactions};
};

const ObjectProvider nodeObjects = {"node", [] { return std::make_unique<NodeObjects>(); }};
const ObjectProvider fakeObjects = {"fake", [] { return std::make_unique<FakeObjects>(); }};

std::string nameOf(const testing::TestParamInfo<ObjectProvider>& provider)
{
    return provider.param.name;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Of, ManagedObjectContractTest, testing::Values(nodeObjects, fakeObjects), nameOf);
INSTANTIATE_TEST_SUITE_P(Of, TransactionContractTest, testing::Values(nodeObjects, fakeObjects), nameOf);
INSTANTIATE_TEST_SUITE_P(Of, FullObjectContractTest, testing::Values(nodeObjects), nameOf);

}  // namespace ZorvTest
