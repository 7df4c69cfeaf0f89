#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <string>

#include "TextFile.h"
#include "support/Documents.h"
#include "support/ModelBuilders.h"

namespace {

/// The project that docs/document.md shows as its example.
TestProject MakeExample() {
    TestProject project(L"trailer");
    project->setDBKey(L"PRJ-0042");
    SetMetadata(*project, L"Description", L"Chassis of the trailer, \u00FCberarbeitet");
    SetMetadata(*project, L"Mass", L"1250.5", L"kg", L"Double");

    CAEObject& study = project.Add(CAE_MODEL, L"Bending 1/2");
    study.setDBKey(L"STU-0007");
    project.AddFile(study, L"results.frd", CAE_FILE_RESULT).m_locationType = L"Vault";

    CAEObject& frame = project.Add(study, CAE_PART, L"frame");
    project.AddFile(frame, L"frame.step", CAE_FILE_CAD);

    CAEObject& iterations = project.Add(study, CAE_ITERATION_FOLDER, L"Iterations");
    CAEObject& iteration = project.Add(iterations, CAE_ITERATION, L"run 1");
    CAEObject& model = project.Add(iteration, CAE_ITERATION_MODEL, L"");
    project.AddFile(model, L"bending.inp", CAE_FILE_DECK);
    return project;
}

/// The first block of this language in docs/document.md.
std::string Shown(const std::string& language) {
    const std::string text = ReadText(KORVANEJSON_DOCS "/document.md");
    const std::string opening = "\n```" + language + "\n";
    const std::size_t start = text.find(opening);
    if (start == std::string::npos) {
        return "(no example)";
    }
    const std::size_t first = start + opening.size();
    return text.substr(first, text.find("\n```", first) - first);
}

JSONNode ShownNode(const std::string& language) {
    return libjson::parse(Shown(language).c_str());
}

std::string NameOf(const CAEObject& object) {
    OuString name;
    object.getName(name);
    return name.GetAnsiBuffer();
}

std::string PathOf(const CAEFile& file) {
    OuString path;
    file.getFullPathName(path);
    return path.GetAnsiBuffer();
}

std::string KeyOf(CAEProject& project, int id) {
    return project.getCAEObject(id)->getDBKey().GetAnsiBuffer();
}

/// The value and the type of a metadata entry.
std::string EntryOf(const CAEObject& object, const wchar_t* name) {
    OuString value;
    OuString type;
    object.getMetadataValue(name, value);
    object.getMetadataType(name, type);
    return std::string(value.GetAnsiBuffer()) + "/" + type.GetAnsiBuffer();
}

}  // namespace

TEST(DocumentExample, IsWhatTheLibraryWrites) {
    const TestProject project = MakeExample();
    JsonSerializer serializer(&*project);
    const JSONNode document = serializer.GetJson();
    const json_string indented = document.write_formatted();
    SaveDocument({indented.c_str(), indented.size()});
    EXPECT_EQ(std::string(indented.c_str()), Shown("json"));
    SaveDocument(serializer.GetJsonString().GetAnsiBuffer());
}

TEST(DocumentExample, AnswerSetsTheKeysThatTheTextLists) {
    const TestProject project = MakeExample();
    caerest::json::ApplyJsonResponseOnObject(ShownNode("json answer"), &*project);
    EXPECT_STREQ(korvane::GetDisplayName(*project).GetAnsiBuffer(), "trailer, second draft");
    EXPECT_EQ(NameOf(*project), "trailer");
    const char* const keys[] = {"PRJ-0042", "STU-0007", "207", "PRT-0113", "FIL-0208",
                                "",         "ITR-0030", "",    ""};
    int id = 0;
    for (const char* key : keys) {
        EXPECT_EQ(KeyOf(*project, ++id), key) << id;
    }
}

TEST(DocumentExample, ImportGivesWhatTheTextLists) {
    const auto project = korvane::CreateProject(L"", L"/studies/trailer");
    JSONNode document = ShownNode("json import");
    caerest::json::DeserializeJsonToObject(document, project.get());

    EXPECT_STREQ(korvane::GetDisplayName(*project).GetAnsiBuffer(), "Trailer, 2026");
    EXPECT_EQ(NameOf(*project), "trailer");
    EXPECT_STREQ(project->getAdditionalType().GetAnsiBuffer(), "Simulation");
    EXPECT_EQ(KeyOf(*project, 1), "42");
    EXPECT_EQ(EntryOf(*project, L"Mass"), "1250.50/Double");
    EXPECT_EQ(EntryOf(*project, L"Released"), "true/");

    CAEObject& axle = *project->getCAEObject(2);
    EXPECT_EQ(axle.getType(), CAE_SUBASSEMBLY);
    EXPECT_EQ(NameOf(axle), "axle");
    EXPECT_EQ(KeyOf(*project, 2), "ITM-0051");
    const CAEFile& geometry = *project->getFile(3);
    EXPECT_EQ(korvane::GetFileRoles(axle).cadFile, 3);
    EXPECT_EQ(PathOf(geometry), "/studies/trailer/axle.step");
    EXPECT_TRUE(korvane::IsDownloaded(geometry));
    const CAEFile& drawing = *project->getFile(4);
    EXPECT_EQ(PathOf(drawing), "/studies/trailer/axle.pdf");
    EXPECT_EQ(drawing.getFileType(), CAE_FILE_UNKNOWN);
    EXPECT_EQ(drawing.getFileFormat(), CAE_FORMAT_UNKNOWN);

    CAEObject& view = *project->getCAEObject(5);
    EXPECT_EQ(view.getType(), CAE_LOADCASE_VIEW);
    EXPECT_EQ(NameOf(view), "");
    EXPECT_EQ(KeyOf(*project, 5), "");
    const auto& item = dynamic_cast<const CAEViewItem&>(*project->getCAEObject(6));
    EXPECT_EQ(NameOf(item), "from the left");
    EXPECT_EQ(korvane::GetReferencedObject(item), 2);
    EXPECT_EQ(KeyOf(*project, 6), "");
    EXPECT_EQ(project->getCAEObject(7), nullptr);
}
