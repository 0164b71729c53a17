#include "services/managedobjects/CmEventPublisher.hpp"

#include <gmock/gmock.h>

#include "RecordingConsumer.hpp"
#include "TemporaryDirectory.hpp"
#include "services/managedobjects/ManagementClient.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const std::string head = "<ZorvModel><class name='Node'><attribute name='name' type='string'/>"
                         "<attribute name='count' type='uint32' readOnly='true' default='0'/></class>"
                         "<class name='Port' parent='Node'><attribute name='speed' type='uint32' max='100'/></class>";
const std::string first = head + "<object dn='Node=1'><object dn='Port=1'/><object dn='Port=2'/></object></ZorvModel>";

std::string changesText(const std::string&, const void* value)
{
    const auto& event = *static_cast<const YaltOamSpiCmEvent_Notification_1T*>(value);
    std::string text = event.txHandle == 0 ? "reread" : "tx";
    for (std::uint32_t index = 0; index < event.numberOfChanges; ++index) {
        const auto& change = event.changes[index];
        text += "; " + std::to_string(change.changeType) + " " + change.dn;
        for (std::uint32_t name = 0; name < change.numberOfAttributes; ++name) {
            text += std::string(" ") + change.attributeNames[name];
        }
    }
    return text;
}

MoNamedValue textValue(const std::string& name, const std::string& text)
{
    return {name, {YALT_MO_ATTRIBUTE_STRING, {text}}};
}

MoNamedValue numberValue(const std::string& name, std::uint64_t number)
{
    return {name, {YALT_MO_ATTRIBUTE_UINT32, {number}}};
}

}  // namespace

class CmEventTest : public ::testing::Test {
protected:
    std::shared_ptr<RecordingConsumer> subscribe(const std::vector<const char*>& expressions)
    {
        std::vector<YaltNameValuePair> pairs;
        std::vector<YaltNameValuePair*> filter;
        for (const char* expression : expressions) {
            pairs.push_back({YALT_OAM_SPI_CM_EVENT_FILTER_TYPE_REG_EXP_1, expression});
        }
        for (YaltNameValuePair& pair : pairs) {
            filter.push_back(&pair);
        }
        filter.push_back(nullptr);
        auto consumer = std::make_shared<RecordingConsumer>(&changesText);
        unsigned long id = 0;
        router.registerConsumer(consumer, id);
        router.addSubscription(id, YALT_OAM_SPI_CM_EVENT_NOTIFICATION_1, filter.data());
        return consumer;
    }

    ModelFile model(const std::string& content) const { return readModel(directory.write("model.xml", content)); }

    /// As a component of the node does.
    void setBySystem(const std::string& dn, const MoNamedValue& attribute)
    {
        unsigned long tx = 0;
        CValues value;
        value.add(std::make_shared<const MoValue>(attribute.value));
        transactions.create(ZORV_LOCK_POLICY_OPTIMISTIC, 60, TransactionOrigin::component, tx);
        objects.setAttribute(tx, dn, attribute.name, *value.data());
        EXPECT_EQ(0, transactions.commit(tx));
    }

    void set(const std::string& dn, const std::vector<MoNamedValue>& attributes)
    {
        management.change({{MoRequest::Kind::set, dn, attributes}});
    }

    void create(const std::string& dn, const std::vector<MoNamedValue>& attributes)
    {
        management.change({{MoRequest::Kind::create, dn, attributes}});
    }

    void remove(const std::string& dn) { management.change({{MoRequest::Kind::remove, dn, {}}}); }

    std::uint64_t count() const
    {
        return std::get<std::uint64_t>(store.snapshot().state->find("Node=1")->attributes.at("count").values.front());
    }

    ZorvTest::TemporaryDirectory directory;
    EventRouter router{{}, [](std::int32_t, const std::string&) {}};
    InterfacePortal portal;
    MoStore store{model(first)};
    TransactionService transactions{10};
    CmEventPublisher publisher{router};
    ManagedObjectService objects{store, transactions, portal, publisher};
    ManagementClient management{transactions, objects};
};

TEST_F(CmEventTest, oneEventTellsAllChangesOfATransaction)
{
    const auto consumer = subscribe({});

    set("Node=1", {textValue("name", "r7")});
    create("Node=1,Port=3", {numberValue("speed", 10)});
    remove("Node=1,Port=1");

    EXPECT_THAT(consumer->events(router),
                ElementsAre("tx; 3 Node=1 name", "tx; 1 Node=1,Port=3 speed", "tx; 2 Node=1,Port=1"));
}

