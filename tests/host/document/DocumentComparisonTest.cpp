#include <EmbeddedModel.h>
#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include "host/document/DocumentComparison.h"
#include "support/SmallStack.h"

namespace host {
namespace {

JSONNode Parse(const std::string& text) {
    return libjson::parse(json_string(text.data(), text.size()));
}

/// The differences of two documents, a line each, in both directions the same number.
std::string Compare(const std::string& first, const std::string& second) {
    const ComparedDocument left{Parse(first), nullptr};
    const ComparedDocument right{Parse(second), nullptr};
    const DocumentDifferences result = CompareDocuments(left, right);
    EXPECT_EQ(CompareDocuments(right, left).differenceCount, result.differenceCount);
    EXPECT_EQ(CompareDocuments(left, left).differenceCount, 0U);
    std::string text;
    for (const std::string& difference : result.differences) {
        text += difference + "\n";
    }
    return text;
}

/// Two documents of a project whose child has these members.
std::string CompareChildren(const std::string& first, const std::string& second) {
    return Compare(R"({"type":"X","children":[{)" + first + "}]}",
                   R"({"type":"X","children":[{)" + second + "}]}");
}

/// Two documents of a part with a file that has these members.
std::string CompareRecords(const std::string& first, const std::string& second) {
    return Compare(R"({"type":"CAEPART","files":[{)" + first + "}]}",
                   R"({"type":"CAEPART","files":[{)" + second + "}]}");
}

constexpr const char* kBegin = "'' (id '') and '' (id '') differ in ";

TEST(CompareDocuments, FindsEveryDifferenceThatTheFormatCarries) {
    const auto differs = [](const std::string& what) { return kBegin + what + "\n"; };
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART")", R"("type":"CAETAG")"),
              differs("type: 'CAEPART', 'CAETAG'"));
    EXPECT_EQ(
        CompareChildren(R"("type":"CAEPART","id":"1","name":"a")", R"("type":"CAEPART","id":"2","name":"b")"),
        "'a' (id '1') and 'b' (id '2') differ in name: 'a', 'b'\n");
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","createdDate":"a")", R"("type":"CAEPART")"),
              differs("createdDate: 'a', ''"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","dbkey":"a")", R"("type":"CAEPART")"),
              differs("dbkey: 'a', ''"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","metaData":{"m":{"value":"1"}})",
                              R"("type":"CAEPART","metaData":{"m":{"value":"2"}})"),
              differs("the metadata entry 'm': '1', '2'"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","metaData":{"m":{"value":"1"}})", R"("type":"CAEPART")"),
              differs("the number of metadata entries: '1', '0'"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","metaData":{"m":{"value":"1"}})",
                              R"("type":"CAEPART","metaData":{"M":{"value":"1"}})"),
              differs("the name of a metadata entry: 'm', 'M'"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","children":[{"type":"CAETAG"}])", R"("type":"CAEPART")"),
              differs("the number of children: '1', '0'"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","files":[{}])", R"("type":"CAEPART")"),
              differs("the number of files: '1', '0'"));
    EXPECT_EQ(CompareRecords(R"("name":"a")", R"("name":"b")"),
              "'a' (id '') and 'b' (id '') differ in name: 'a', 'b'\n");
    EXPECT_EQ(CompareRecords(R"("fileType":"CAD")", R"("fileType":"Mesh")"),
              differs("fileType: 'CAD', 'Mesh'"));
    EXPECT_EQ(CompareRecords(R"("fileFormat":"ASCII")", R"("fileFormat":"Binary")"),
              differs("fileFormat: 'ASCII', 'Binary'"));
    EXPECT_EQ(CompareRecords(R"("locationType":"a")", R"("locationType":"b")"),
              differs("locationType: 'a', 'b'"));
    EXPECT_EQ(CompareRecords(R"("createdDate":"a","dbkey":"k")", R"("createdDate":"b","dbkey":"l")"),
              differs("createdDate: 'a', 'b'") + differs("dbkey: 'k', 'l'"));
    EXPECT_EQ(Compare(R"({"type":"X"})", R"({"type":"CAEPART"})"),
              differs("whether they are projects: 'X', 'CAEPART'") + differs("type: 'X', 'CAEPART'") +
                  differs("their members: 'createdDate', 'name'"));
    EXPECT_EQ(
        Compare(R"({"type":"X","children":[{"type":"CAETAG","name":"a"},{"type":"CAETAG","name":"b"}]})",
                R"({"type":"X","children":[{"type":"CAETAG","name":"b"},{"type":"CAETAG","name":"a"}]})"),
        "'a' (id '') and 'b' (id '') differ in name: 'a', 'b'\n"
        "'b' (id '') and 'a' (id '') differ in name: 'b', 'a'\n");
}

