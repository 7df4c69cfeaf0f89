#include <gtest/gtest.h>
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

/// What stands between the first ```json and the next ``` of a text.
std::string FirstExample(const std::string& markdown) {
    const std::string opening = "\n```json\n";
    const std::size_t start = markdown.find(opening);
    if (start == std::string::npos) {
        return "(no example)";
    }
    const std::size_t first = start + opening.size();
    return markdown.substr(first, markdown.find("\n```", first) - first);
}

}  // namespace

TEST(DocumentExample, IsWhatTheLibraryWrites) {
    libjson::set_text_units(libjson::text_units::utf8);
    const TestProject project = MakeExample();
    JsonSerializer serializer(&*project);
    const JSONNode document = serializer.GetJson();
    const json_string indented = document.write_formatted();
    SaveDocument({indented.c_str(), indented.size()});
    EXPECT_EQ(std::string(indented.c_str()), FirstExample(ReadText(KORVANEJSON_DOCS "/document.md")));
    SaveDocument(serializer.GetJsonString().GetAnsiBuffer());
}
