/// Knows all clients of the process, so that a fork finds each of them with its locks free and leaves the child whole.
///
/// Threads:   any.
/// Ownership: clients are not owned; they leave before they die. In a child, the parent's senders are kept for ever:
///            they cannot be destroyed without their threads.
/// Failure:   std::bad_alloc from add.
#pragma once

namespace ZorvClient {

class Client;
class Sender;

namespace ForkGuard {

void add(Client& client);
void remove(Client& client);

/// In the child of a fork, before anything else runs there.
void keepForgotten(Sender* sender);

}  // namespace ForkGuard

}  // namespace ZorvClient
