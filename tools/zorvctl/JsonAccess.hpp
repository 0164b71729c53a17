/// What the node answers, taken leniently: a field that is missing is shown as such and never an error.
#pragma once

#include <string>
#include <vector>

#include "json/Json.hpp"

namespace ZorvCtl {

/// The member of an object; null when it is missing, or there is no object.
const ZorvInput::JsonT* find(const ZorvInput::JsonT& object, const char* name);

/// A text as it is, anything else as JSON; the fallback when it is missing or null.
std::string textOr(const ZorvInput::JsonT& object, const char* name, const std::string& fallback);

/// The same as part of one line, "-" when there is none.
std::string cellOf(const ZorvInput::JsonT& object, const char* name);
std::string cellOf(const ZorvInput::JsonT& value);

std::uint64_t numberOr(const ZorvInput::JsonT& object, const char* name, std::uint64_t fallback);

/// The entries of an array; none when it is missing.
std::vector<const ZorvInput::JsonT*> entriesOf(const ZorvInput::JsonT& object, const char* name);

/// For programs: indented, with a line end.
std::string indentedJson(const ZorvInput::JsonT& value);

}  // namespace ZorvCtl
