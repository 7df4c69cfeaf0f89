#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"
#include "support/TextUnits.h"

// Documents as other programs write them: every text here was written by hand.

namespace {

/// The document of a fresh project after the import of the text. Dates and creators that the text does not
/// bring are those of the test.
std::string Imported(const std::string& text) {
    TestProject project;
    korvane::SetCreation(*project, kTestDate, kTestUser);
    JSONNode document = libjson::parse(text.c_str());
    caerest::json::DeserializeJsonToObject(document, &*project);
    for (CAEFile* file : korvane::GetProjectFiles(*project)) {
        file->setCreatedDate(kTestDate);
        korvane::SetCreatedUserName(*file, kTestUser);
    }
    return JsonSerializer(&*project).GetJsonString().GetAnsiBuffer();
}

/// What nearly every text here is imported as: a project with a part, its mesh and a tag.
std::string Expected() {
    return ObjectNodeText(
        {.id = "1",
         .name = "Crash",
         .type = "SIMULATION",
         .databaseKey = "100",
         .metaData = R"({"Mass":{"value":"1.50","metaDataType":""}})",
         .children =
             ObjectNodeText({.id = "2",
                             .name = "frame",
                             .type = "CAEPART",
                             .databaseKey = "200",
                             .files = ObjectNodeText({.id = "3",
                                                      .name = "frame.msh",
                                                      .type = "CAEFILE",
                                                      .databaseKey = "300",
                                                      .tail = RecordTail("Mesh", "Binary", "vault")})}) +
             "," + ObjectNodeText({.id = "4", .name = "42", .type = "CAETAG"}),
         .tail = kRootTail});
}

/// The name of a part that a document in the given text brings.
std::string NameFrom(const std::string& member) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"before");
    JSONNode document = libjson::parse((R"({"type":"CAEPART",)" + member + "}").c_str());
    caerest::json::DeserializeJsonToObject(document, &part);
    return NameOf(part);
}

}  // namespace

TEST(ForeignDocuments, MembersInTheUsualOrder) {
    EXPECT_EQ(
        Imported(R"({"id":"1","displayName":"Crash","type":"SIMULATION","dbkey":"100","metaData":{"Mass":)"
                 R"({"value":"1.50","metaDataType":"kg"}},"children":[{"id":"2","name":"frame","type":)"
                 R"("CAEPART","dbkey":"200","metaData":{},"children":[],"files":[{"id":"3","name":)"
                 R"("frame.msh","type":"CAEFILE","dbkey":"300","metaData":{},"children":[],"files":[],)"
                 R"("fileType":"Mesh","fileFormat":"Binary","locationType":"vault","filePath":""}]},)"
                 R"({"id":"4","name":"42","type":"CAETAG","metaData":{},"children":[],"files":[]}],)"
                 R"("files":[],"subType":"SDM"})"),
        Expected());
}

TEST(ForeignDocuments, MembersInAnyOrder) {
    EXPECT_EQ(
        Imported(R"({"subType":"SDM","children":[{"files":[{"locationType":"vault","fileFormat":"Binary",)"
                 R"("dbkey":"300","fileType":"Mesh","name":"frame.msh","filePath":"x"}],"dbkey":"200",)"
                 R"("type":"CAEPART","name":"frame","id":"9"},{"type":"CAETAG","name":"42"}],)"
                 R"("metaData":{"Mass":{"metaDataType":"kg","value":"1.50"}},"dbkey":"100",)"
                 R"("displayName":"Crash","type":"SIMULATION"})"),
        Expected());
}

TEST(ForeignDocuments, NumbersForTexts) {
    EXPECT_EQ(
        Imported(R"({"id":1,"displayName":"Crash","type":"SIMULATION","dbkey":100,"metaData":{"Mass":)"
                 R"({"value":1.50,"metaDataType":0}},"children":[{"id":2,"name":"frame","type":"CAEPART",)"
                 R"("dbkey":200,"files":[{"id":3,"name":"frame.msh","dbkey":300,"fileType":"Mesh",)"
                 R"("fileFormat":"Binary","locationType":"vault"}]},{"id":4,"name":42,"type":"CAETAG"}]})"),
        Expected());
}

