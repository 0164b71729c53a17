/// Finds the service behind a C table: its functions carry no object, so there is one service object of a class at a time.
///
/// Threads:   bound before the table is handed out, released after the last call.
/// Failure:   a call without a service, or one that throws, answers -1.
#pragma once

#include <algorithm>
#include <cassert>
#include <initializer_list>

#include "Guarded.hpp"

namespace ZorvNode {

template <class ServiceT>
class TableBinding {
public:
    explicit TableBinding(ServiceT& bound)
    {
        assert(service == nullptr);
        service = &bound;
    }

    ~TableBinding() { service = nullptr; }

    TableBinding(const TableBinding&) = delete;
    TableBinding& operator=(const TableBinding&) = delete;

    template <class OperationT>
    static ZorvReturnT call(const char* where, OperationT operation) noexcept
    {
        return Zorv::guarded(where, [&] { return service != nullptr ? operation(*service) : ZORV_RETURN_FAILED; });
    }

private:
    static inline ServiceT* service = nullptr;  // not owned
};

/// True when one of a table call's pointers is null.
inline bool hasNull(std::initializer_list<const void*> arguments)
{
    return std::any_of(arguments.begin(), arguments.end(), [](const void* argument) { return argument == nullptr; });
}

}  // namespace ZorvNode
