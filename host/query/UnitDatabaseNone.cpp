#include "UnitDatabase.h"

namespace host {

struct UnitDatabase::Units {};

UnitDatabase::UnitDatabase() = default;

UnitDatabase::~UnitDatabase() = default;

UnitConversion UnitDatabase::Find(const std::string&, const std::string&) const {
    return {};
}

}  // namespace host