TEST(ForeignDocuments, UnknownMembersEverywhere) {
    EXPECT_EQ(
        Imported(
            R"({"$schema":"x","a":{"type":"CAEPART","children":[{"type":"CAETAG"}]},"displayName":"Crash",)"
            R"("links":[{"href":"/objects/1"}],"type":"SIMULATION","null":null,"":[],"dbkey":"100",)"
            R"("metaData":{"Mass":{"value":"1.50","metaDataType":"kg","unit":"kg","limits":[1,2]}},)"
            R"("children":[{"name":"frame","type":"CAEPART","owner":{"name":"x","dbkey":"y"},)"
            R"("dbkey":"200","files":[{"name":"frame.msh","size":12345,"dbkey":"300","fileType":"Mesh",)"
            R"("checksum":{"sha":"00","fileType":"CAD"},"fileFormat":"Binary","locationType":"vault",)"
            R"("history":[]}]},{"_":{},"name":"42","type":"CAETAG","projectId":7,"status":"done",)"
            R"("checkOut":true,"category":null,"versions":[{"name":"x"}],"version":"2.0"}],"page":1})"),
        Expected());
}

TEST(ForeignDocuments, ObjectsWhereArraysAreExpected) {
    EXPECT_EQ(
        Imported(
            R"({"displayName":"Crash","type":"SIMULATION","dbkey":"100","metaData":{"Mass":{"value":"1.50",)"
            R"("metaDataType":"kg"}},"children":{"name":{"name":"frame","type":"CAEPART","dbkey":"200",)"
            R"("files":{"type":{"name":"frame.msh","dbkey":"300","fileType":"Mesh","fileFormat":"Binary",)"
            R"("locationType":"vault"}}},"4":{"name":"42","type":"CAETAG"}},"files":{}})"),
        Expected());
}

TEST(ForeignDocuments, ArraysWhereObjectsAreExpected) {
    // Elements have no names, so entries go by the empty one, and a record that is an array says nothing.
    EXPECT_EQ(Imported(R"({"type":"X","metaData":[{"value":"1","metaDataType":"a"},["value","2"]]})"),
              ObjectNodeText({.id = "1",
                              .name = "Project",
                              .type = "X",
                              .metaData = R"({"":{"value":"","metaDataType":""}})",
                              .tail = kRootTail}));
    EXPECT_EQ(Imported(R"({"type":"X","children":[["type","CAETAG"],[{"type":"CAETAG"}]],)"
                       R"("files":[["name","a"]]})"),
              ObjectNodeText(
                  {.id = "1",
                   .name = "Project",
                   .type = "X",
                   .files = ObjectNodeText(
                       {.id = "2", .name = "", .type = "CAEFILE", .tail = RecordTail("Unknown", "Unknown")}),
                   .tail = kRootTail}));
    EXPECT_EQ(Imported(R"([{"type":"X","name":"a","children":[{"type":"CAETAG"}]}])"),
              ObjectNodeText({.id = "1", .name = "Project", .type = "", .tail = kRootTail}));
}

TEST(ForeignDocuments, PlainValuesWhereContainersAreExpected) {
    for (const char* value : {"null", "0", "true", R"("")", R"("text")"}) {
        const std::string text = std::string(R"({"type":"X","metaData":)") + value + R"(,"children":)" +
                                 value + R"(,"files":)" + value + R"(,"displayName":"behind"})";
        EXPECT_EQ(Imported(text),
                  ObjectNodeText({.id = "1", .name = "behind", .type = "X", .tail = kRootTail}))
            << value;
    }
}

TEST(ForeignDocuments, ContainersWherePlainValuesAreExpected) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"before");
    part.setDBKey(L"K");
    JSONNode document = libjson::parse(R"({"type":"X","name":{"first":"a","last":"b"},"dbkey":[1,2],)"
                                       R"("createdDate":{"year":2026},"createdBy":["me"]})");
    caerest::json::DeserializeJsonToObject(document, &part);
    EXPECT_EQ(NameOf(part), "");
    EXPECT_EQ(TextOf(part.getDBKey()), "");
    EXPECT_EQ(CreatedDateOf(part), "");
    EXPECT_EQ(CreatedUserNameOf(part), "engineer");
}

