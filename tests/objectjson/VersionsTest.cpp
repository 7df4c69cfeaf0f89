#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>

#include "ConverterSupport.h"
#include "RecordingSupport.h"
#include "objectjson/CAEObjectJson.h"
#include "objectjson/MajorMinor.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"

namespace {

/// The node of a version as a driver writes it that wants the section: with a member "versions".
JSONNode NodeWithVersions(CAEObject* version) {
    JSONNode node = CAEObjectJson(version).GetJsonNode();
    JSONNode versions(JSON_ARRAY);
    versions.set_name("versions");
    node.push_back(versions);
    return node;
}

/// A part with a file, with a converter that has exported it.
struct Door {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    CAEFile& file = project.AddFile(part, L"door.step", CAE_FILE_CAD);

    CAEObject& AddVersion(int major, int minor, const OuString& name) {
        EXPECT_EQ(part.createNewVersion(major, minor, true, false), 0);
        CAEObject& version = *VersionOf(part, major, minor);
        version.setName(name);
        return version;
    }

    /// The section as a driver gets it that has exported the object first.
    JSONNode Section() {
        CAEObjectJson converter(&part);
        converter.GetJsonNode();
        return converter.ExportVersions(NodeWithVersions);
    }
};

std::string FileRecordOf(int identifier, const std::string& name) {
    return ObjectNodeText({.id = std::to_string(identifier),
                           .name = name,
                           .type = "CAEFILE",
                           .tail = RecordTail("CAD", "ASCII")});
}

/// The record of a version of the door.
std::string RecordText(const std::string& name, const std::string& label) {
    return ObjectNodeText({.id = "2",
                           .name = name,
                           .type = "CAEPART",
                           .files = FileRecordOf(3, "door.step"),
                           .tail = R"(,"version":")" + label + "\""});
}

std::string RecordTextOfSection(const std::string& records) {
    return R"({"versions":[)" + records + "]}";
}

void ImportVersionsText(const std::string& section, CAEObject& object) {
    CAEObjectJson(JSONNode(JSON_NODE), &object).ImportVersions(libjson::parse(section.c_str()));
}

/// Junk where the high half of a slot is wider than the number.
void* Slot(int number, std::uint32_t high = 0xDEADBEEF) {
    const auto low = static_cast<std::uint32_t>(number);
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(std::uint64_t{high} << 32U | low));
}

}  // namespace

TEST(ExportVersions, OfAnObjectWithoutVersionsIsEmptyAndLooksForNoFiles) {
    Door door;
    CAEObjectJson converter(&door.part);
    EXPECT_EQ(
        RecordingOf([&] { EXPECT_EQ(TextOfSection(converter.ExportVersions()), R"({"versions":[]})"); }),
        "CAEObject::getAvailableVersions(#2)\n");
}

TEST(ExportVersions, OfNoObjectIsEmpty) {
    EXPECT_EQ(TextOfSection(CAEObjectJson(nullptr).ExportVersions()), R"({"versions":[]})");
}

TEST(ExportVersions, ThrowsForNodesAsTheExportWritesThem) {
    Door door;
    CAEObject& version = door.AddVersion(1, 0, L"Old door");
    CAEObjectJson converter(&door.part);
    const std::string before = TextOfNode(converter.GetJsonNode());
    const std::string recording =
        RecordingOf([&] { EXPECT_THROW(converter.ExportVersions(), std::out_of_range); });
    EXPECT_EQ(converter.GetJsonText(), OuString(before.c_str(), 0));
    // The version was written as every object is.
    EXPECT_EQ(recording, "CAEObject::getAvailableVersions(#2)\nCAEObject::getPointerToVersion(#2, 1, 0)\n" +
                             RecordingOf([&] { CAEObjectJson(&version).GetJsonNode(); }));
}

