#pragma once

#include <string>
#include <vector>

#include "format/Effects.h"
#include "format/Nodes.h"

/// Every member that a file record has of its own and an import takes, as "name":"value" with a value that a
/// new file does not have.
inline std::vector<std::string> FileRecordMembers() {
    std::vector<std::string> members;
    for (const format::NodeMember& known : format::kFileRecord) {
        if (format::FindEffect(known.name.View())->inRecord == format::Effect::kTaken) {
            // A new member that cannot have the last of these values needs one of its own here.
            const std::string value = known.name == format::member::kFileType     ? "Mesh"
                                      : known.name == format::member::kFileFormat ? "Binary"
                                                                                  : "Vault";
            members.push_back("\"" + std::string(known.name.View()) + "\":\"" + value + "\"");
        }
    }
    return members;
}

/// A file record with a name and these members.
inline std::string FileRecordWith(const std::vector<std::string>& members) {
    std::string record = R"({"name":"a.msh")";
    for (const std::string& member : members) {
        record += "," + member;
    }
    return record + "}";
}
