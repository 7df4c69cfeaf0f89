#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <string>

#include "format/Effects.h"
#include "support/ModelBuilders.h"

using format::Effect;
using format::MemberEffect;

namespace {

/// The member with a value that shows where it is taken.
std::string MemberText(const MemberEffect& known) {
    std::string value = R"("Binary")";
    if (known.name == format::member::kType) {
        value = R"("CAETAG")";
    } else if (known.name == format::member::kFileType) {
        value = R"("Mesh")";
    } else if (known.name == format::member::kIsInCoordinateGlobalFrame ||
               known.name == format::member::kIsFileDownloaded) {
        value = R"("true")";
    } else if (known.shape == format::Shape::kRecords) {
        value = R"({"Mass":{"value":"12","metaDataType":"kg"}})";
    } else if (known.shape == format::Shape::kNodes) {
        value = R"([{"name":"inner","type":"CAETAG","createdDate":"now"}])";
    }
    return '"' + std::string(known.name.View()) + "\":" + value;
}

/// The project after an import of the document: everything that can be seen of it and of its file 2 or 3.
std::string StateAfter(const std::string& document) {
    const TestProject project;
    JSONNode node = libjson::parse(document.c_str());
    caerest::json::DeserializeJsonToObject(node, &*project);
    std::string state = JsonSerializer(&*project).GetJsonString().GetAnsiBuffer();
    for (const int id : {2, 3}) {
        if (const CAEFile* const file = project->getFile(id)) {
            OuString path;
            file->getFullPathName(path);
            state += std::string(" ") + path.GetAnsiBuffer() +
                     (korvane::IsInGlobalFrame(*file) ? " global" : "") +
                     (korvane::IsDownloaded(*file) ? " here" : "");
        }
    }
    return state;
}

/// An object node or file record with the member in front and at the end: of some members the first counts,
/// of others the last.
std::string Around(const std::string& members, const std::string& member) {
    return "{" + (member.empty() ? members : member + "," + members + "," + member) + "}";
}

std::string WithObject(const std::string& member) {
    return R"({"type":"SIMULATION","children":[)" +
           Around(R"("name":"frame","type":"CAEPART","createdDate":"now")", member) + "]}";
}

std::string WithRecord(const std::string& member) {
    return R"({"type":"SIMULATION","files":[)" + Around(R"("name":"frame.msh","createdDate":"now")", member) +
           "]}";
}

}  // namespace

TEST(Effects, AreThoseOfAnImportOfAnObject) {
    const std::string usual = StateAfter(WithObject(""));
    for (const MemberEffect& known : format::kMemberEffects) {
        EXPECT_EQ(StateAfter(WithObject(MemberText(known))) != usual, known.inObject == Effect::kTaken)
            << known.name.c_str();
    }
}

TEST(Effects, AreThoseOfAnImportOfAFileRecord) {
    const std::string usual = StateAfter(WithRecord(""));
    for (const MemberEffect& known : format::kMemberEffects) {
        EXPECT_EQ(StateAfter(WithRecord(MemberText(known))) != usual, known.inRecord == Effect::kTaken)
            << known.name.c_str();
    }
}
