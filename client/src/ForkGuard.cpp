#include "ForkGuard.hpp"

#include "Client.hpp"

#include <pthread.h>

#include <mutex>
#include <new>

namespace ZorvClient::ForkGuard {

namespace {

// No destructors here: a process that ends with open clients does so undisturbed.
std::mutex mutex;  // guards all below; held during a fork
Client* clients = nullptr;
Sender* forgotten = nullptr;
bool registered = false;

void beforeFork()
{
    mutex.lock();
    for (Client* each = clients; each != nullptr; each = each->nextOfAll) {
        each->beforeFork();
    }
}

void afterForkInParent()
{
    for (Client* each = clients; each != nullptr; each = each->nextOfAll) {
        each->afterForkInParent();
    }
    mutex.unlock();
}

void afterForkInChild()
{
    for (Client* each = clients; each != nullptr; each = each->nextOfAll) {
        each->afterForkInChild();
    }
    mutex.unlock();
}

}  // namespace

void add(Client& client)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!registered) {
        if (::pthread_atfork(beforeFork, afterForkInParent, afterForkInChild) != 0) {
            throw std::bad_alloc();
        }
        registered = true;
    }
    client.nextOfAll = clients;
    clients = &client;
}

void remove(Client& client)
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (Client** each = &clients; *each != nullptr; each = &(*each)->nextOfAll) {
        if (*each == &client) {
            *each = client.nextOfAll;
            return;
        }
    }
}

void keepForgotten(Sender* sender)
{
    sender->nextForgotten = forgotten;
    forgotten = sender;
}

}  // namespace ZorvClient::ForkGuard
