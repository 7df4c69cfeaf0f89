#include "CoordinateSystem.h"

#include <cmath>
#include <numbers>
#include <string>

#include "host/system/Text.h"

namespace host {

CoordinateSystem CoordinateSystemOf(std::string_view name) {
    const std::string letter = ToUpperAscii(Trim(name));
    return letter == "C"   ? CoordinateSystem::Cylindrical
           : letter == "S" ? CoordinateSystem::Spherical
                           : CoordinateSystem::Rectangular;
}

Position Rectangular(const Position& given, CoordinateSystem system) {
    constexpr double kDegree = std::numbers::pi / 180;
    const auto [radius, theta, third] = given;
    switch (system) {
        case CoordinateSystem::Rectangular:
            return given;
        case CoordinateSystem::Cylindrical:
            return {radius * std::cos(theta * kDegree), radius * std::sin(theta * kDegree), third};
        case CoordinateSystem::Spherical: {
            const double onPlane = radius * std::cos(third * kDegree);
            return {onPlane * std::cos(theta * kDegree), onPlane * std::sin(theta * kDegree),
                    radius * std::sin(third * kDegree)};
        }
    }
    return given;
}

}  // namespace host
