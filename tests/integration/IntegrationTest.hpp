/// What the integration tests stand on: a middleware of fakes with a planted model, and words for what applications send
/// and what comes of it.
///
/// The loaded library lives in real time: tests wait for what is to come, and replace the time of day in log records.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "FmLibrary.hpp"
#include "TemporaryDirectory.hpp"
#include "YaltOamSpiNotificationFm_2.h"
#include "YaltOamSpiNotificationFm_4.h"
#include "ZorvOamApiFmAlarmListRebuilt_2.h"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"
#include "ZorvOamApiFmHeartbeat_2.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"

namespace ZorvIntegration {

constexpr std::uint64_t timeOfAlarms = 1700000000000000000;

class IntegrationTest : public testing::Test {
protected:
    using Entries = ZorvFakes::Journal::Entries;

    IntegrationTest()
    {
        setenv("TZ", "UTC0", 1);
        configure("");
    }

    /// Gives the next initialization these parameters.
    void configure(const std::string& parameters) const
    {
        folder.write("fm.xml", "<ZorvFmComponent>" + parameters + "</ZorvFmComponent>");
    }

    std::string configFile() const { return folder.path("fm.xml"); }

    /// Waits until this is the latest entry, and takes all.
    static Entries takeUpTo(const std::string& last, ZorvFakes::Journal& journal)
    {
        EXPECT_TRUE(journal.waitFor([&](const Entries& entries) {
            return !entries.empty() && withoutTimeOfDay({entries.back()}).back() == last;
        })) << last;
        return withoutTimeOfDay(journal.take());
    }

    /// Times of day read "now".
    static Entries withoutTimeOfDay(Entries entries)
    {
        const std::string stamp = "<LogTimestamp>";
        for (std::string& entry : entries) {
            const std::size_t place = entry.find(stamp);
            if (place != std::string::npos) {
                const std::size_t begin = place + stamp.size();
                entry.replace(begin, entry.find('<', begin) - begin, "now");
            }
        }
        return entries;
    }

private:
    const ZorvTest::TemporaryDirectory folder;
};

}  // namespace ZorvIntegration
