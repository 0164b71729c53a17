/// A component's descriptor with the arrays that it points to.
///
/// Ownership: the arrays are this object's, the identities in them are those of the vectors it was built from.
#pragma once

#include <vector>

#include "ZorvMgmtSpiComponent_1.h"

namespace Zorv {

class ComponentDescriptor {
public:
    using IdentitiesT = std::vector<ZorvMgmtSpiInterface_1>;

    ComponentDescriptor() = default;
    ComponentDescriptor(const ComponentDescriptor&) = delete;
    ComponentDescriptor& operator=(const ComponentDescriptor&) = delete;

    /// Fills names and null-terminated arrays; the vectors must outlive the registration.
    void describe(const char* componentName, const IdentitiesT& offered, const IdentitiesT& required,
                  const IdentitiesT& optional);

    /// The callbacks are the component frame's to set.
    ZorvMgmtSpiComponent_1T spi{};

private:
    using ArrayT = std::vector<const ZorvMgmtSpiInterface_1*>;

    static ArrayT toArray(const IdentitiesT& identities);

    ArrayT offeredArray;
    ArrayT requiredArray;
    ArrayT optionalArray;
};

}  // namespace Zorv
