/// The component that makes the active alarms readable as managed objects.
///
/// Threads:   start and stop by the middleware, one at a time; the published tables from any thread.
/// Ownership: owns the implementer and its tables; lives until the library is unloaded.
/// Failure:   start answers -1 without a transaction service.
#pragma once

#include "FmAlarmMoImpl.hpp"
#include "YaltComponent.hpp"
#include "YaltInterfaceBinders.hpp"

namespace ZorvFm {

class FmMoImpl : public Zorv::YaltComponent<FmMoImpl> {
public:
    YaltReturnT initialize(const char* config) override;
    YaltReturnT start(YaltStateChangeReason reason) override;
    YaltReturnT stop(YaltStateChangeReason reason) override;
    YaltReturnT terminate() override;

    const void* getInterface(const ZorvMgmtSpiInterface_1& identity) const override;

    FmAlarmMoImpl& getAlarmMoImpl() { return alarmMoImpl; }

private:
    friend class Zorv::ComponentFrame<FmMoImpl>;
    FmMoImpl();

    FmAlarmMoImpl alarmMoImpl;
    Zorv::ManagedObject3Binder<FmAlarmMoImpl> managedObject;
    Zorv::TransactionalResource1Binder<FmAlarmMoImpl> transactionalResource;
};

}  // namespace ZorvFm
