/// The description of the interface, api/openapi.json, as it was when the node was built.
#pragma once

namespace ZorvNode {

extern const char* const openApiDocument;

}  // namespace ZorvNode
