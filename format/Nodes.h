#pragma once

#include <algorithm>
#include <span>

#include "Effects.h"
#include "MemberNames.h"

/// Which members the nodes have, in the order in which they are written.
namespace format {

enum class Presence {
    kAlways,
    /// Where the node's object is an iteration, and there always.
    kInIterations,
    /// Where the object has a database key.
    kWithKey,
    /// In the root of a document, and there always.
    kInRoot,
};

struct NodeMember {
    MemberName name;
    Presence presence = Presence::kAlways;
};

inline constexpr NodeMember kObjectNode[] = {
    {member::kId},
    {member::kName},
    {member::kStudyTypeName, Presence::kInIterations},
    {member::kCreatedDate},
    {member::kCreatedBy},
    {member::kType},
    {member::kDatabaseKey, Presence::kWithKey},
    {member::kMetaData},
    {member::kChildren},
    {member::kFiles},
    {member::kSubType, Presence::kInRoot},
};

inline constexpr NodeMember kMetadataRecord[] = {
    {member::kValue},
    {member::kMetaDataType},
};

/// What a file record has behind the members of an object node.
inline constexpr NodeMember kFileRecord[] = {
    {member::kFileType},
    {member::kFileFormat},
    {member::kLocationType},
    {member::kFilePath},
};

constexpr bool AreKnownToAnImport(std::span<const NodeMember> members) {
    return std::ranges::all_of(
        members, [](const NodeMember& known) { return FindEffect(known.name.View()) != nullptr; });
}
static_assert(AreKnownToAnImport(kObjectNode) && AreKnownToAnImport(kFileRecord),
              "Effects.h says what an import does with every member that is written");

/// A member that is read from a server's answer.
struct AnswerMember {
    MemberName name;
    /// Whether it is read only from the answer itself, and not from what is nested in it.
    bool isAtTheTopOnly = false;
};

inline constexpr AnswerMember kAnswerNode[] = {
    {member::kId}, {member::kDatabaseKey}, {member::kName, true}, {member::kChildren}, {member::kFiles},
};

}  // namespace format
