#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "objectjson/NodeReading.h"

/// A key that an answer gives to the objects with an identifier.
class ResponseKey {
public:
    /// The position is where the answer has the key.
    ResponseKey(const NodeText& id, const NodeText& key, std::size_t position);

    std::string_view Id() const { return id_; }
    std::string_view Key() const { return key_; }

    friend bool operator<(const ResponseKey& left, const ResponseKey& right) {
        if (left.beginning_ != right.beginning_) {
            return left.beginning_ < right.beginning_;
        }
        return left.id_ != right.id_ ? left.id_ < right.id_ : left.position_ < right.position_;
    }

private:
    /// The first eight bytes of the identifier, in the order in which they compare. Most identifiers have no
    /// more, so that sorting need not look at the texts.
    std::uint64_t beginning_;
    NodeText id_;
    NodeText key_;
    std::size_t position_;
};

/// The keys of an answer, an object node or an array of such, in the order of the identifiers' texts, each
/// identifier once with its first key; none for any other value. Valid as long as the answer.
std::vector<ResponseKey> ReadResponseKeys(const JSONNode& answer);

/// Sets the key on an object that it is for.
void SetKey(CAEObject& target, const ResponseKey& key);

/// The answer's name becomes the display name of the object, where that is a project.
void TakeDisplayName(const JSONNode& answer, CAEObject& object);
