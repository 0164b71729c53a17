#include "commands/ModelHints.hpp"

#include <gtest/gtest.h>

#include "TemporaryDirectory.hpp"
#include "files/InputError.hpp"
#include "model/ModelReader.hpp"

namespace ZorvCtl {

struct WrongModel {
    const char* name;
    const char* content;  ///< of the ZorvModel element
    const char* hint;
};

class ModelHintsTest : public ::testing::TestWithParam<WrongModel> {
protected:
    std::string hintFor(const std::string& document)
    {
        try {
            ZorvInput::readModel(directory.write("m.xml", document));
        } catch (const ZorvInput::InputError& e) {
            return modelHint(e.what());
        }
        return "in order";
    }

    ZorvTest::TemporaryDirectory directory;
};

TEST_P(ModelHintsTest, mendsTheError)
{
    EXPECT_EQ(GetParam().hint, hintFor("<ZorvModel>" + std::string(GetParam().content) + "</ZorvModel>"));
}

const WrongModel wrongModels[] = {
    {"notWellFormed", "<class", "close every element, quote every attribute, and write &amp; for & and &lt; for <"},
    {"misspeltAttribute", "<class nam='N'/>",
     "look the element up in the model format: it may be misspelt, or belong elsewhere"},
    {"missingAttribute", "<class/>", "add the attribute to the element"},
    {"unknownElement", "<clas name='N'/>",
     "at this place stand enum, struct, class and object, or attribute and member inside them"},
    {"name", "<class name='1'/>", "use letters, digits and \"_\", and begin with a letter"},
    {"unknownParent", "<class name='N' parent='M'/>", "declare the parent class before this one, or correct its name"},
    {"twice", "<class name='N'/><class name='N'/>", "a class is declared once; move its attributes together"},
    {"noMembers", "<enum name='E'/>", "add <member name=\"...\" value=\"...\"/>"},
    {"emptyStructure", "<struct name='S'/>", "add <attribute name=\"...\" type=\"...\"/>"},
    {"unknownType", "<class name='N'><attribute name='a' type='number'/></class>",
     "use a built-in type, or declare the enumeration or structure before the class"},
    {"flag", "<class name='N'><attribute name='a' type='string' sequence='yes'/></class>", "write true or false"},
    {"unknownClass", "<object dn='N=1'/>",
     "declare the class before its objects, or correct the name before the \"=\""},
    {"dn", "<class name='N'/><object dn='N'/>", "write dn=\"Class=value\"; the value has no \",\" and no \"=\""},
    {"objectTwice", "<class name='N'/><object dn='N=1'/><object dn='N=1'/>",
     "an object is written once; put its values together"},
    {"noParent", "<class name='N'/><class name='M' parent='N'/><object dn='N=1,M=1'/>",
     "put the object inside its parent's element, or write the parent before it"},
    {"notContained", "<class name='N'/><class name='M'/><object dn='N=1'><object dn='M=1'/></object>",
     "name the parent's class in the class's parent attribute"},
    {"noSuchAttribute", "<class name='N'/><object dn='N=1'><a>1</a></object>",
     "correct the name, or add the attribute"},
    {"range", "<class name='N'><attribute name='a' type='uint8'/></class><object dn='N=1'><a>300</a></object>",
     "choose a value within the bounds, or widen min and max in the class"},
    {"number", "<class name='N'><attribute name='a' type='uint8'/></class><object dn='N=1'><a>x</a></object>",
     "write a number in base ten, without blanks"},
    {"boolean", "<class name='N'><attribute name='a' type='bool'/></class><object dn='N=1'><a>x</a></object>",
     "write true or false"},
    {"member",
     "<enum name='E'><member name='A' value='1'/></enum><class name='N'><attribute name='a' type='E'/></class>"
     "<object dn='N=1'><a>B</a></object>",
     "write the name of a member, or its number"},
    {"mandatory", "<class name='N'><attribute name='a' type='string' mandatory='true'/></class><object dn='N=1'/>",
     "add the element, or declare the attribute without mandatory=\"true\""},
    {"implemented", "<class name='N' implementer='C'/><object dn='N=1'/>",
     "delete the object: the component makes it itself"},
};

INSTANTIATE_TEST_SUITE_P(ModelHints, ModelHintsTest, ::testing::ValuesIn(wrongModels),
                         [](const auto& wrong) { return std::string(wrong.param.name); });

TEST(ModelHintTest, whatNobodyForesawHasAHintToo)
{
    EXPECT_EQ("compare with the model format and the example model", modelHint("m.xml:1: quite another thing"));
}

}  // namespace ZorvCtl
