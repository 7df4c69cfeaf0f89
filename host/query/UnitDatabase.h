#pragma once

#include <functional>
#include <memory>
#include <string>

namespace host {

/// Changes a number in one unit to the number in another.
using UnitConversion = std::function<double(double)>;

/// The units that UDUNITS-2 knows. Where the program was built without it, or its database cannot be read,
/// there are none.
class UnitDatabase {
public:
    UnitDatabase();
    ~UnitDatabase();
    UnitDatabase(const UnitDatabase&) = delete;
    UnitDatabase& operator=(const UnitDatabase&) = delete;

    /// Empty if there is no such conversion, or one of the units is not known. It must not be called when the
    /// database is gone.
    UnitConversion Find(const std::string& from, const std::string& to) const;

private:
    struct Units;
    std::unique_ptr<Units> units_;
};

}  // namespace host
