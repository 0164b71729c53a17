#include "FakeModelRepository.hpp"

namespace ZorvFakes {

namespace {

const ZorvOamSpiModelRepository_1T theTable = {forward<&FakeModelRepository::getClass>};

}  // namespace

FakeModelRepository::FakeModelRepository(Journal& theJournal) : Fake(theJournal, Topic::Model)
{
}

const ZorvOamSpiModelRepository_1T* FakeModelRepository::table()
{
    return &theTable;
}

void FakeModelRepository::describe(const std::string& className, const std::vector<std::string>& childClasses,
                                   const std::vector<Attribute>& attributes)
{
    const std::lock_guard<std::mutex> lock(mutex);
    Class& place = classes.emplace_back(Class{className, childClasses, attributes, {}, {}, {}});
    for (const std::string& child : place.childClasses) {
        place.childForms.push_back(child.c_str());
    }
    for (const Attribute& attribute : place.attributes) {
        place.attributeForms.push_back(
            {attribute.name.c_str(), attribute.type, attribute.isSequence, attribute.isReadOnly});
    }
    place.form = {place.name.c_str(), place.childForms.data(), static_cast<uint32_t>(place.childForms.size()),
                  place.attributeForms.data(), static_cast<uint32_t>(place.attributeForms.size())};
}

int32_t FakeModelRepository::getClass(const char* className, const ZorvOamSpiModelClass_1T** description)
{
    return answer(std::string("getClass ") + className, [&](std::string&) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        for (const Class& known : classes) {
            if (known.name == className) {
                *description = &known.form;
                return ZORV_RETURN_OK;
            }
        }
        return ZORV_RETURN_NOT_FOUND;
    });
}

}  // namespace ZorvFakes
