/// The model repository: the classes that a test describes, and "" for the root. Entries: "getClass FmAlarm -> 0".
#pragma once

#include <list>
#include <mutex>
#include <string>
#include <vector>

#include "Fake.hpp"
#include "ZorvOamSpiModelRepository_1.h"

namespace ZorvFakes {

class FakeModelRepository : public Fake<FakeModelRepository> {
public:
    struct Attribute {
        std::string name;
        int32_t type;
        bool isSequence = false;
        bool isReadOnly = false;
    };

    explicit FakeModelRepository(Journal& journal);

    static const ZorvOamSpiModelRepository_1T* table();

    /// Describes a class. Descriptions stay for the life of this object.
    void describe(const std::string& className, const std::vector<std::string>& childClasses,
                  const std::vector<Attribute>& attributes);

    // The operation behind the table.
    int32_t getClass(const char* className, const ZorvOamSpiModelClass_1T** description);

private:
    struct Class {
        std::string name;
        std::vector<std::string> childClasses;
        std::vector<Attribute> attributes;
        std::vector<const char*> childForms;
        std::vector<ZorvOamSpiModelAttribute_1T> attributeForms;
        ZorvOamSpiModelClass_1T form{};
    };

    std::mutex mutex;
    std::list<Class> classes;  // guarded by mutex; never moved
};

}  // namespace ZorvFakes
