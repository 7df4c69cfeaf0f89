#include "ObjectNodeKey.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::size_t kPlaces = 64;

/// Gives every known name a place of its own. The name must not be empty.
constexpr std::size_t PlaceOf(std::string_view name) {
    const auto byte = [name](std::size_t at) -> std::size_t { return static_cast<unsigned char>(name[at]); };
    return (name.size() * 11 + byte(0) * 2 + byte(name.size() / 2)) % kPlaces;
}

using Places = std::array<const format::MemberEffect*, kPlaces>;

consteval Places KnownNames() {
    Places places{};
    for (const format::MemberEffect& known : format::kMemberEffects) {
        const format::MemberEffect*& place = places[PlaceOf(known.name.View())];
        if (place != nullptr) {
            throw "two names have one place: choose other factors in PlaceOf";
        }
        place = &known;
    }
    return places;
}

}  // namespace

ObjectNodeKey ClassifyObjectNodeKey(std::string_view name) {
    static constexpr Places kPlaceOfName = KnownNames();
    if (name.empty()) {
        return ObjectNodeKey::kUnknown;
    }
    const format::MemberEffect* const known = kPlaceOfName[PlaceOf(name)];
    return known != nullptr && known->name == name ? known->key : ObjectNodeKey::kUnknown;
}