TEST(ForeignDocuments, DuplicatedMembers) {
    EXPECT_EQ(
        Imported(R"({"displayName":"x","dbkey":"y","type":"SIMULATION","type":"OTHER","displayName":"Crash",)"
                 R"("metaData":{"Mass":{"value":"1","metaDataType":""}},"metaData":{"Mass":{"value":"1.50",)"
                 R"("value":"9","metaDataType":""}},"dbkey":"100","children":[{"name":"x","type":"CAEPART",)"
                 R"("name":"frame","dbkey":"x","dbkey":"200","files":[{"name":"x","name":"frame.msh",)"
                 R"("dbkey":"300","fileType":"Mesh","fileType":"CAD","fileFormat":"Binary",)"
                 R"("fileFormat":"ASCII","locationType":"vault","locationType":""}],"files":[]}],)"
                 R"("children":[{"type":"CAETAG","type":"CAEPART","name":"42"}]})"),
        Expected());
}

TEST(ForeignDocuments, AllKindsOfLineEndsAndBlanks) {
    std::string text =
        R"(  {  "displayName"  :  "Crash" , "type":"SIMULATION" ,"dbkey": "100", "metaData" : { "Mass" :
 { "value" : "1.50" , "metaDataType" : "kg" } } , "children" : [ { "name" : "frame" , "type" : "CAEPART" ,
 "dbkey" : "200" , "files" : [
 { "name" : "frame.msh" , "dbkey" : "300" , "fileType" : "Mesh" , "fileFormat" : "Binary" ,
 "locationType" : "vault" } ] } ,

 { "name" : "42" , "type" : "CAETAG" , "files" : [ ] , "metaData" : { } } ] }
 )";
    for (const char* lineEnd : {"\n", "\r\n", "\r", "\n\r", "\t", "\r\n\r\n\t \t", " ", ""}) {
        std::string with;
        for (const char character : text) {
            character == '\n' ? with += lineEnd : with += character;
        }
        EXPECT_EQ(Imported(with), Expected()) << lineEnd;
    }
}

TEST(ForeignDocuments, EscapedNamesAndValues) {
    EXPECT_EQ(
        Imported(
            R"({"\u0064isplayNam\u0065":"\u0043rash","\u0074ype":"SIMUL\u0041TION","dbke\u0079":"\u00310\u0030",)"
            R"("meta\u0044ata":{"M\u0061ss":{"valu\u0065":"1\u002E50","metaDataT\u0079pe":""}},)"
            R"("\u0063hildren":[{"n\u0061me":"fr\u0061me","typ\u0065":"\u0043AEPART","\u0064bkey":"200",)"
            R"("fil\u0065s":[{"name":"frame\u002emsh","dbkey":"300","file\u0054ype":"M\u0065sh",)"
            R"("file\u0046ormat":"\u0042inary","location\u0054ype":"v\u0061ult"}]},)"
            R"({"name":"\u0034\u0032","type":"CAE\u0054AG"}]})"),
        Expected());
}

TEST(ForeignDocuments, EveryEscapeOfATextIsRead) {
    EXPECT_EQ(NameFrom(R"("name":"\"\\\/\b\f\n\r\t\u0041")"), "\"\\/\b\f\n\r\tA");
    EXPECT_EQ(NameFrom("\"name\":\"/ plain slash \x7F\""), "/ plain slash \x7F");
}

TEST(ForeignDocuments, EscapesStandForBytesWhereTheHostSaysSo) {
    const UnitsFor bytes(libjson::text_units::bytes);
    EXPECT_EQ(NameFrom("\"name\":\"Tr\xC3\xA4ger \xE4\xB8\xAD \xF0\x9F\x9A\x97\""),
              "Tr\xC3\xA4ger \xE4\xB8\xAD \xF0\x9F\x9A\x97");
    EXPECT_EQ(NameFrom(R"("name":"Tr\u00C3\u00A4ger")"), "Tr\xC3\xA4ger");
    EXPECT_EQ(NameFrom(R"("name":"\u4e2d")"), "\xE4\xB8\xAD");
}

TEST(ForeignDocuments, EscapesStandForTheirCodePoints) {
    EXPECT_EQ(NameFrom(R"("name":"Tr\u00e4ger \u4e2d \ud83d\ude97")"),
              "Tr\xC3\xA4ger \xE4\xB8\xAD \xF0\x9F\x9A\x97");
    EXPECT_EQ(NameFrom("\"name\":\"Tr\xC3\xA4ger \xE4\xB8\xAD \xF0\x9F\x9A\x97\""),
              "Tr\xC3\xA4ger \xE4\xB8\xAD \xF0\x9F\x9A\x97");
}

