#include "api/Api.hpp"

#include "api/resources/Resources.hpp"

namespace ZorvNode {

Api::Api(Node& node)
    : follower(node.router, node.getConfiguration().api.streamHistory),
      listener(node.getConfiguration().api, routes,
               [&node](std::int32_t level, const std::string& text) { node.log(level, text); })
{
    addPublishing(routes, node, node.getConfiguration().api);
    addNotifications(routes, follower, streams);
    addAlarms(routes, node);
    addObjects(routes, node);
    addComponents(routes, node);
    addLogs(routes, node);
    addNode(routes, node, listener.getCounters(), streams);
}

}  // namespace ZorvNode
