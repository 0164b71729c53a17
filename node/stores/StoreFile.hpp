/// The store's file as a file: made whole or not at all, and set aside when it is damaged.
///
/// Failure: StoreError.
#pragma once

#include <string>

#include "LogSink.hpp"

namespace ZorvNode {

/// Makes the file, empty of data, mode 0600, unless it is there. Throws "damaged" when it is there without content, or
/// missing beside a log of its own: a store that this release has made never is.
void ensureStoreFile(const std::string& file, const LogSinkT& log);

/// Renames the file and its log to FILE.corrupt-TIME (UTC); nothing is overwritten. Answers with the new name.
std::string setStoreFileAside(const std::string& file);

}  // namespace ZorvNode
