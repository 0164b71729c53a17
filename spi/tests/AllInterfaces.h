/**
 * All published interfaces.
 */
#ifndef ZORV_ALL_INTERFACES_H
#define ZORV_ALL_INTERFACES_H

#include "YaltMwSpiTrace_1.h"
#include "YaltNameValuePair.h"
#include "YaltOamSpiCmEvent_1.h"
#include "YaltOamSpiManagedObject_3.h"
#include "YaltOamSpiNotificationFm_1.h"
#include "YaltOamSpiNotificationFm_2.h"
#include "YaltOamSpiNotificationFm_4.h"
#include "YaltOamSpiTransaction_1.h"
#include "YaltOamSpiTransactionalResource_1.h"
#include "ZorvMgmtSpiComponent_1.h"
#include "ZorvMgmtSpiInterface_1.h"
#include "ZorvMgmtSpiLibrary_1.h"
#include "ZorvMgmtSpiPortalAccessor_1.h"
#include "ZorvMgmtSpiPortal_1.h"
#include "ZorvMgmtSpiPortal_3.h"
#include "ZorvMwSpiLog_1.h"
#include "ZorvMwSpiReplicatedList_1.h"
#include "ZorvOamApiFmAlarmBlock.h"
#include "ZorvOamApiFmAlarmListRebuilt_2.h"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"
#include "ZorvOamApiFmHeartbeat_2.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"
#include "ZorvOamSpiEventRouter_1.h"
#include "ZorvOamSpiFmAlarmSuppress_1.h"
#include "ZorvOamSpiModelRepository_1.h"
#include "ZorvOamSpiTransactionMaster_1.h"
#include "ZorvReturn.h"
#include "ZorvStateChangeReason.h"

#endif