TEST(CompareDocuments, LeavesOutWhatTheFormatDoesNotCarry) {
    EXPECT_EQ(
        CompareChildren(
            R"("type":"CAEPART","id":"1","createdBy":"a","status":"x","foo":1,)"
            R"("metaData":{"m":{"value":"1","metaDataType":"kg"}})",
            R"("type":"CAEPART","id":"2","createdBy":"b","metaData":{"m":{"value":"1","metaDataType":""}})"),
        "");
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","metaData":{"Description":{"value":"1"}})",
                              R"("type":"CAEPART","metaData":{"description":{"value":"1"}})"),
              "");
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","name":"")", R"("type":"CAEPART","name":"model")"), "");
    // A view item's own key, the name of a file among the children, and what no import makes something of.
    EXPECT_EQ(CompareChildren(R"("type":"CAEVIEWITEM","dbkey":"a")", R"("type":"CAEVIEWITEM")"), "");
    EXPECT_EQ(CompareChildren(R"("type":"CAEFILE","name":"a")", R"("type":"CAEFILE","name":"")"), "");
    EXPECT_EQ(CompareChildren(R"("type":"CAETAG","children":[{"type":"CAEFOO"},{},{"type":"CAEUNKNOWN"}])",
                              R"("type":"CAETAG")"),
              "");
    EXPECT_EQ(
        CompareChildren(
            R"("type":"CAEMODEL","files":[{"fileType":"Mesh"},{"fileType":"CAD"},{"fileType":"Graphic"}])",
            R"("type":"CAEMODEL")"),
        "");
    EXPECT_EQ(
        CompareRecords(
            R"("id":"1","filePath":"/a","isFileDownloaded":"true","name":"x/a","children":[{"type":"CAETAG"}],"files":[{}])",
            R"("id":"2","filePath":"","isInCoordinateGlobalFrame":true,"name":"a")"),
        "");
    EXPECT_EQ(CompareRecords(R"("fileFormat":"ascii","fileType":"cad")",
                             R"("fileFormat":"Unknown","fileType":"Unknown")"),
              "");
    EXPECT_EQ(Compare(R"({"type":"X","subType":"SDM"})", R"({"type":"X"})"), "");
}

TEST(CompareDocuments, ReadsDuplicatesAsAnImportDoes) {
    EXPECT_EQ(CompareChildren(
                  R"("type":"CAETAG","metaData":{"m":{"value":"1"},"n":{"value":"2"},"M":{"value":"3"}})",
                  R"("type":"CAETAG","metaData":{"m":{"value":"3"},"n":{"value":"2"}})"),
              "");
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","name":"a","name":"b","dbkey":"K","dbkey":"L")",
                              R"("type":"CAEPART","displayName":"b","dbkey":"L")"),
              "");
    EXPECT_EQ(CompareRecords(R"("fileType":"CAD","fileType":"Mesh")", R"("fileType":"CAD")"), "");
    EXPECT_EQ(CompareChildren(
                  R"("type":"CAETAG","children":[{"type":"CAETAG"}],"children":{"x":{"type":"CAETAG"}})",
                  R"("type":"CAETAG","children":[{"type":"CAETAG"},{"type":"CAETAG"}])"),
              "");
}

TEST(CompareDocuments, ANullKeyIsNoneAndAnyOtherNullIsAText) {
    EXPECT_EQ(CompareChildren(R"("type":"CAETAG","dbkey":null)", R"("type":"CAETAG")"), "");
    EXPECT_EQ(
        CompareChildren(R"("type":"CAETAG","dbkey":"K","dbkey":null)", R"("type":"CAETAG","dbkey":"K")"), "");
    EXPECT_EQ(
        CompareChildren(R"("type":"CAETAG","createdDate":null)", R"("type":"CAETAG","createdDate":"null")"),
        "");
}

TEST(CompareDocuments, ASessionObjectIsNoProject) {
    const std::unique_ptr<CAEProject> project = korvane::CreateProject(L"P", L"/d");
    CAEObject& session = *korvane::CreateObject(*project, static_cast<_tagCAEObjectType>(26), L"a");
    const auto document = [&] { return JsonSerializer(&session).GetJson().write(); };
    const std::string first = document().c_str();
    session.setName(L"b");
    EXPECT_EQ(Compare(first, document().c_str()), "'a' (id '2') and 'b' (id '2') differ in name: 'a', 'b'\n");
}

std::string Study(const std::string& type, const std::string& name, const std::string& studyTypeName) {
    return R"({"type":"X","children":[{"type":")" + type + R"(","name":")" + name +
           R"(","children":[{"type":"CAEITERATIONFOLDER","children":[{"type":"CAEITERATION","studyTypeName":")" +
           studyTypeName + R"("}]}]}]})";
}

