#include "services/modelrepository/ModelRepository.hpp"

#include <gmock/gmock.h>

#include "TemporaryDirectory.hpp"
#include "model/ModelReader.hpp"

namespace ZorvNode {

using namespace ZorvInput;

class ModelRepositoryTest : public ::testing::Test {
protected:
    std::shared_ptr<const Model> model(const std::string& content) const
    {
        return readModel(directory.write("m.xml", "<ZorvModel>" + content + "</ZorvModel>")).model;
    }

    const ZorvOamSpiModelClass_1T* find(const std::string& name) const
    {
        const ZorvOamSpiModelClass_1T* description = nullptr;
        EXPECT_EQ(0, repository.getClass(name, &description));
        return description;
    }

    ZorvTest::TemporaryDirectory directory;
    ModelRepository repository{
        model("<class name='Node'><attribute name='a' type='int8' readOnly='true' sequence='true'/></class>"
              "<class name='Port' parent='Node'/>")};
};

TEST_F(ModelRepositoryTest, aClassIsDescribedWithChildrenAndAttributes)
{
    const auto* node = find("Node");

    EXPECT_STREQ("Node", node->name);
    ASSERT_EQ(1U, node->numberOfChildClasses);
    EXPECT_STREQ("Port", node->childClasses[0]);
    ASSERT_EQ(1U, node->numberOfAttributes);
    EXPECT_STREQ("a", node->attributes[0].name);
    EXPECT_EQ(YALT_MO_ATTRIBUTE_INT8, node->attributes[0].type);
    EXPECT_TRUE(node->attributes[0].isSequence);
    EXPECT_TRUE(node->attributes[0].isReadOnly);
}

TEST_F(ModelRepositoryTest, theRootIsDescribedUnderTheEmptyName)
{
    const auto* root = find("");

    ASSERT_EQ(1U, root->numberOfChildClasses);
    EXPECT_STREQ("Node", root->childClasses[0]);
    EXPECT_EQ(0U, root->numberOfAttributes);
}

TEST_F(ModelRepositoryTest, anUnknownClassIsNotFound)
{
    const ZorvOamSpiModelClass_1T* description = nullptr;

    EXPECT_EQ(-2, repository.getClass("Slot", &description));
}

TEST_F(ModelRepositoryTest, descriptionsStayValidWhenTheModelChanges)
{
    const auto* before = find("Node");

    repository.use(model("<class name='Node'/>"));

    EXPECT_EQ(0U, find("Node")->numberOfAttributes);
    EXPECT_STREQ("a", before->attributes[0].name);
}

}  // namespace ZorvNode
