#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <thread>

#include "FakeModelRepository.hpp"
#include "TemporaryDirectory.hpp"
#include "YaltOamSpiManagedObject_3.h"
#include "model/ModelReader.hpp"
#include "services/modelrepository/ModelRepositoryTable.hpp"

namespace ZorvTest {

using namespace ZorvInput;

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A repository with class "Node" at the root (attributes "number" uint32, "names" a sequence of strings, "state" a
/// read-only boolean) and classes "Port" and "Slot", without attributes, in it.
class RepositoryImplementation {
public:
    virtual ~RepositoryImplementation() = default;
    virtual const ZorvOamSpiModelRepository_1T* table() const = 0;

    /// A class "Rack" comes into being.
    virtual void grow() = 0;
};

class NodeRepository : public RepositoryImplementation {
public:
    const ZorvOamSpiModelRepository_1T* table() const override { return ZorvNode::ModelRepositoryTable::table(); }
    void grow() override { repository.use(modelWith("<class name='Rack'/>")); }

private:
    static std::shared_ptr<const ZorvNode::Model> modelWith(const std::string& further)
    {
        const TemporaryDirectory directory;
        return ZorvNode::readModel(directory.write("model.xml", R"(<ZorvModel>
            <class name='Node'>
              <attribute name='number' type='uint32'/>
              <attribute name='names' type='string' sequence='true'/>
              <attribute name='state' type='bool' readOnly='true'/>
            </class>
            <class name='Port' parent='Node'/>
            <class name='Slot' parent='Node'/>)" + further + "</ZorvModel>"))
            .model;
    }

    ZorvNode::ModelRepository repository{modelWith("")};
    const ZorvNode::ModelRepositoryTable binding{repository};
};

class FakeRepository : public RepositoryImplementation {
public:
    FakeRepository()
    {
        repository.describe("", {"Node"}, {});
        repository.describe("Node", {"Port", "Slot"},
                            {{"number", YALT_MO_ATTRIBUTE_UINT32, false, false},
                             {"names", YALT_MO_ATTRIBUTE_STRING, true, false},
                             {"state", YALT_MO_ATTRIBUTE_BOOL, false, true}});
        repository.describe("Port", {}, {});
        repository.describe("Slot", {}, {});
    }

    const ZorvOamSpiModelRepository_1T* table() const override { return ZorvFakes::FakeModelRepository::table(); }
    void grow() override { repository.describe("Rack", {}, {}); }

private:
    ZorvFakes::Journal journal;
    ZorvFakes::FakeModelRepository repository{journal};
};

struct RepositoryProvider {
    std::string name;
    std::function<std::unique_ptr<RepositoryImplementation>()> make;
};

const RepositoryProvider nodeRepository = {"node", [] { return std::make_unique<NodeRepository>(); }};
const RepositoryProvider fakeRepository = {"fake", [] { return std::make_unique<FakeRepository>(); }};

}  // namespace

class ModelRepositoryContractTest : public testing::TestWithParam<RepositoryProvider> {
protected:
    const ZorvOamSpiModelClass_1T* find(const std::string& className) const
    {
        const ZorvOamSpiModelClass_1T* description = nullptr;
        EXPECT_EQ(0, spi->getClass(className.c_str(), &description));
        return description;
    }

    static std::vector<std::string> childrenOf(const ZorvOamSpiModelClass_1T* description)
    {
        return {description->childClasses, description->childClasses + description->numberOfChildClasses};
    }

    /// "name type sequence readOnly" of each attribute.
    static std::vector<std::string> attributesOf(const ZorvOamSpiModelClass_1T* description)
    {
        std::vector<std::string> texts;
        for (std::uint32_t index = 0; index < description->numberOfAttributes; ++index) {
            const ZorvOamSpiModelAttribute_1T& attribute = description->attributes[index];
            texts.push_back(std::string(attribute.name) + " " + std::to_string(attribute.type) +
                            (attribute.isSequence ? " sequence" : "") + (attribute.isReadOnly ? " readOnly" : ""));
        }
        return texts;
    }

    const std::unique_ptr<RepositoryImplementation> implementation = GetParam().make();
    const ZorvOamSpiModelRepository_1T* const spi = implementation->table();
};

TEST_P(ModelRepositoryContractTest, aClassHasNameChildrenAndAttributesInTheModelsOrder)
{
    const ZorvOamSpiModelClass_1T* const node = find("Node");

    EXPECT_STREQ("Node", node->name);
    EXPECT_THAT(childrenOf(node), ElementsAre("Port", "Slot"));
    EXPECT_THAT(attributesOf(node), ElementsAre("number 7", "names 9 sequence", "state 8 readOnly"));
}

TEST_P(ModelRepositoryContractTest, aClassMayHaveNeitherChildrenNorAttributes)
{
    const ZorvOamSpiModelClass_1T* const port = find("Port");

    EXPECT_STREQ("Port", port->name);
    EXPECT_THAT(childrenOf(port), IsEmpty());
    EXPECT_THAT(attributesOf(port), IsEmpty());
}

TEST_P(ModelRepositoryContractTest, theEmptyNameIsTheRootAboveAllObjects)
{
    const ZorvOamSpiModelClass_1T* const root = find("");

    EXPECT_STREQ("", root->name);
    EXPECT_THAT(childrenOf(root), ElementsAre("Node"));
    EXPECT_THAT(attributesOf(root), IsEmpty());
}

TEST_P(ModelRepositoryContractTest, anUnknownClassIsNotFound)
{
    const ZorvOamSpiModelClass_1T* description = nullptr;

    EXPECT_EQ(-2, spi->getClass("Rack", &description));
    EXPECT_EQ(-2, spi->getClass("node", &description));

    EXPECT_EQ(nullptr, description);
}

TEST_P(ModelRepositoryContractTest, descriptionsStayWhenTheModelGrows)
{
    const ZorvOamSpiModelClass_1T* const before = find("Node");

    implementation->grow();

    EXPECT_STREQ("Rack", find("Rack")->name);
    EXPECT_STREQ("Node", before->name);
    EXPECT_THAT(childrenOf(before), ElementsAre("Port", "Slot"));
    EXPECT_THAT(attributesOf(before), ElementsAre("number 7", "names 9 sequence", "state 8 readOnly"));
}

TEST_P(ModelRepositoryContractTest, classesAreFoundFromSeveralThreadsWhileTheModelGrows)
{
    std::vector<std::thread> threads;
    threads.reserve(3);
    for (int number = 0; number < 3; ++number) {
        threads.emplace_back([this] {
            for (int round = 0; round < 50; ++round) {
                EXPECT_STREQ("Port", find("Port")->name);
            }
        });
    }

    implementation->grow();

    for (std::thread& thread : threads) {
        thread.join();
    }
}

INSTANTIATE_TEST_SUITE_P(Of, ModelRepositoryContractTest, testing::Values(nodeRepository, fakeRepository),
                         [](const auto& provider) { return provider.param.name; });

}  // namespace ZorvTest
