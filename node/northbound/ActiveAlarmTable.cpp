#include "northbound/ActiveAlarmTable.hpp"

#include <algorithm>

#include "files/LineText.hpp"
#include "model/Dn.hpp"
#include "model/ValueText.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

const char* const alarmClass = "FmAlarm";

std::size_t widthOf(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

void printRow(std::ostream& out, const std::vector<std::string>& row, const std::vector<std::size_t>& widths)
{
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
        line += row[column] + std::string(widths[column] - widthOf(row[column]) + 2, ' ');
    }
    out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
}

}  // namespace

void ActiveAlarmTable::print(std::ostream& out) const
{
    std::vector<RowT> rows{columns()};
    management.transact([&](unsigned long txHandle) {
        std::vector<std::string> parents{""};
        for (const char* className : {"ManagedElement", "SystemFunctions", "Fm", alarmClass}) {
            std::vector<std::string> found;
            for (const std::string& parent : parents) {
                const auto children = childrenOf(txHandle, parent, className);
                found.insert(found.end(), children.begin(), children.end());
            }
            parents.swap(found);
        }
        for (const std::string& dn : parents) {
            rows.push_back(readRow(txHandle, dn, rows.front()));
        }
    });
    std::vector<std::size_t> widths(rows.front().size(), 0);
    for (const RowT& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], widthOf(row[column]));
        }
    }
    out << "active alarms: " << rows.size() - 1 << '\n';
    for (const RowT& row : rows) {
        printRow(out, row, widths);
    }
    out.flush();
}

ActiveAlarmTable::RowT ActiveAlarmTable::columns() const
{
    const ZorvOamSpiModelClass_1T* description = nullptr;
    if (repository.getClass(alarmClass, &description) != ZORV_RETURN_OK) {
        throw MoError(ZORV_RETURN_NOT_FOUND, "the model has no class, \"" + std::string(alarmClass) + "\"");
    }
    RowT names;
    for (std::uint32_t index = 0; index < description->numberOfAttributes; ++index) {
        names.emplace_back(description->attributes[index].name);
    }
    return names;
}

std::vector<std::string> ActiveAlarmTable::childrenOf(unsigned long txHandle, const std::string& parentDn,
                                                      const std::string& className) const
{
    std::vector<std::string> children;
    const std::uint64_t iterator = objects.newIterator(txHandle, parentDn, className);
    while (const char* name = objects.next(iterator)) {
        children.push_back(joinDn(parentDn, name));
    }
    objects.finalizeIterator(iterator);
    return children;
}

ActiveAlarmTable::RowT ActiveAlarmTable::readRow(unsigned long txHandle, const std::string& dn,
                                                 const RowT& attributes) const
{
    const MoSnapshot snapshot = store.snapshot();
    const ClassDescription& description = *snapshot.model->findClass(alarmClass);
    std::vector<const char*> names;
    for (const std::string& attribute : attributes) {
        names.push_back(attribute.c_str());
    }
    names.push_back(nullptr);
    YaltOamSpiMoAttributesResult_3T result{};
    objects.getAttributes(txHandle, dn, names.data(), result);
    RowT row;
    for (std::uint32_t index = 0; index < result.numberOfAttributes; ++index) {
        const MoValue value = copyOf(result.attributes[index]);
        row.push_back(toLineText(toText(*description.findAttribute(attributes[index]), value)));
    }
    result.releaseAttributesResultCB(&result);
    return row;
}

}  // namespace ZorvNode