TEST_F(CmEventTest, aDeletedObjectIsToldWithItsChildren)
{
    const auto consumer = subscribe({});

    remove("Node=1");

    EXPECT_THAT(consumer->events(router), ElementsAre("tx; 2 Node=1; 2 Node=1,Port=1; 2 Node=1,Port=2"));
}

TEST_F(CmEventTest, anEventCarriesTheChangesThatMatchOneOfTheExpressions)
{
    const auto ports = subscribe({"Port=2$", "Port=9$"});
    const auto nodes = subscribe({"^Node=[^,]+$"});

    remove("Node=1");

    EXPECT_THAT(ports->events(router), ElementsAre("tx; 2 Node=1,Port=2"));
    EXPECT_THAT(nodes->events(router), ElementsAre("tx; 2 Node=1"));
}

TEST_F(CmEventTest, nothingIsSentWhenNothingMatchesOrChanges)
{
    const auto ports = subscribe({"Port=9"});
    const auto all = subscribe({});
    set("Node=1", {textValue("name", "r7")});
    ASSERT_THAT(all->events(router), ElementsAre("tx; 3 Node=1 name"));

    set("Node=1", {textValue("name", "r7")});

    EXPECT_THAT(all->events(router), ElementsAre("tx; 3 Node=1 name"));
    EXPECT_THAT(ports->events(router), IsEmpty());
}

TEST_F(CmEventTest, aSubscriptionWithAnInvalidExpressionGetsNothing)
{
    const auto consumer = subscribe({"("});

    remove("Node=1");

    EXPECT_THAT(consumer->events(router), IsEmpty());
}

TEST_F(CmEventTest, whatComponentsWriteIntoReadOnlyAttributesIsNoConfigurationChange)
{
    const auto consumer = subscribe({});

    setBySystem("Node=1", numberValue("count", 4));

    EXPECT_EQ(4U, count());
    EXPECT_THAT(consumer->events(router), IsEmpty());
}

TEST_F(CmEventTest, managementMayNotWriteReadOnlyAttributes)
{
    EXPECT_THROW(
        {
            try {
                set("Node=1", {numberValue("count", 4)});
            } catch (const MoError& e) {
                EXPECT_STREQ("read-only attribute, \"count\"", e.what());
                EXPECT_EQ(-1, e.code);
                throw;
            }
        },
        MoError);
    EXPECT_EQ(0U, count());
}

TEST_F(CmEventTest, aRefusedManagementWriteChangesNothing)
{
    EXPECT_THROW(set("Node=1,Port=1", {numberValue("speed", 50), numberValue("speed", 500)}), MoError);

    EXPECT_EQ(0U, store.snapshot().state->find("Node=1,Port=1")->attributes.count("speed"));
    EXPECT_EQ(0U, transactions.getNumberOfTransactions());
}

TEST_F(CmEventTest, rereadingTellsTheDifferencesInOneEvent)
{
    const auto consumer = subscribe({});

    objects.replaceModel(model(head + "<object dn='Node=1'><name>new</name><object dn='Port=2'/>"
                                      "<object dn='Port=3'/></object></ZorvModel>"));

    EXPECT_THAT(consumer->events(router), ElementsAre("reread; 3 Node=1 name; 2 Node=1,Port=1; 1 Node=1,Port=3"));
}

TEST_F(CmEventTest, rereadingKeepsWhatComponentsHaveWritten)
{
    setBySystem("Node=1", numberValue("count", 4));

    objects.replaceModel(model(first));

    EXPECT_EQ(4U, count());
}

TEST_F(CmEventTest, rereadingTakesBackWhatManagementHasWritten)
{
    set("Node=1", {textValue("name", "r7")});

    objects.replaceModel(model(first));

    EXPECT_EQ(0U, store.snapshot().state->find("Node=1")->attributes.count("name"));
}

TEST_F(CmEventTest, aTransactionFromBeforeAChangeOfClassesFailsAtItsCommit)
{
    unsigned long tx = 0;
    transactions.create(ZORV_LOCK_POLICY_NONE, 60, TransactionOrigin::component, tx);
    objects.remove(tx, "Node=1,Port=1");

    objects.replaceModel(model("<ZorvModel><class name='Node'/></ZorvModel>"));

    EXPECT_EQ(-1, transactions.commit(tx));
}

}  // namespace ZorvNode
