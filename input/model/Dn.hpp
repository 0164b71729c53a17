/// Distinguished names: "Class=value" parts from the root down, separated by commas.
#pragma once

#include <string>

namespace ZorvInput {

/// "" for an object at the root.
std::string parentOf(const std::string& dn);

/// The last "Class=value".
std::string lastPartOf(const std::string& dn);

/// The class that the last part names; "" when there is no "=".
std::string classOf(const std::string& dn);

std::string joinDn(const std::string& parentDn, const std::string& part);

/// True for one non-empty value without "," and "=".
bool isKeyValue(const std::string& value);

/// True when dn is below the other one, at any depth.
bool isBelow(const std::string& dn, const std::string& ancestorDn);

}  // namespace ZorvInput
