#pragma once

#include <string>
#include <vector>

#include "format/Effects.h"

/// Documents with any member in any kind of value in any place.

inline const std::string kMemberValues[] = {
    R"("Binary")",
    R"("")",
    R"("CAETAG")",
    R"("a\u0000b")",
    "12",
    "true",
    "null",
    "[]",
    R"(["x",{"type":"CAETAG","name":"t","more":[1]},{"name":"n"},[{"type":"CAETAG"}],null])",
    "{}",
    R"({"a":{"value":"1","metaDataType":"x","more":3},"type":{"type":"CAEPART","name":"deep"},"A":[1]})",
};

/// Every member of the format, and some that it does not know.
inline std::vector<std::string> MemberNames() {
    std::vector<std::string> names = {"value", "metaDataType", "ID",       "Name",
                                      "",      "a/b~c",        "\xC3\xBC", "unknown"};
    for (const format::MemberEffect& known : format::kMemberEffects) {
        names.emplace_back(known.name.View());
    }
    return names;
}

/// A place for members: what stands before and behind them in a document.
struct Surroundings {
    const char* before;
    const char* behind;
};

inline constexpr Surroundings kMemberPlaces[] = {
    {R"({)", R"("type":"SIMULATION"})"},
    {R"({"type":"SIMULATION",)", R"("name":"last"})"},
    {R"({"type":"SIMULATION","children":[{)", R"("type":"CAEPART","name":"last"}]})"},
    {R"({"type":"SIMULATION","children":[{"type":"CAEVIEWITEM",)", R"("name":"last"}]})"},
    {R"({"type":"SIMULATION","children":{"named":{"type":"CAEPROJECT",)", R"("name":"last"}}})"},
    {R"({"type":"SIMULATION","children":[{"type":"CAEFILE",)", R"("name":"last"}]})"},
    {R"({"type":"SIMULATION","files":[{)", R"("name":"last"}]})"},
    {R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","files":{"a~b":{)", R"("fileType":"Mesh"}}}]})"},
    {R"({"type":"SIMULATION","metaData":{"Mass":{)", R"("value":"3","metaDataType":"kg"}}})"},
    {R"({"type":"SIMULATION","metaData":[{)", R"("value":"3"}]})"},
    {R"({"type":"SIMULATION","files":[{"name":"f","metaData":{"Mass":{)", R"("value":"3"}}}]})"},
    {R"({"type":"SIMULATION","metaData":{)", R"("last":{"value":"3","metaDataType":"kg"}}})"},
    {R"({"name":"no type",)", R"("children":[]})"},
};

inline std::string MemberText(const std::string& name, const std::string& value) {
    return "\"" + name + "\":" + value + ",";
}
