#include "MoAccessor.hpp"

#include "DnUtil.hpp"
#include "Logging.hpp"
#include "Portal.hpp"
#include "ZorvException.hpp"

namespace Zorv {
namespace {

/// How a C++ type lies in an attribute value.
template <class ValueT>
struct AttributeTraits;

template <>
struct AttributeTraits<std::uint32_t> {
    static constexpr std::int32_t type = YALT_MO_ATTRIBUTE_UINT32;
    static std::uint32_t get(const YaltOamSpiMoAttributeValue_3T& value)
    {
        return static_cast<std::uint32_t>(value.uintValue);
    }
    static void set(YaltOamSpiMoAttributeValue_3T& value, std::uint32_t number) { value.uintValue = number; }
};

template <>
struct AttributeTraits<std::uint64_t> {
    static constexpr std::int32_t type = YALT_MO_ATTRIBUTE_UINT64;
    static std::uint64_t get(const YaltOamSpiMoAttributeValue_3T& value) { return value.uintValue; }
    static void set(YaltOamSpiMoAttributeValue_3T& value, std::uint64_t number) { value.uintValue = number; }
};

template <>
struct AttributeTraits<bool> {
    static constexpr std::int32_t type = YALT_MO_ATTRIBUTE_BOOL;
    static bool get(const YaltOamSpiMoAttributeValue_3T& value) { return value.boolValue; }
};

template <>
struct AttributeTraits<Enumeration> {
    static constexpr std::int32_t type = YALT_MO_ATTRIBUTE_ENUM;
    static Enumeration get(const YaltOamSpiMoAttributeValue_3T& value) { return Enumeration{value.enumValue}; }
};

template <>
struct AttributeTraits<std::string> {
    static constexpr std::int32_t type = YALT_MO_ATTRIBUTE_STRING;
    static std::string get(const YaltOamSpiMoAttributeValue_3T& value) { return value.stringValue; }
    static void set(YaltOamSpiMoAttributeValue_3T& value, const std::string& text) { value.stringValue = text.c_str(); }
};

/// Gives a read result back when the reading is over, by whichever way.
class ResultGuard {
public:
    explicit ResultGuard(YaltOamSpiMoAttributeResult_3T& readResult) : result(readResult) {}
    ~ResultGuard() { result.releaseAttrResultCB(&result); }

