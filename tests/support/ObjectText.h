#pragma once

#include <string>

/// What a test sets in an object node of a document of objects made by TestProject; everything else is as in
/// an object that was not changed.
struct ExpectedObject {
    std::string id;
    std::string name;
    std::string type;
    std::string studyTypeName{};
    std::string databaseKey{};
    std::string metaData = "{}";
    std::string children{};
    std::string files{};
    /// What follows the files, with its comma: the members of a file record, or the root's last member.
    std::string tail{};
};

/// The text of the object node in a document.
inline std::string ObjectNodeText(const ExpectedObject& object) {
    const auto optional = [](const std::string& member, const std::string& value) {
        return value.empty() ? std::string() : "\"" + member + "\":\"" + value + "\",";
    };
    return R"({"id":")" + object.id + R"(","name":")" + object.name + "\"," +
           optional("studyTypeName", object.studyTypeName) +
           R"("createdDate":"2026-03-01T09:30:00Z","createdBy":"engineer","type":")" + object.type + "\"," +
           optional("dbkey", object.databaseKey) + R"("metaData":)" + object.metaData + R"(,"children":[)" +
           object.children + R"(],"files":[)" + object.files + "]" + object.tail + "}";
}

/// The members that a file record has behind its object node.
inline std::string RecordTail(const std::string& fileType, const std::string& fileFormat,
                              const std::string& locationType = "") {
    return R"(,"fileType":")" + fileType + R"(","fileFormat":")" + fileFormat + R"(","locationType":")" +
           locationType + R"(","filePath":"")";
}

/// The member that only a document's root has.
inline constexpr const char* kRootTail = R"(,"subType":"SDM")";
