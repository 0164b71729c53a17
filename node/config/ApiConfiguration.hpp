/// The section "api" of a node's configuration: how the node's interface is offered.
///
/// Failure: InputError with file and line.
#pragma once

#include "api/http/ApiSettings.hpp"
#include "config/SectionReader.hpp"

namespace ZorvNode {

void readApi(const SectionReader& reader, const XmlElement& section, ApiSettings& settings);

/// The longest path that a socket can have, in bytes.
constexpr std::size_t longestSocketPath = 107;

}  // namespace ZorvNode