    ResultGuard(const ResultGuard&) = delete;
    ResultGuard& operator=(const ResultGuard&) = delete;

private:
    YaltOamSpiMoAttributeResult_3T& result;
};

}  // namespace

MoAccessor::MoAccessor(std::int32_t lockPolicyValue, std::uint32_t timeoutSeconds)
    : lockPolicy(lockPolicyValue),
      timeout(timeoutSeconds)
{
}

void MoAccessor::open()
{
    if (transaction) {
        return;
    }
    moSpi =
        Portal::instance().get<ZorvOamSpiManagedObject_3T>("ZorvOamSpiCmRouterService", "ZorvOamSpiManagedObject", "3");
    if (moSpi == nullptr) {
        throw ZorvException("Managed object service is missing");
    }
    transaction.emplace(lockPolicy, timeout);
}

ZorvReturnT MoAccessor::commit()
{
    if (!transaction) {
        return ZORV_RETURN_OK;
    }
    const ZorvReturnT result = transaction->commit();
    close();
    return result;
}

void MoAccessor::close()
{
    transaction.reset();
}

ZorvReturnT MoAccessor::getFirstMoInstance(const std::string& classPath, std::string& dn)
{
    open();
    return findBelow("", classPath, dn);
}

ZorvReturnT MoAccessor::findBelow(const std::string& parentDn, const std::string& classPath, std::string& dn)
{
    const std::size_t comma = classPath.find(',');
    std::list<std::string> instances;
    const ZorvReturnT result = listChildren(parentDn, classPath.substr(0, comma), instances);
    if (result != ZORV_RETURN_OK) {
        return result;
    }
    for (const std::string& instance : instances) {
        if (comma == std::string::npos) {
            dn = instance;
            return ZORV_RETURN_OK;
        }
        if (findBelow(instance, classPath.substr(comma + 1), dn) == ZORV_RETURN_OK) {
            return ZORV_RETURN_OK;
        }
    }
    return ZORV_RETURN_NOT_FOUND;
}

void MoAccessor::getChildren(const std::string& parentDn, const std::string& className,
                             std::list<std::string>& children)
{
    open();
    const ZorvReturnT result = listChildren(parentDn, className, children);
    if (result != ZORV_RETURN_OK) {
        throw ZorvException("Failed to get children '%s' of MO :%s, reason (%d )!", className.c_str(), parentDn.c_str(),
                            result);
    }
}

ZorvReturnT MoAccessor::listChildren(const std::string& parentDn, const std::string& className,
                                     std::list<std::string>& children)
{
    std::uint64_t iterator = 0;
    ZorvReturnT result = moSpi->newMoIterator(transaction->getHandle(), parentDn.c_str(), className.c_str(), &iterator);
    if (result != ZORV_RETURN_OK) {
        return result;
    }
    const char* name = nullptr;
    while ((result = moSpi->nextMo(iterator, &name)) == ZORV_RETURN_OK) {
        children.push_back(DnUtil::childDn(parentDn, name));
    }
    moSpi->finalizeMoIterator(iterator);
    return result == ZORV_RETURN_NOT_FOUND ? ZORV_RETURN_OK : result;
}

template <class ValueT>
std::optional<ValueT> MoAccessor::read(const std::string& dn, const std::string& attribute)
{
    open();
    YaltOamSpiMoAttributeResult_3T result{};
    const ZorvReturnT code = moSpi->getMoAttribute(transaction->getHandle(), dn.c_str(), attribute.c_str(), &result);
    if (code != ZORV_RETURN_OK) {
        throw ZorvException("Failed to write '%s' from MO ( error:%d )!", attribute.c_str(), code);
    }
    const ResultGuard guard(result);
    const YaltOamSpiMoAttribute_3T& value = *result.attribute;
    if (value.numberOfValues > 1) {
        throw ZorvException("Attribute is a sequence: %s::%s", dn.c_str(), attribute.c_str());
    }
    if (value.numberOfValues == 0) {
        return std::nullopt;
    }
    if (value.type != AttributeTraits<ValueT>::type) {
        throw ZorvException("Attribute has another type: %s::%s", dn.c_str(), attribute.c_str());
    }
    return AttributeTraits<ValueT>::get(value.values[0]);
}

template <class ValueT>
ValueT MoAccessor::getAttr(const std::string& dn, const std::string& attribute)
{
    ZORV_TRACE("MoAccessor::getAttr<> dName :%s attrName :%s", dn.c_str(), attribute.c_str());
    const std::optional<ValueT> value = read<ValueT>(dn, attribute);
    if (!value) {
        throw ZorvException("Attribute has no value set: %s::%s", dn.c_str(), attribute.c_str());
    }
    return *value;
}

template <class ValueT>
std::optional<ValueT> MoAccessor::getOptionalAttr(const std::string& dn, const std::string& attribute)
{
    ZORV_TRACE("MoAccessor::getOptionalAttr<> dName :%s attrName :%s", dn.c_str(), attribute.c_str());
    return read<ValueT>(dn, attribute);
}

template <class ValueT>
ZorvReturnT MoAccessor::setAttr(const std::string& dn, const std::string& attribute, const ValueT& value)
{
    ZORV_TRACE("MoAccessor::setAttr<> dName :%s attrName :%s", dn.c_str(), attribute.c_str());
    open();
    YaltOamSpiMoAttributeValue_3T single{};
    AttributeTraits<ValueT>::set(single, value);
    const YaltOamSpiMoAttribute_3T typed{AttributeTraits<ValueT>::type, 1, &single};
    const ZorvReturnT result = moSpi->setMoAttribute(transaction->getHandle(), dn.c_str(), attribute.c_str(), &typed);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Failed to set attribute :'%s' in MO :%s, reason (%d )!", attribute.c_str(), dn.c_str(), result);
    }
    return result;
}

template std::uint32_t MoAccessor::getAttr(const std::string& dn, const std::string& attribute);
template std::uint64_t MoAccessor::getAttr(const std::string& dn, const std::string& attribute);
template bool MoAccessor::getAttr(const std::string& dn, const std::string& attribute);
template Enumeration MoAccessor::getAttr(const std::string& dn, const std::string& attribute);
template std::string MoAccessor::getAttr(const std::string& dn, const std::string& attribute);

template std::optional<std::uint32_t> MoAccessor::getOptionalAttr(const std::string& dn, const std::string& attribute);
template std::optional<Enumeration> MoAccessor::getOptionalAttr(const std::string& dn, const std::string& attribute);
template std::optional<std::string> MoAccessor::getOptionalAttr(const std::string& dn, const std::string& attribute);

template ZorvReturnT MoAccessor::setAttr(const std::string& dn, const std::string& attribute,
                                         const std::uint32_t& value);
template ZorvReturnT MoAccessor::setAttr(const std::string& dn, const std::string& attribute,
                                         const std::uint64_t& value);
template ZorvReturnT MoAccessor::setAttr(const std::string& dn, const std::string& attribute, const std::string& value);

}  // namespace Zorv
