#include "ServerPath.h"

#include "ServerTables.h"
#include "format/Kinds.h"
#include "format/MemberNames.h"
#include "host/document/DocumentNode.h"

namespace host {

std::string NodeName::Text() const {
    // No text has a NUL in it.
    std::string text(kind);
    text += '\0';
    text += fileType;
    text += '\0';
    text += name;
    return text;
}

NodeName NameOf(const JSONNode& node, std::string_view type) {
    const bool isFile = format::KindOfType(type) == format::Kind::kFile;
    return {KeyPrefix(type), MemberText(node, format::member::kName),
            isFile ? MemberText(node, format::member::kFileType) : std::string()};
}

}  // namespace host