TEST(CompareDocuments, AStudyTypeCountsWhereTheDocumentHasTheStudy) {
    EXPECT_EQ(Compare(Study("CAEMODEL", "s", "a"), Study("CAEMODEL", "s", "b")),
              std::string(kBegin) + "studyTypeName: 'a', 'b'\n");
    EXPECT_EQ(Compare(Study("CAEMODEL", "s", ""), Study("CAEMODEL", "s", "model")), "");
    EXPECT_EQ(Compare(Study("CAEPROJECT", "s", "a"), Study("CAEPROJECT", "s", "b")), "");
    EXPECT_EQ(Compare(Study("CAEFILE", "s", "a"), Study("CAEFILE", "s", "b")), "");
    EXPECT_EQ(Compare(R"({"type":"CAEITERATION","studyTypeName":"a"})",
                      R"({"type":"CAEITERATION","studyTypeName":"b"})"),
              "");
    // The root of a document may be the study itself, and a project that has its name elsewhere.
    const std::string below =
        R"(,"children":[{"type":"CAEITERATIONFOLDER","children":[{"type":"CAEITERATION","studyTypeName":)";
    EXPECT_NE(Compare(R"({"type":"CAEMODEL")" + below + R"("a"}]}]})",
                      R"({"type":"CAEMODEL")" + below + R"("b"}]}]})"),
              "");
    EXPECT_EQ(Compare(R"({"type":"X")" + below + R"("a"}]}]})", R"({"type":"X")" + below + R"("b"}]}]})"),
              "");
}

/// A project, exported.
struct Exported {
    Exported(const wchar_t* name, const wchar_t* displayName, const wchar_t* additionalType = L"X")
        : project(korvane::CreateProject(name, L"/studies")) {
        project->SetDisplayName(displayName);
        project->setAdditionalType(additionalType);
        document = {JsonSerializer(project.get()).GetJson(), project.get()};
    }

    std::unique_ptr<CAEProject> project;
    ComparedDocument document;
};

std::size_t CountDifferences(const ComparedDocument& first, const ComparedDocument& second) {
    const std::size_t count = CompareDocuments(first, second).differenceCount;
    EXPECT_EQ(CompareDocuments(second, first).differenceCount, count);
    return count;
}

TEST(CompareDocuments, AProjectsNameMayBeTheDisplayNameOfTheOther) {
    const ComparedDocument named{Exported(L"A", L"").document.node, nullptr};
    const auto count = [](const auto& first, const auto& second) { return CountDifferences(first, second); };
    EXPECT_EQ(count(named, Exported(L"B", L"A").document), 0U);
    EXPECT_EQ(count(named, Exported(L"A", L"B").document), 0U);
    EXPECT_EQ(count(named, Exported(L"B", L"C").document), 1U);
    EXPECT_EQ(count(Exported(L"A", L"A").document, Exported(L"B", L"A").document), 0U);
    EXPECT_EQ(count(Exported(L"A", L"A").document, Exported(L"B", L"B").document), 1U);
    // Where neither is known there is nothing to compare.
    EXPECT_EQ(Compare(R"({"type":"X","name":"A"})", R"({"type":"X","name":"B"})"), "");
}

TEST(CompareDocuments, AProjectIsOneWhateverItsAdditionalTypeSays) {
    for (const wchar_t* const type : {L"CAEPart", L"CAEFile", L"CAEIterationModel", L"CAESessionObject"}) {
        const Exported first(L"A", L"B", type);
        const Exported second(L"B", L"C", type);
        EXPECT_EQ(CountDifferences(first.document, second.document), 0U) << type;
        // The document of a file is of the same project, as long as its type says the same.
        const ComparedDocument read{second.document.node, nullptr};
        EXPECT_EQ(CountDifferences(first.document, read), 0U) << type;
        EXPECT_EQ(CountDifferences(first.document, Exported(L"C", L"C", type).document), 1U) << type;
    }
}

TEST(CompareDocuments, CountsMoreThanItNames) {
    std::string first;
    std::string second;
    for (int number = 0; number < 30; ++number) {
        first += (number == 0 ? "" : ",") + std::string(R"({"type":"CAETAG","name":"a"})");
        second += (number == 0 ? "" : ",") + std::string(R"({"type":"CAETAG","name":"b"})");
    }
    const DocumentDifferences result =
        CompareDocuments({Parse(R"({"type":"X","children":[)" + first + "]}"), nullptr},
                         {Parse(R"({"type":"X","children":[)" + second + "]}"), nullptr});
    EXPECT_EQ(result.differenceCount, 30U);
    EXPECT_EQ(result.differences.size(), 20U);
    EXPECT_EQ(result.objects, 31U);
    EXPECT_EQ(result.files, 0U);
}

TEST(CompareDocuments, NeedsNoStackForNesting) {
    constexpr int kDepth = 100000;
    std::string text = R"({"type":"X")";
    for (int depth = 0; depth < kDepth; ++depth) {
        text += R"(,"children":[{"type":"CAEMODEL")";
    }
    for (int depth = 0; depth < kDepth; ++depth) {
        text += depth == 0 ? R"(,"name":"innermost"}])" : "}]";
    }
    const JSONNode document = Parse(text + "}");
    const JSONNode other = Parse(text.replace(text.find("innermost"), 9, "otherwise") + "}");
    DocumentDifferences result;
    OnSmallStack([&] { result = CompareDocuments({document, nullptr}, {other, nullptr}); });
    EXPECT_EQ(result.objects, static_cast<std::size_t>(kDepth) + 1);
    EXPECT_EQ(result.differences,
              std::vector<std::string>{"'innermost' (id '') and 'otherwise' (id '') differ in name: "
                                       "'innermost', 'otherwise'"});
}

}  // namespace
}  // namespace host
