/// Which alarm types the alarm models hold: read from the model in one go, answered from memory until the model changes.
///
/// Threads:   the worker's.
/// Failure:   what cannot be read is logged and left out; the next question then reads the model again.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <utility>

namespace Zorv {
class MoAccessor;
}

namespace ZorvFm {

class AlarmTypeIndex {
public:
    /// False until the whole model has been read, and after clear.
    bool isComplete() const { return complete; }

    /// Reads the types of the models.
    /// @param models their DNs, in the order of the model. @param areAllModels false when some could not be found.
    void read(Zorv::MoAccessor& accessor, std::list<std::string> models, bool areAllModels);

    /// The DN of the first alarm type with these numbers, in the order of the model; empty when there is none.
    std::string find(std::uint32_t majorType, std::uint32_t minorType) const;

    /// The model has changed.
    void clear();

private:
    struct Place {
        std::size_t model;  // index into modelDns
        std::string typeDn;
    };

    void readModel(Zorv::MoAccessor& accessor, std::size_t model, const std::string& modelDn);
    void readType(Zorv::MoAccessor& accessor, std::size_t model, const std::string& typeDn);
    void reportFailure(const char* reason);

    std::list<std::string> modelDns;
    std::map<std::pair<std::uint32_t, std::uint32_t>, Place> types;
    bool complete = false;  // everything was read
};

}  // namespace ZorvFm
