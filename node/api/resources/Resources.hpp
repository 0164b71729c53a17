/// What the node offers at its interface, each resource in a file of its own. Each adds its routes.
///
/// Threads:   handlers run on any number of threads at a time.
/// Ownership: the node outlives them.
/// Failure:   HttpError; what managed objects refuse is told by refusalOf.
#pragma once

#include "api/NotificationFollower.hpp"
#include "api/http/ApiSettings.hpp"
#include "api/http/HttpRoutes.hpp"
#include "api/http/HttpServices.hpp"
#include "api/resources/StreamCounters.hpp"
#include "runtime/Node.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvNode {

/// POST /v1/notifications, PUT /v1/suppression.
void addPublishing(HttpRoutes& routes, Node& node, const ApiSettings& settings);

/// GET /v1/notifications.
void addNotifications(HttpRoutes& routes, const NotificationFollower& follower, StreamCounters& counters);

/// GET /v1/alarms, /v1/alarms/{id}, /v1/summary.
void addAlarms(HttpRoutes& routes, Node& node);

/// GET and POST /v1/objects, POST /v1/model/reload.
void addObjects(HttpRoutes& routes, Node& node);

/// GET /v1/components, POST /v1/components/{name}/start and stop.
void addComponents(HttpRoutes& routes, Node& node);

/// Components and their state, as a member of the JSON object that is being written.
void writeComponents(JsonWriter& json, const std::vector<ComponentStatus>& components);

/// GET /v1/node, health, lists, counters, openapi.json; POST /v1/settle.
void addNode(HttpRoutes& routes, Node& node, const ConnectionCounters& connections, const StreamCounters& streams);

/// GET and PUT /v1/levels, GET /v1/logs/{name}.
void addLogs(HttpRoutes& routes, Node& node);

/// What an operation on managed objects refused, by its return code.
HttpError refusalOf(const MoError& error);

}  // namespace ZorvNode
