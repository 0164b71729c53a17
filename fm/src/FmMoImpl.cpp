#include "FmMoImpl.hpp"

#include <string_view>

#include "Logging.hpp"
#include "Portal.hpp"

namespace ZorvFm {
namespace {

constexpr const char* componentName = "ZorvFmMoImplComponent";
constexpr const char* resourceInterface = "YaltOamSpiTransactionalResource";
constexpr const char* managedObjectInterface = "YaltOamSpiManagedObject";
constexpr const char* transactionInterface = "YaltOamSpiTransaction";

const Zorv::ComponentDescriptor::IdentitiesT offeredIdentities = {{componentName, resourceInterface, "1"},
                                                                  {componentName, managedObjectInterface, "3"}};

}  // namespace

FmMoImpl::FmMoImpl() : YaltComponent(componentName), managedObject(alarmMoImpl), transactionalResource(alarmMoImpl)
{
    offered = offeredIdentities;
}

YaltReturnT FmMoImpl::initialize(const char* /*config*/)
{
    ZORV_TRACE(" >> ");
    ZORV_TRACE(" << ");
    return ZORV_RETURN_OK;
}

YaltReturnT FmMoImpl::start(YaltStateChangeReason reason)
{
    ZORV_TRACE(" >> Reason: %d", static_cast<int>(reason));
    ZORV_TRACE(" >> Try to get interface %s", transactionInterface);
    const auto* service = Zorv::Portal::instance().get<YaltOamSpiTransaction_1>("YaltOamSpiTransactionService",
                                                                                transactionInterface, "1");
    if (service == nullptr) {
        ZORV_ERROR("Failed to get interface %s", transactionInterface);
        return ZORV_RETURN_FAILED;
    }
    alarmMoImpl.setTxResource(&transactionalResource.getInterface());
    alarmMoImpl.setTxService(service);
    ZORV_TRACE(" << ");
    return ZORV_RETURN_OK;
}

YaltReturnT FmMoImpl::stop(YaltStateChangeReason reason)
{
    ZORV_TRACE(" >> Reason: %d", static_cast<int>(reason));
    alarmMoImpl.setTxService(nullptr);
    alarmMoImpl.setTxResource(nullptr);
    ZORV_TRACE(" << ");
    return ZORV_RETURN_OK;
}

YaltReturnT FmMoImpl::terminate()
{
    ZORV_TRACE(" >> ");
    ZORV_TRACE(" << ");
    return ZORV_RETURN_OK;
}

const void* FmMoImpl::getInterface(const ZorvMgmtSpiInterface_1& identity) const
{
    const std::string_view wanted = identity.interfaceName;
    if (wanted == managedObjectInterface) {
        return &managedObject.getInterface();
    }
    return wanted == resourceInterface ? &transactionalResource.getInterface() : nullptr;
}

}  // namespace ZorvFm
