/// One alarm or alert on its way through the component: from an application's notification, completed from the alarm
/// model, to the active alarm list, the log and the northbound notifications.
///
/// Threads:   a value; each copy belongs to one thread at a time.
/// Ownership: everything is copied, nothing of a notification structure is kept.
/// Failure:   none; a notification without DN makes an alarm without DN, and an error line.
#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <utility>

#include "YaltOamSpiNotificationFm_1.h"
#include "YaltOamSpiNotificationFm_2.h"
#include "YaltOamSpiNotificationFm_4.h"

namespace ZorvFm {

/// Additional information in the order received: pairs of name and value.
using AdditionalInfoT = std::list<std::pair<std::string, std::string>>;

class AlarmData {
public:
    AlarmData() = default;
    explicit AlarmData(const YaltOamSpiNotificationFmStruct& notification);
    explicit AlarmData(const YaltOamSpiNotificationFmStruct_2& notification);
    explicit AlarmData(const YaltOamSpiNotificationFmStruct_4& notification);

    /// Copies take additional text and additional information as the source shows them.
    AlarmData(const AlarmData& other);
    AlarmData& operator=(const AlarmData& other);

    virtual ~AlarmData() = default;

    /// All fields in one line, for traces and log lines.
    virtual std::string toString() const;

    virtual void setAdditionalText(const std::string& text) { additionalText = text; }
    virtual std::string getAdditionalText() const { return additionalText; }
    virtual void setAdditionalTextForClear(const std::string& text) { additionalTextForClear = text; }
    virtual const std::string& getAdditionalTextForClear() const { return additionalTextForClear; }
    virtual AdditionalInfoT getAdditionalInfo() const { return additionalInfo; }

    void assign(const AlarmData& other);

    /// Same alarm: equal dn, majorType and minorType.
    bool operator==(const AlarmData& other) const;
    bool operator!=(const AlarmData& other) const { return !(*this == other); }

    bool isAdditionalTextEqual(const AlarmData& other) const { return additionalText == other.additionalText; }

    /// The order of the pairs does not matter.
    bool isAdditionalInfoEqual(const AlarmData& other) const;

    bool isSevEqualConfiguredSev(std::uint32_t configured) const
    {
        return severity == static_cast<std::int32_t>(configured);
    }

    void addAdditionalInfo(const std::string& name, const std::string& value);
    void setAdditionalInfo(const YaltOamSpiFmAdditionalInfoContainer& container);
    void setAdditionalInfo(const AdditionalInfoT& info) { additionalInfo = info; }

    const char* getSeverity() const { return getSeverity(severity); }
    const char* getOriginalSeverity() const { return getSeverity(originalSeverity); }
    static const char* getSeverity(std::int32_t severity);
    const char* getEventType() const;

    /// Local time with milliseconds and zone, for people. @param nanos since 1970-01-01 UTC
    static std::string formatTimeStr(std::uint64_t nanos);
    std::string getEventTimeStr() const { return formatTimeStr(eventTime); }
    std::string getOriginalEventTimeStr() const { return formatTimeStr(originalEventTime); }

    static std::string xmlEncode(std::string_view text);
    std::string additionalInfoToString() const;

    /// The alarm log record, stamped with the time of day.
    std::string toLogString() const;

    std::string dn;  // of the alarming resource
    std::uint32_t majorType = 0;
    std::uint32_t minorType = 0;
    std::string originalAdditionalText;
    std::int32_t severity = YALT_FM_SEVERITY_CLEARED;
    std::int32_t originalSeverity = YALT_FM_SEVERITY_CLEARED;
    std::uint64_t eventTime = 0;          // ns
    std::uint64_t originalEventTime = 0;  // ns
    std::uint64_t clearEventTime = 0;     // ns; 0 while not cleared
    bool hasConfiguredSeverity = false;
    std::uint32_t configuredSeverity = YALT_FM_SEVERITY_INDETERMINATE;
    std::uint64_t seqNo = 0;          // of the latest notification sent; 0: none yet
    std::uint64_t originalSeqNo = 0;  // of the first notification sent
    std::uint64_t alarmId = 0;        // in the active alarm list; 0: not assigned
    bool stateful = false;            // an alarm, raised and cleared; otherwise an alert
    std::int32_t eventType = 0;       // ITU-T X.733, 1 to 11
    std::uint32_t probableCause = 0;  // ITU-T X.733, M.3100
    std::string specificProblem = "Unknown alarm";
    AdditionalInfoT additionalInfo;
    std::string additionalText;
    std::string additionalTextForClear;

private:
    template <class NotificationT>
    void fill(const NotificationT& notification, std::uint64_t time);

    void appendLogBody(std::string& record) const;
};

}  // namespace ZorvFm
