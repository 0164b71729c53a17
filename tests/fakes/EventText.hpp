/// The values of events as one line of text with every field, for whole comparison.
#pragma once

#include <string>

namespace ZorvFakes {

/// The value of a northbound event (alarm, heartbeat, alarm-list-rebuilt; versions 3 and 2), e.g.
/// "{dn='ManagedElement=1' majorType=1 minorType=2 eventTime=3 additionalText='x' severity=5
///   additionalInfo=['a'='1','b'='2']} stateful=true seqNo=1 eventType=2 probableCause=3 specificProblem='y' alarmId=4
///   originalEventTime=5 originalAdditionalText='x' originalSeverity=5" in one line. A null text reads null, an empty
/// pair array "null". The value of any other event type gives an empty text.
std::string eventText(const std::string& eventType, const void* value);

}  // namespace ZorvFakes
