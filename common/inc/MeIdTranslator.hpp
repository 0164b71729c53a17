/// Translates the names under which the node knows its managed objects into those under which it is known northbound.
///
/// The first part of a DN, "ManagedElement=<local>", gets the value of that object's attribute "externalId", if it has one.
/// Names are read from the model at their first use and kept until the model changes.
///
/// Threads:   any.
/// Failure:   never throws for a model that cannot be read: the DN is then passed on as it is, and a warning tells so once.
#pragma once

#include <Poco/Mutex.h>

#include <map>
#include <string>

#include "Singleton.hpp"

namespace Zorv {

class MeIdTranslator : public Singleton<MeIdTranslator> {
public:
    void start();
    void stop();

    /// The model has changed: names are read again at their next use.
    void modelChanged();

    std::string toExternalDn(const std::string& dn);

private:
    const std::string& externalRdn(const std::string& localRdn);

    Poco::FastMutex mutex;
    std::map<std::string, std::string> externalNames;  // guarded by mutex; local first part -> external first part
};

}  // namespace Zorv
