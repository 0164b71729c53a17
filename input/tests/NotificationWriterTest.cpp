#include "notification/NotificationWriter.hpp"

#include <gmock/gmock.h>

#include "notification/NotificationReader.hpp"

namespace ZorvInput {

namespace {

FmNotification read(const std::string& text)
{
    JsonDocumentT document;
    parseJson(text, 8, document);
    JsonFields object(document);
    FmNotification notification = readNotification(object, 0);
    object.expectNoOther();
    return notification;
}

void expectEqual(const FmNotification& left, const FmNotification& right)
{
    EXPECT_EQ(left.framework, right.framework);
    EXPECT_EQ(left.version, right.version);
    EXPECT_EQ(left.dn, right.dn);
    EXPECT_EQ(left.majorType, right.majorType);
    EXPECT_EQ(left.minorType, right.minorType);
    EXPECT_EQ(left.eventTime, right.eventTime);
    EXPECT_EQ(left.text, right.text);
    EXPECT_EQ(left.severity, right.severity);
    EXPECT_EQ(left.info, right.info);
}

}  // namespace

TEST(NotificationWriterTest, whatIsLeftOutIsNotWritten)
{
    FmNotification it;
    it.dn = "P=1";
    it.severity = 4;

    EXPECT_EQ(R"({"alert":{"dn":"P=1","majorType":0,"minorType":0,"severity":"MAJOR"}})",
              notificationJson("alert", it));
}

TEST(NotificationWriterTest, everyFieldIsWritten)
{
    const FmNotification it = {FmFramework::zorv, 1, "P=1", 2, 3, 4, "text", -9, {{"b", "1"}, {"a", "2"}}};

    EXPECT_EQ(R"({"raise":{"dn":"P=1","majorType":2,"minorType":3,"severity":-9,"text":"text",)"
              R"("info":[["b","1"],["a","2"]],"eventTime":4},"framework":"zorv","version":1})",
              notificationJson("raise", it));
}

TEST(NotificationWriterTest, aClearIsWrittenWithoutItsSeverity)
{
    FmNotification it;
    it.dn = "P=1";

    EXPECT_EQ(R"({"clear":{"dn":"P=1","majorType":0,"minorType":0}})", notificationJson("clear", it));
}

TEST(NotificationWriterTest, theReaderTakesWhatItWrites)
{
    for (const auto& [framework, version] : std::vector<std::pair<FmFramework, int>>{{FmFramework::zorv, 1},
                                                                                     {FmFramework::zorv, 2},
                                                                                     {FmFramework::yalt, 1},
                                                                                     {FmFramework::yalt, 2},
                                                                                     {FmFramework::yalt, 4}}) {
        for (const std::int32_t severity : {0, 1, 5, 6, INT32_MIN}) {
            FmNotification it = {framework, version, "Port=\"\xC3\xBC\"\n", UINT32_MAX, 7, UINT64_MAX, "a\tb",
                                 severity,  {}};
            if (version == 4) {
                it.info = {{"b", ""}, {"", "\\"}, {"b", "2"}};
            }
            expectEqual(it, read(notificationJson(severity == 0 ? "clear" : "raise", it)));
            expectEqual(it, read(notificationJson("alert", it)));
        }
    }
}

}  // namespace ZorvInput
