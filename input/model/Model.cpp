#include "model/Model.hpp"

#include <algorithm>
#include <tuple>
#include <utility>

namespace ZorvInput {

namespace {

auto asTuple(const NumberRange& range)
{
    return std::tie(range.signedMin, range.signedMax, range.unsignedMin, range.unsignedMax);
}

bool isSame(const AttributeDescription& left, const AttributeDescription& right);

bool areSame(const std::vector<AttributeDescription>& left, const std::vector<AttributeDescription>& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), isSame);
}

bool isSame(const AttributeDescription& left, const AttributeDescription& right)
{
    const auto facets = [](const AttributeDescription& it) {
        return std::tie(it.name, it.type, it.typeName, it.isSequence, it.isReadOnly, it.isMandatory, it.notifies,
                        it.defaultValue);
    };
    return facets(left) == facets(right) && asTuple(left.range) == asTuple(right.range) &&
           (!left.enumeration || left.enumeration->members == right.enumeration->members) &&
           (!left.structure || areSame(left.structure->members, right.structure->members));
}

}  // namespace

const std::string* EnumDescription::findName(std::int32_t value) const
{
    const auto found =
        std::find_if(members.begin(), members.end(), [value](const auto& member) { return member.second == value; });
    return found != members.end() ? &found->first : nullptr;
}

bool EnumDescription::findValue(const std::string& member, std::int32_t& value) const
{
    const auto found =
        std::find_if(members.begin(), members.end(), [&member](const auto& it) { return it.first == member; });
    if (found == members.end()) {
        return false;
    }
    value = found->second;
    return true;
}

const AttributeDescription* ClassDescription::findAttribute(const std::string& attribute) const
{
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&attribute](const AttributeDescription& it) { return it.name == attribute; });
    return found != attributes.end() ? &*found : nullptr;
}

bool ClassDescription::canBeIn(const std::string& parentClass) const
{
    return std::find(parents.begin(), parents.end(), parentClass) != parents.end();
}

void Model::add(ClassDescription description)
{
    positions.emplace(description.name, classes.size());
    classes.push_back(std::move(description));
}

const ClassDescription* Model::findClass(const std::string& name) const
{
    const auto found = positions.find(name);
    return found != positions.end() ? &classes[found->second] : nullptr;
}

std::vector<std::string> Model::childClassesOf(const std::string& parentClass) const
{
    std::vector<std::string> children;
    for (const ClassDescription& candidate : classes) {
        if (candidate.canBeIn(parentClass)) {
            children.push_back(candidate.name);
        }
    }
    return children;
}

bool operator==(const Model& left, const Model& right)
{
    const auto same = [](const ClassDescription& one, const ClassDescription& other) {
        return one.name == other.name && one.parents == other.parents && one.implementer == other.implementer &&
               areSame(one.attributes, other.attributes);
    };
    return std::equal(left.getClasses().begin(), left.getClasses().end(), right.getClasses().begin(),
                      right.getClasses().end(), same);
}

}  // namespace ZorvInput
