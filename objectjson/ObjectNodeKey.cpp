#include "ObjectNodeKey.h"

ObjectNodeKey ClassifyObjectNodeKey(std::string_view name) {
    const format::MemberEffect* const known = format::FindEffect(name);
    return known == nullptr ? ObjectNodeKey::kUnknown : known->key;
}