TEST(ExportVersions, ThrowsForNodesWithoutFiles) {
    Door door;
    door.AddVersion(1, 0, L"Old door");
    EXPECT_THROW(CAEObjectJson(&door.part).ExportVersions([](CAEObject*) {
        JSONNode node(JSON_NODE);
        node.push_back(JSONNode("versions", ""));
        return node;
    }),
                 std::out_of_range);
}

TEST(ExportVersions, RecordIsTheVersionsNodeWithTheObjectsFilesAndTheNumber) {
    Door door;
    door.AddVersion(1, 0, L"Old door");
    EXPECT_EQ(TextOfSection(door.Section()), RecordTextOfSection(RecordText("Old door", "1.0")));
}

TEST(ExportVersions, RecordsStandInTheOrderOfTheObjectModelAndAreLabelledMajorAndMinor) {
    Door door;
    door.AddVersion(3, 14, L"a");
    door.AddVersion(2, 0, L"b");
    door.AddVersion(0, 0, L"c");
    door.AddVersion(2147483647, 10, L"d");
    EXPECT_EQ(TextOfSection(door.Section()),
              RecordTextOfSection(RecordText("a", "3.14") + "," + RecordText("b", "2.0") + "," +
                                  RecordText("c", "0.0") + "," + RecordText("d", "2147483647.10")));
}

