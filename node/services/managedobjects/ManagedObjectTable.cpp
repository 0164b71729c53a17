#include "services/managedobjects/ManagedObjectTable.hpp"

namespace ZorvNode {

namespace {

using ServiceT = ManagedObjectService;

/// Refuses null arguments; a refusal by the service is its return code.
template <class OperationT, class... ArgumentT>
YaltReturnT call(const char* where, OperationT operation, const ArgumentT*... arguments)
{
    if (hasNull({arguments...})) {
        return ZORV_RETURN_FAILED;
    }
    return TableBinding<ServiceT>::call(where, [&](ServiceT& objects) -> ZorvReturnT {
        try {
            operation(objects);
            return ZORV_RETURN_OK;
        } catch (const MoError& e) {
            return e.code;
        }
    });
}

YaltReturnT newMoIterator(unsigned long txHandle, const char* parentDn, const char* className, uint64_t* iteratorId)
{
    return call(
        "newMoIterator", [&](ServiceT& objects) { *iteratorId = objects.newIterator(txHandle, parentDn, className); },
        parentDn, className, iteratorId);
}

YaltReturnT nextMo(uint64_t iteratorId, const char** name)
{
    return call(
        "nextMo",
        [&](ServiceT& objects) {
            const char* const next = objects.next(iteratorId);
            if (next == nullptr) {
                throw MoError(ZORV_RETURN_NOT_FOUND, "no more objects");
            }
            *name = next;
        },
        name);
}

YaltReturnT finalizeMoIterator(uint64_t iteratorId)
{
    return call("finalizeMoIterator", [&](ServiceT& objects) { objects.finalizeIterator(iteratorId); });
}

YaltReturnT existsMo(unsigned long txHandle, const char* dn, bool* exists)
{
    return call(
        "existsMo", [&](ServiceT& objects) { *exists = objects.exists(txHandle, dn); }, dn, exists);
}

YaltReturnT countMoChildren(unsigned long txHandle, const char* dn, const char* className, uint64_t* count)
{
    return call(
        "countMoChildren", [&](ServiceT& objects) { *count = objects.countChildren(txHandle, dn, className); }, dn,
        className, count);
}

YaltReturnT getMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                           YaltOamSpiMoAttributeResult_3T* result)
{
    return call(
        "getMoAttribute", [&](ServiceT& objects) { objects.getAttribute(txHandle, dn, attributeName, *result); }, dn,
        attributeName, result);
}

YaltReturnT getMoAttributes(unsigned long txHandle, const char* dn, const char* const* attributeNames,
                            YaltOamSpiMoAttributesResult_3T* results)
{
    return call(
        "getMoAttributes", [&](ServiceT& objects) { objects.getAttributes(txHandle, dn, attributeNames, *results); },
        dn, attributeNames, results);
}

YaltReturnT setMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                           const YaltOamSpiMoAttribute_3T* attribute)
{
    return call(
        "setMoAttribute", [&](ServiceT& objects) { objects.setAttribute(txHandle, dn, attributeName, *attribute); }, dn,
        attributeName, attribute);
}

YaltReturnT createMo(unsigned long txHandle, const char* parentDn, const char* className, const char* keyValue,
                     const YaltOamSpiMoNamedAttribute_3T* attributes, uint32_t numberOfAttributes)
{
    if (attributes == nullptr && numberOfAttributes > 0) {
        return ZORV_RETURN_FAILED;
    }
    return call(
        "createMo",
        [&](ServiceT& objects) {
            objects.create(txHandle, parentDn, className, keyValue, attributes, numberOfAttributes);
        },
        parentDn, className, keyValue);
}

YaltReturnT deleteMo(unsigned long txHandle, const char* dn)
{
    return call(
        "deleteMo", [&](ServiceT& objects) { objects.remove(txHandle, dn); }, dn);
}

YaltReturnT action(unsigned long txHandle, const char* dn, const char* actionName,
                   const YaltOamSpiMoNamedAttribute_3T* parameters, uint32_t numberOfParameters,
                   YaltOamSpiMoAttributeResult_3T* result)
{
    return call(
        "action",
        [&](ServiceT& objects) { objects.action(txHandle, dn, actionName, parameters, numberOfParameters, *result); },
        dn, actionName, result);
}

}  // namespace

const YaltOamSpiManagedObject_3T* ManagedObjectTable::table()
{
    static const YaltOamSpiManagedObject_3T functions = {
        &newMoIterator,   &nextMo,         &finalizeMoIterator, &existsMo, &countMoChildren, &getMoAttribute,
        &getMoAttributes, &setMoAttribute, &createMo,           &deleteMo, &action,
    };
    return &functions;
}

}  // namespace ZorvNode
