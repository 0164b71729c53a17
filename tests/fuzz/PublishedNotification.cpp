/// One notification as JSON, as applications publish and scenarios play it: any text is refused with a reason in one line,
/// or makes a notification that reads the same when it is written as JSON again.
#include "FuzzTarget.hpp"
#include "files/LineText.hpp"
#include "notification/NotificationReader.hpp"
#include "notification/NotificationWriter.hpp"
#include "json/Utf8.hpp"

using namespace ZorvFuzz;
using namespace ZorvInput;

namespace {

constexpr unsigned deepestBody = 16;

struct Read {
    std::string kind;
    FmNotification notification;
};

Read read(const std::string& text)
{
    JsonDocumentT document;
    parseJson(text, deepestBody, document);
    if (!document.IsObject()) {
        throw ValueError("not an object");
    }
    JsonFields fields(document);
    Read found;
    found.notification = readNotification(fields, 0);
    fields.expectNoOther();
    found.kind = fields.has("raise") ? "raise" : fields.has("clear") ? "clear" : "alert";
    return found;
}

std::string textOf(const FmNotification& notification)
{
    std::string text = std::to_string(notification.framework == FmFramework::zorv) + "|" +
                       std::to_string(notification.version) + "|" + notification.dn + "|" +
                       std::to_string(notification.majorType) + "|" + std::to_string(notification.minorType) + "|" +
                       std::to_string(notification.eventTime) + "|" + notification.text + "|" +
                       std::to_string(notification.severity);
    for (const auto& [name, value] : notification.info) {
        text += "|" + name + "|" + value;
    }
    return text;
}

void check(const Read& found)
{
    const std::string written = notificationJson(found.kind, found.notification);
    require(isUtf8(written), "what is written is UTF-8");
    const Read again = read(written);
    require(found.kind == again.kind, "the kind is kept");
    requireEqual(textOf(found.notification), textOf(again.notification), "what is written reads the same");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Read found;
    try {
        found = read(ZorvFuzz::textOf(data, size));
    } catch (const ValueError& e) {
        requireEqual(toLineText(e.what()), e.what(), "a refusal is one line");
        return 0;
    }
    check(found);
    return 0;
}