TEST(ForeignDocuments, NamesOfEntriesAndFilesToo) {
    TestProject project;
    JSONNode document = libjson::parse(
        "{\"type\":\"X\",\"metaData\":{\"Tr\\u00e4gheit\":{\"value\":\"1\"},"
        "\"H\xC3\xB6he\":{\"value\":\"2\"}},"
        "\"files\":[{\"name\":\"K\\u00fchlk\xC3\xB6rper.inp\"}]}");
    caerest::json::DeserializeJsonToObject(document, &*project);
    EXPECT_EQ(MetadataValueOf(*project, L"Tr\u00E4gheit"), "1");
    EXPECT_EQ(MetadataValueOf(*project, L"H\u00F6he"), "2");
    OuString path;
    project->getFile(2)->getFullPathName(path);
    EXPECT_STREQ(path.GetBuffer(), L"/studies/K\u00FChlk\u00F6rper.inp");
}

TEST(ForeignDocuments, AnswersToo) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    project.AddFile(*project, L"a", CAE_FILE_DECK);
    project.Add(CAE_TAG, L"tag");
    const JSONNode answer = libjson::parse(
        "\r\n{ \"status\" : { \"id\" : \"1\" , \"dbkey\" : \"wrong\" } ,\r"
        "\t\"\\u0063hildren\" : { \"x\" : { \"dbk\\u0065y\" : 200 , \"\\u0069d\""
        " : 2 , \"id\" : 4 } } ,\n\n \"files\" : [ [ ] , null , { \"dbkey\" : "
        "\"300\" , \"more\" : [ ] , \"id\" : \"3\" } ] , \"id\" : 1.0 , "
        "\"dbkey\" : \"1\xC3\xA4\" , \"name\" : 12 }\r\n");
    caerest::json::ApplyJsonResponseOnObject(answer, &*project);
    EXPECT_EQ(TextOf(project->getDBKey()), "1\xC3\xA4");
    EXPECT_EQ(TextOf(project->getCAEObject(2)->getDBKey()), "200");
    EXPECT_EQ(TextOf(project->getCAEObject(3)->getDBKey()), "300");
    EXPECT_EQ(TextOf(project->getCAEObject(4)->getDBKey()), "");
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "12");
}

TEST(ForeignDocuments, DocumentOfTheServerInTheExamples) {
    std::ifstream file(KORVANEJSON_SERVER_DOCUMENT, std::ios::binary);
    ASSERT_TRUE(file) << KORVANEJSON_SERVER_DOCUMENT;
    const std::string text(std::istreambuf_iterator<char>(file), {});
    TestProject project;
    JSONNode document = libjson::parse(text.c_str());
    caerest::json::DeserializeJsonToObject(document, &*project);

    std::map<std::string, CAEObject*> byKey;
    std::vector<const CAEViewItem*> items;
    korvane::VisitTree(*project, [&](CAEObject& object, int) {
        if (const auto* item = dynamic_cast<const CAEViewItem*>(&object)) {
            items.push_back(item);
        } else {
            byKey[TextOf(object.getDBKey())] = &object;
        }
    });
    EXPECT_EQ(byKey.size(), 14U);
    EXPECT_EQ(korvane::GetProjectFiles(*project).size(), 9U);
    EXPECT_FALSE(korvane::GetProgramReference(*project));
    EXPECT_EQ(MetadataValueOf(*byKey.at("MOD-2001"), L"Owner"), "J\xC3\xA9r\xC3\xB4me M\xC3\xBCller");
    // The first one comes before its master assembly.
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(korvane::GetReferencedObject(*items[0]), 0);
    EXPECT_EQ(korvane::GetReferencedObject(*items[1]), byKey.at("ITEM-7001")->getID());
    EXPECT_EQ(korvane::GetReferencedObject(*items[2]), byKey.at("ITEM-7002")->getID());
    for (const CAEViewItem* item : items) {
        EXPECT_NE(TextOf(item->getLinkDBKey()), "");
        EXPECT_EQ(TextOf(item->getDBKey()), "");
    }
    const korvane::FileRoles part = korvane::GetFileRoles(*byKey.at("PRT-4001"));
    EXPECT_EQ(part.meshes.size(), 1U);
    EXPECT_NE(part.cadFile, 0);
    EXPECT_NE(part.graphicFile, 0);
    EXPECT_NE(korvane::GetFileRoles(*byKey.at("ITEM-7002")).feRepresentation, 0);
}
