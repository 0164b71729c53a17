#include "ComponentDescriptor.hpp"

namespace Zorv {

void ComponentDescriptor::describe(const char* componentName, const IdentitiesT& offered, const IdentitiesT& required,
                                   const IdentitiesT& optional)
{
    offeredArray = toArray(offered);
    requiredArray = toArray(required);
    optionalArray = toArray(optional);
    spi.componentName = componentName;
    spi.offeredInterfaces = offeredArray.data();
    spi.requiredInterfaces = requiredArray.data();
    spi.optionalInterfaces = optionalArray.data();
}

ComponentDescriptor::ArrayT ComponentDescriptor::toArray(const IdentitiesT& identities)
{
    ArrayT array;
    array.reserve(identities.size() + 1);
    for (const ZorvMgmtSpiInterface_1& identity : identities) {
        array.push_back(&identity);
    }
    array.push_back(nullptr);
    return array;
}

}  // namespace Zorv
