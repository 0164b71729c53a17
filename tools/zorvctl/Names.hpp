/// Names for the numbers of ITU-T X.733, M.3100 and X.736, as RFC 3877 numbers them.
#pragma once

#include <cstdint>
#include <string>

#include "json/Json.hpp"

namespace ZorvCtl {

/// Null when the number has no name.
const char* findProbableCause(std::uint64_t number);
const char* findEventType(std::uint64_t number);

/// "lossOfSignal (8)"; the number alone when it has no name; "-" for none. @param value a number, or a model's own name.
std::string probableCauseText(const ZorvInput::JsonT& value);

/// "communicationsAlarm (2)", likewise, also from the name in capitals that models use.
std::string eventTypeText(const ZorvInput::JsonT& value);

/// The text that JSON has for a severity: its name, or its number.
std::string severityOf(const ZorvInput::JsonT& value);

}  // namespace ZorvCtl