TEST(ExportVersions, EveryRecordHasTheObjectsFilesAndNotTheVersionsOwn) {
    Door door;
    CAEObject& old = door.AddVersion(1, 0, L"a");
    door.AddVersion(2, 0, L"b");
    // A version finds the files of its list only while it is in the project.
    const CAEFile& own = door.project.AddFile(door.part, L"later.step", CAE_FILE_REPORT);
    old.attachCustomFile(own.getID(), nullptr);
    ASSERT_EQ(Detach(*door.project, door.part), 0);
    ASSERT_EQ(door.project->addChild(&old), 0);
    ASSERT_EQ(CAEObjectJson(&old).GetJsonNode().at("files").size(), 2U);

    JSONNode files(JSON_ARRAY);
    files.set_name("files");
    files.push_back(JSONNode("", "the object's own list"));
    JSONNode node(JSON_NODE);
    node.push_back(files);
    CAEObjectJson over(node, &door.part);
    const JSONNode section = over.ExportVersions(NodeWithVersions);
    ASSERT_EQ(section.size(), 2U);
    for (const JSONNode& record : section) {
        EXPECT_EQ(TextOfSection(record.at("files")), R"({"files":["the object's own list"]})");
    }
    EXPECT_EQ(TextOfNode(node), R"({"files":["the object's own list"]})");
}

TEST(ExportVersions, WithoutFilesInTheNodeTheListIsEmpty) {
    Door door;
    door.AddVersion(1, 0, L"a");
    const JSONNode section = CAEObjectJson(&door.part).ExportVersions(NodeWithVersions);
    ASSERT_EQ(section.size(), 1U);
    EXPECT_EQ(TextOfSection(section.at(0).at("files")), R"({"files":[]})");
}

TEST(ExportVersions, TakesTheFilesOfTheNodeAsAnArray) {
    Door door;
    door.AddVersion(1, 0, L"a");
    CAEObjectJson converter(libjson::parse(R"({"files":{"a":"1"}})"), &door.part);
    EXPECT_EQ(TextOfSection(converter.ExportVersions(NodeWithVersions).at(0).at("files")),
              R"({"files":["1"]})");
}

TEST(ExportVersions, ListOfFilesHasItsNameWhateverTheNodeHoldsUnderIt) {
    Door door;
    door.AddVersion(1, 0, L"a");
    CAEObjectJson converter(libjson::parse(R"({"files":"none"})"), &door.part);
    const JSONNode section = converter.ExportVersions(NodeWithVersions);
    EXPECT_EQ(TextOfSection(section.at(0).at("files")), R"({"files":[]})");
}

TEST(ExportVersions, ThrowsForAVersionThatIsFoundAndIsNull) {
    Door door;
    door.AddVersion(1, 0, L"a");
    CAEObjectJson converter(&door.part);
    const korvane::OddAnswer nullVersion("CAEObject::getPointerToVersion", {.object = nullptr});
    EXPECT_THROW(converter.ExportVersions(), std::out_of_range);
}

TEST(ExportVersions, LeavesOutAVersionWithAStatusAlsoWhereItComesAlong) {
    Door door;
    CAEObject& version = door.AddVersion(1, 0, L"a");
    for (const int status : {1, -1}) {
        const korvane::OddAnswer both("CAEObject::getPointerToVersion",
                                      {.status = status, .object = &version});
        EXPECT_EQ(TextOfSection(door.Section()), RecordTextOfSection(""));
    }
}

TEST(ExportVersions, LeavesOutAVersionThatIsNotFoundAndGoesOn) {
    static Door* current = nullptr;
    Door door;
    current = &door;
    door.AddVersion(1, 0, L"a");
    door.AddVersion(2, 0, L"b");
    door.AddVersion(3, 0, L"c");
    CAEObjectJson converter(&door.part);
    converter.GetJsonNode();
    const JSONNode section = converter.ExportVersions([](CAEObject* version) {
        // The listed second version goes while the first is written.
        if (CAEObject* const second = VersionOf(current->part, 2, 0)) {
            EXPECT_EQ((*current->project).addChild(second), 0);
            EXPECT_EQ(Detach(*current->project, *second, true), 0);
        }
        return NodeWithVersions(version);
    });
    EXPECT_EQ(TextOfSection(section),
              RecordTextOfSection(RecordText("a", "1.0") + "," + RecordText("c", "3.0")));
}

TEST(ExportVersions, RecordsHoldTheVersionsOwnChildren) {
    Door door;
    CAEObject& tag = door.project.Add(door.part, CAE_TAG, L"then");
    door.AddVersion(1, 0, L"a");
    tag.setName(L"now");
    const JSONNode section = door.Section();
    EXPECT_EQ(MemberText(section.at(0).at("children").at(0), "name"), "then");
}

TEST(ExportVersions, ChangesNothingInTheObjectModelAndAsksInOrder) {
    Door door;
    door.AddVersion(1, 5, L"a");
    door.AddVersion(2, 0, L"b");
    CAEObjectJson converter(&door.part);
    EXPECT_EQ(RecordingOf([&] {
                  converter.ExportVersions([](CAEObject*) {
                      JSONNode node(JSON_NODE);
                      node.push_back(JSONNode("files", ""));
                      node.push_back(JSONNode("versions", ""));
                      return node;
                  });
              }),
              "CAEObject::getAvailableVersions(#2)\n"
              "CAEObject::getPointerToVersion(#2, 1, 5)\n"
              "CAEObject::getPointerToVersion(#2, 2, 0)\n");
    EXPECT_EQ(VersionsOf(door.part), (Numbers{{1, 5}, {2, 0}}));
}

TEST(MajorMinor, IsInTheLowHalvesOfTheSlots) {
    OuArray majors;
    OuArray minors;
    for (const int number : {0, 1, -1, 3, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        majors.Add(Slot(number));
        minors.Add(Slot(-1 - number, 0xFFFFFFFF));
    }
    for (int index = 0; index < majors.GetSize(); ++index) {
        const MajorMinor number = MajorMinor::At(majors, minors, index);
        EXPECT_EQ(number.majorNumber, NumberIn(majors.GetAt(index)));
        EXPECT_EQ(number.minorNumber, NumberIn(minors.GetAt(index)));
    }
    EXPECT_EQ(MajorMinor::At(majors, minors, 3).majorNumber, 3);
    EXPECT_EQ(MajorMinor::At(majors, minors, 3).minorNumber, -4);
    EXPECT_STREQ(MajorMinor::At(majors, minors, 3).Label().GetBuffer(), L"3.-4");
}

TEST(MajorMinor, HasNoughtForWhatAListLacks) {
    OuArray majors;
    OuArray minors;
    majors.Add(Slot(4));
    majors.Add(Slot(5));
    minors.Add(Slot(6));
    EXPECT_STREQ(MajorMinor::At(majors, minors, 0).Label().GetBuffer(), L"4.6");
    EXPECT_STREQ(MajorMinor::At(majors, minors, 1).Label().GetBuffer(), L"5.0");
}

TEST(ImportVersions, CreatesFetchesAndMakesCurrentVersionNoughtWhateverTheNumber) {
    for (const std::string version : {R"("2.5")", R"("0.0")", R"("7")", R"("")", R"("x.y")", R"(".3")",
                                      R"("1.2.3")", "2.5", "3", "null"}) {
        Door door;
        const std::string recording = RecordingOf([&] {
            ImportVersionsText(R"([{"type":"CAEPART","name":"Old door","version":)" + version + "}]",
                               door.part);
        });
        EXPECT_EQ(recording,
                  "CAEObject::getType(#2)\n"
                  "CAEObject::getProject(#2)\n"
                  "CAEObject::createNewVersion(#2, 0, 0, true, false)\n"
                  "CAEObject::getPointerToVersion(#2, 0, 0)\n"
                  "CAEObject::getParent(#2)\n"
                  "CAEObject::detachChild(#1, #2, false)\n"
                  "CAEObjectIdentification::getID(#2)\n"
                  "CAEObjectIdentification::setID(#2, 2)\n"
                  "CAEObject::addChild(#1, #2)\n"
                  "CAEObject::getType(#2)\n"
                  "CAEObject::getProject(#2)\n"
                  "CAEObject::getProject(#2)\n"
                  "CAEObject::getType(#2)\n"
                  "CAEObject::setName(#2, \"Old door\")\n"
                  "CAEObject::detachChild(#1, #2, false)\n"
                  "CAEObject::addChild(#1, #2)\n"
                  "CAEObject::getProject(#2)\n"
                  "CAEObjectIdentification::getID(#2)\n"
                  "overwriteCurrentVersionWithVersion(#1, 2, 0, 0)\n")
            << version;
        EXPECT_EQ(VersionsOf(door.part), (Numbers{{0, 0}})) << version;
    }
}

TEST(ImportVersions, MakesTheRecordTheContentOfTheCurrentObject) {
    Door door;
    CAEObject& before = door.project.Add(CAE_TAG, L"before");
    door.project.Add(CAE_TAG, L"behind");
    ImportVersionsText(R"([{"type":"CAEPART","name":"Old door","dbkey":"K-1","version":"1.0",)"
                       R"("metaData":{"Mass":{"value":"12","metaDataType":"kg"}}}])",
                       door.part);
    EXPECT_EQ(NameOf(door.part), "Old door");
    EXPECT_EQ(TextOf(door.part.getDBKey()), "K-1");
    EXPECT_EQ(MetadataValueOf(door.part, L"Mass"), "12");
    EXPECT_EQ(door.part.getID(), 2);
    EXPECT_EQ(door.project->getCAEObject(2), &door.part);
    EXPECT_EQ(door.part.getParent(), &*door.project);
    // The object comes back behind its siblings: it was added again.
    EXPECT_EQ(ChildrenOf(*door.project).back(), &door.part);
    EXPECT_EQ(ChildrenOf(*door.project).front(), &before);
    const korvane::VersionNumber current = korvane::GetCurrentVersion(door.part);
    EXPECT_EQ(current.majorNumber, 0);
    EXPECT_EQ(current.minorNumber, 0);
}

TEST(ImportVersions, TheVersionKeepsTheObjectsIdentifierAndHangsNowhere) {
    Door door;
    ImportVersionsText(R"([{"type":"CAEPART","name":"Old door","version":"1.0"}])", door.part);
    CAEObject* const version = VersionOf(door.part, 0, 0);
    ASSERT_NE(version, nullptr);
    ASSERT_NE(version, &door.part);
    EXPECT_EQ(version->getID(), 2);
    EXPECT_EQ(version->getParent(), nullptr);
    EXPECT_EQ(version->getProject(), nullptr);
    EXPECT_EQ(NameOf(*version), "Old door");
}

TEST(ImportVersions, ChildrenAreCreatedInTheVersionAndCopiedOntoTheObject) {
    Door door;
    ImportVersionsText(R"([{"type":"CAEPART","version":"1.0","children":[{"type":"CAETAG","name":"hinge",)"
                       R"("children":[{"type":"CAETAG","name":"screw"}]}]}])",
                       door.part);
    const CAEObject& version = *VersionOf(door.part, 0, 0);
    const std::vector<CAEObject*> ofVersion = ChildrenOf(version);
    const std::vector<CAEObject*> ofObject = ChildrenOf(door.part);
    ASSERT_EQ(ofVersion.size(), 1U);
    ASSERT_EQ(ofObject.size(), 1U);
    EXPECT_NE(ofVersion[0], ofObject[0]);
    EXPECT_EQ(NameOf(*ofVersion[0]), "hinge");
    EXPECT_EQ(NameOf(*ofObject[0]), "hinge");
    EXPECT_EQ(ofVersion[0]->getParent(), &version);
    EXPECT_EQ(ofVersion[0]->getID(), ofObject[0]->getID());
    EXPECT_EQ(NameOf(*ChildrenOf(*ofObject[0])[0]), "screw");
    EXPECT_EQ(door.project->getCAEObject(ofObject[0]->getID()), ofObject[0]);
}

TEST(ImportVersions, WhileARecordIsReadTheIdentifierMeansTheVersion) {
    Door door;
    // A child's parent is looked up by the identifier, so it lands where the identifier leads.
    const std::string recording = RecordingOf([&] {
        ImportVersionsText(R"([{"type":"CAEPART","version":"1.0","children":[{"type":"CAETAG"}]}])",
                           door.part);
    });
    EXPECT_NE(recording.find("CAEObject::addChild(#1, #2)\n"
                             "CAEObject::getType(#2)\n"
                             "CAEObject::getProject(#2)\n"
                             "CAEObject::getProject(#2)\n"
                             "CAEObjectIdentification::getID(#2)\n"
                             "createCAEObject(#1, 2, 41)\n"
                             "CAEProject::getCAEObject(#1, 4)\n"
                             "CAEObject::getType(#4)\n"),
              std::string::npos)
        << recording;
    EXPECT_EQ(ChildrenOf(*VersionOf(door.part, 0, 0)).size(), 1U);
}

TEST(ImportVersions, TheLastRecordsContentRemains) {
    Door door;
    ImportVersionsText(R"([{"type":"CAEPART","name":"first","dbkey":"K","version":"1.0"},)"
                       R"({"type":"CAEPART","name":"second","version":"2.0"},)"
                       R"({"type":"","name":"skipped","version":"3.0"}])",
                       door.part);
    EXPECT_EQ(NameOf(door.part), "second");
    // The second version is a copy of what the first made current.
    EXPECT_EQ(TextOf(door.part.getDBKey()), "K");
    EXPECT_EQ(VersionsOf(door.part), (Numbers{{0, 0}}));
}

TEST(ImportVersions, SkipsRecordsWithoutATypeOrAVersion) {
    for (const std::string record :
         {R"({"version":"1.0","name":"x"})", R"({"type":"","version":"1.0","name":"x"})",
          R"({"type":"CAEPART","name":"x"})", R"("text")", "[]", "[[]]", "null", "7"}) {
        Door door;
        EXPECT_EQ(RecordingOf([&] { ImportVersionsText("[" + record + "]", door.part); }),
                  "CAEObject::getType(#2)\nCAEObject::getProject(#2)\n")
            << record;
        EXPECT_TRUE(VersionsOf(door.part).empty()) << record;
        EXPECT_EQ(NameOf(door.part), "Door") << record;
    }
}

TEST(ImportVersions, SkipsWhatTheObjectModelRefuses) {
    // A file that no project has yet can have no version.
    CAEFile file(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
    EXPECT_EQ(RecordingOf([&] { ImportVersionsText(R"([{"type":"CAEFILE","version":"1.0"}])", file); }),
              "CAEObject::getType(#0)\n"
              "CAEObject::getProject(#0)\n"
              "CAEObject::createNewVersion(#0, 0, 0, true, false)\n");
}

TEST(ImportVersions, AnObjectWithoutAParentGetsVersionsThatNothingIsReadOnto) {
    TestProject project;
    EXPECT_EQ(RecordingOf([&] {
                  ImportVersionsText(R"([{"type":"SIMULATION","name":"x","version":"1.0"}])", *project);
              }),
              "CAEObject::getType(#1)\n"
              "CAEProject::setAdditionalType(#1, \"\")\n"
              "CAEObject::getProject(#1)\n"
              "CAEObject::createNewVersion(#1, 0, 0, true, false)\n"
              "CAEObject::getPointerToVersion(#1, 0, 0)\n"
              "CAEObject::getParent(#1)\n");
    EXPECT_EQ(VersionsOf(*project), (Numbers{{0, 0}}));
    EXPECT_EQ(NameOf(*VersionOf(*project, 0, 0)), "Project");
}

TEST(ImportVersions, SkipsAVersionThatIsNull) {
    Door door;
    const korvane::OddAnswer nullVersion("CAEObject::getPointerToVersion", {.object = nullptr});
    EXPECT_EQ(RecordingOf([&] {
                  ImportVersionsText(R"([{"type":"CAEPART","name":"x","version":"1.0"}])", door.part);
              }),
              "CAEObject::getType(#2)\n"
              "CAEObject::getProject(#2)\n"
              "CAEObject::createNewVersion(#2, 0, 0, true, false)\n"
              "CAEObject::getPointerToVersion(#2, 0, 0)\n");
    EXPECT_EQ(NameOf(door.part), "Door");
}

TEST(ImportVersions, TakesAVersionWhateverItsStatus) {
    Door door;
    CAEObject& version = door.AddVersion(3, 0, L"Old door");
    const korvane::OddAnswer both("CAEObject::getPointerToVersion", {.status = 1, .object = &version});
    ImportVersionsText(R"([{"type":"CAEPART","name":"x","version":"1.0"}])", door.part);
    EXPECT_EQ(NameOf(version), "x");
    EXPECT_EQ(NameOf(door.part), "Door");
}

TEST(ImportVersions, UnderAParentWithoutAProjectTheyAreSwappedAndNothingIsReadOntoThem) {
    TestProject project;
    CAEObject& assembly = project.Add(CAE_SUBASSEMBLY, L"Body");
    CAEObject& part = project.Add(assembly, CAE_PART, L"Door");
    ASSERT_EQ(Detach(*project, assembly), 0);
    EXPECT_EQ(
        RecordingOf([&] { ImportVersionsText(R"([{"type":"CAEPART","name":"x","version":"1.0"}])", part); }),
        "CAEObject::getType(#3)\n"
        "CAEObject::getProject(#3)\n"
        "CAEObject::createNewVersion(#3, 0, 0, true, false)\n"
        "CAEObject::getPointerToVersion(#3, 0, 0)\n"
        "CAEObject::getParent(#3)\n"
        "CAEObject::detachChild(#2, #3, false)\n"
        "CAEObjectIdentification::getID(#3)\n"
        "CAEObjectIdentification::setID(#3, 3)\n"
        "CAEObject::addChild(#2, #3)\n"
        "CAEObject::getType(#3)\n"
        "CAEObject::getProject(#3)\n"
        "CAEObject::getProject(#3)\n"
        "CAEObject::detachChild(#2, #3, false)\n"
        "CAEObject::addChild(#2, #3)\n"
        "CAEObject::getProject(#3)\n"
        "CAEObjectIdentification::getID(#3)\n"
        "overwriteCurrentVersionWithVersion(null, 3, 0, 0)\n");
    EXPECT_EQ(NameOf(part), "Door");
    EXPECT_EQ(ChildrenOf(assembly), std::vector<CAEObject*>{&part});
}

TEST(ImportVersions, AnExceptionPassesAndLeavesTheVersionInTheObjectsPlace) {
    Door door;
    const korvane::OddAnswer noMemory("CAEObject::setName", {.throws = true});
    const std::string recording = RecordingOf([&] {
        EXPECT_THROW(ImportVersionsText(R"([{"type":"CAEPART","dbkey":"K","name":"x","version":"1.0"},)"
                                        R"({"type":"CAEPART","name":"y","version":"1.0"}])",
                                        door.part),
                     std::bad_alloc);
    });
    EXPECT_TRUE(recording.ends_with("CAEObject::setName(#2, \"x\")\n")) << recording;
    CAEObject* const version = VersionOf(door.part, 0, 0);
    EXPECT_EQ(ChildrenOf(*door.project), std::vector<CAEObject*>{version});
    EXPECT_EQ(door.project->getCAEObject(2), version);
    EXPECT_EQ(TextOf(version->getDBKey()), "K");
    EXPECT_EQ(door.part.getParent(), nullptr);
    EXPECT_EQ(NameOf(door.part), "Door");
}

TEST(ImportVersions, WalksTheMembersOfAnObjectAndNothingElse) {
    Door door;
    ImportVersionsText(R"({"a":{"type":"CAEPART","name":"first","version":"1"},)"
                       R"("b":{"type":"CAEPART","dbkey":"K","version":"2"}})",
                       door.part);
    EXPECT_EQ(NameOf(door.part), "first");
    EXPECT_EQ(TextOf(door.part.getDBKey()), "K");

    Door other;
    for (const char type : {JSON_NULL, JSON_STRING, JSON_NUMBER, JSON_BOOL}) {
        EXPECT_EQ(RecordingOf([&] {
                      CAEObjectJson(JSONNode(JSON_NODE), &other.part).ImportVersions(JSONNode(type));
                  }),
                  "CAEObject::getType(#2)\nCAEObject::getProject(#2)\n");
    }
}

TEST(ImportVersions, OfNoObjectDoesNothing) {
    EXPECT_EQ(RecordingOf([] {
                  CAEObjectJson(JSONNode(JSON_NODE), nullptr)
                      .ImportVersions(libjson::parse(R"([{"type":"CAEPART","version":"1.0"}])"));
              }),
              "");
}

TEST(ImportVersions, LeavesTheCallersSectionAlone) {
    Door door;
    const JSONNode section = libjson::parse(R"([{"type":"CAEPART","name":"x","version":"1.0"}])");
    const std::string before = TextOfNode(section);
    CAEObjectJson(JSONNode(JSON_NODE), &door.part).ImportVersions(section);
    EXPECT_EQ(TextOfNode(section), before);
}

TEST(ImportVersions, ReadsBackWhatADriverWrote) {
    Door door;
    door.AddVersion(1, 0, L"first");
    door.AddVersion(2, 0, L"second");
    const JSONNode section = door.Section();
    Door other;
    CAEObjectJson(JSONNode(JSON_NODE), &other.part).ImportVersions(section);
    EXPECT_EQ(NameOf(other.part), "second");
    // The door's own file, and one more for each record that brought it along.
    EXPECT_EQ(FileIdsOf(other.part).size(), 3U);
}
