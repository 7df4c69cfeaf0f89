#include <EmbeddedRestore.h>
#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/HostSupport.h"
#include "host/document/ObjectLists.h"
#include "host/projectfile/ProjectFile.h"
#include "host/projectfile/ProjectTables.h"
#include "host/system/Database.h"
#include "support/FileRecordMembers.h"
#include "support/ModelBuilders.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

std::string Text(const OuString& text) {
    return text.GetAnsiBuffer();
}

std::string FileLine(const CAEFile& file) {
    OuString path;
    file.getFullPathName(path);
    return " path=" + Text(path) + " first=" + Text(file.m_fullPathCopy) +
           " at=" + Text(file.m_locationType) + " type=" + std::to_string(file.getFileType()) +
           " format=" + std::to_string(file.getFileFormat()) +
           (korvane::IsInGlobalFrame(file) ? " global" : "") +
           (korvane::IsDownloaded(file) ? " downloaded" : "");
}

std::string ProjectLine(const CAEProject& project) {
    OuString directory;
    project.getDirectory(directory);
    return " display=" + Text(korvane::GetDisplayName(project)) +
           " type=" + Text(project.getAdditionalType()) + " in=" + Text(directory) +
           (korvane::GetProgramReference(project) ? " program" : "");
}

std::string ListText(const std::vector<int>& numbers) {
    std::string text;
    for (const int number : numbers) {
        text += (text.empty() ? "" : ",") + std::to_string(number);
    }
    return text;
}

/// Everything that an object holds, on one line.
std::string ObjectLine(CAEObject& object) {
    OuString name;
    OuString date;
    OuString user;
    object.getName(name);
    object.getCreatedDate(date);
    object.getCreatedUserName(user);
    const korvane::FileRoles roles = korvane::GetFileRoles(object);
    std::string line =
        "#" + std::to_string(object.getID()) + " kind=" + std::to_string(object.getType()) +
        " name=" + Text(name) + " key=" + Text(object.getDBKey()) + " link=" + Text(object.getLinkDBKey()) +
        " date=" + Text(date) + " user=" + Text(user) + " files=" + ListText(roles.files) +
        " cad=" + std::to_string(roles.cadFile) + " graphic=" + std::to_string(roles.graphicFile) +
        " meshes=" + ListText(roles.meshes) + " active=" + std::to_string(roles.activeMesh) +
        " fe=" + std::to_string(roles.feRepresentation) + " custom=" + ListText(roles.customFiles);
    for (const korvane::MetadataValues& entry : korvane::GetMetadata(object)) {
        line += " [" + Text(entry.name) + "|" + Text(entry.value) + "|" + Text(entry.type) + "|" +
                Text(entry.unit) + "]";
    }
    if (const auto* const project = dynamic_cast<const CAEProject*>(&object)) {
        line += ProjectLine(*project);
    } else if (const auto* const file = dynamic_cast<const CAEFile*>(&object)) {
        line += FileLine(*file);
    } else if (const auto* const item = dynamic_cast<const CAEViewItem*>(&object)) {
        line += " shows=" + std::to_string(korvane::GetReferencedObject(*item));
    }
    return line;
}

/// Everything that a project holds, as a text: children below their parents, the files of projects behind.
std::string ModelText(CAEProject& project) {
    std::string text = "next " + std::to_string(korvane::GetNextIdentifier(project)) + "\n";
    std::vector<CAEProject*> projects;
    const auto add = [&](CAEObject& top, const std::string& begin) {
        korvane::VisitTree(top, [&](CAEObject& object, int depth) {
            text += begin + std::string(static_cast<std::size_t>(depth), ' ') + ObjectLine(object) + "\n";
            if (auto* const inner = dynamic_cast<CAEProject*>(&object)) {
                projects.push_back(inner);
            }
        });
    };
    add(project, "");
    // NOLINTNEXTLINE(modernize-loop-convert): the loop may find more projects.
    for (std::size_t index = 0; index < projects.size(); ++index) {
        for (CAEFile* const file : korvane::GetProjectFiles(*projects[index])) {
            add(*file, "file of #" + std::to_string(projects[index]->getID()) + ": ");
        }
    }
    return text;
}

class ProjectFileTest : public testing::Test {
protected:
    std::filesystem::path Keep(CAEProject& project, std::string_view name = "p.kvp") {
        const std::filesystem::path file = folder / name;
        CreateProjectFile(file, project, kept.console);
        return file;
    }
    /// The text of the project that comes back from a file.
    std::string ThereAndBack(CAEProject& project) {
        return ModelText(*ReadProjectFile(Keep(project), kept.console));
    }
    std::string ErrorOfReading(const std::filesystem::path& file) {
        return ErrorOf([&] { ReadProjectFile(file, kept.console); });
    }
    /// A project file with a part, changed by statements of SQL.
    std::filesystem::path KeepDamaged(const std::string& statements) {
        TestProject project;
        project.AddFile(project.Add(CAE_PART, L"Arm"), L"arm.dat", CAE_FILE_REPORT);
        std::filesystem::remove(folder / "p.kvp");
        const std::filesystem::path file = Keep(*project);
        Database(file, DatabaseUse::Changing, kProjectFileKind).Run(statements.c_str());
        return file;
    }

    /// Makes a project file one of the first format.
    static constexpr const char* kWithoutChecksum =
        "DROP TABLE checksum; DROP TABLE place; PRAGMA user_version = 1;";

    TemporaryDirectory folder;
    KeptConsole kept;
};

TEST_F(ProjectFileTest, GivesBackEverythingThatAProjectHolds) {
    TestProject project(L"Car");
    project->SetDisplayName(L"The car");
    project->SetProgramReference(false);
    project->setDBKey(L"PRJ-1");
    SetMetadata(*project, L"Mass", L"1250", L"kg", L"Double");
    SetMetadata(*project, L"", L"empty name");
    SetMetadata(*project, L"Description", L"");
    CAEObject& study = project.Add(CAE_MODEL, L"Study");
    auto& part = dynamic_cast<CAEPart&>(project.Add(study, CAE_PART, L"Arm"));
    project.AddFile(part, L"old.step", CAE_FILE_CAD);
    project.AddFile(part, L"new.step", CAE_FILE_CAD);
    CAEFile& mesh = project.AddFile(part, L"a.msh", CAE_FILE_MESH, CAE_FORMAT_BINARY);
    project.AddFile(part, L"b.msh", CAE_FILE_MESH);
    part.setActiveMesh(mesh.getID());
    project.AddFile(part, L"a.png", CAE_FILE_GRAPHIC, static_cast<_tagFileFormat>(9));
    mesh.setGlobalFrameCoordinate(true);
    mesh.SetFileDownloadFlag(true);
    mesh.m_locationType = L"Vault";
    mesh.m_fullPathCopy = L"D:\\first\\a.msh";
    mesh.setDBKey(L"FIL-9");
    mesh.setCreatedDate(L"");
    CAEObject& assembly = project.Add(study, CAE_SUBASSEMBLY, L"Assembly");
    project.AddFile(assembly, L"c.msh", CAE_FILE_MESH);
    assembly.setDBKey(L"ITEM-1");
    CAEObject& run = project.Add(study, CAE_ITERATION_MODEL, L"Run");
    project.AddFile(run, L"run.inp", CAE_FILE_DECK);
    auto& item = dynamic_cast<CAEViewItem&>(project.Add(study, CAE_VIEW_ITEM, L"View"));
    item.setLinkDBKey(L"ITEM-1");
    item.setReferencedCAEObject(assembly.getID());
    project.Add(CAE_FILE, L"child.txt");
    // A file that is attached to nothing, and an identifier that no file has.
    korvane::CreateFile(*project, L"/elsewhere/loose.dat", static_cast<_tagFileType>(77), CAE_FORMAT_ASCII);
    study.attachCustomFile(4711, nullptr);

    const std::string text = ModelText(*project);
    EXPECT_EQ(ThereAndBack(*project), text);
    EXPECT_NE(text.find("shows=9\n"), std::string::npos) << text;
}

TEST_F(ProjectFileTest, KeepsProjectsInProjectsWithTheirFiles) {
    TestProject project;
    auto& inner = dynamic_cast<CAEProject&>(project.Add(CAE_PROJECT, L"Inner"));
    korvane::SetDirectory(inner, L"/inner");
    inner.setAdditionalType(L"Test");
    inner.SetProgramReference(false);
    CAEFile& file = *korvane::CreateFile(inner, L"/inner/a.dat", CAE_FILE_REPORT, CAE_FORMAT_ASCII);
    inner.attachCustomFile(file.getID(), nullptr);
    // An object below a project's file: a project with a file of its own.
    CAEObject& below = *korvane::CreateObject(file, CAE_PROJECT, L"Below");
    korvane::CreateFile(dynamic_cast<CAEProject&>(below), L"x", CAE_FILE_LOG, CAE_FORMAT_ASCII);
    const std::string text = ModelText(*project);
    EXPECT_EQ(ThereAndBack(*project), text);
    EXPECT_NE(text.find("file of #4: #5"), std::string::npos) << text;
}

TEST_F(ProjectFileTest, KeepsEveryMemberOfAFileRecord) {
    const std::vector<std::string> members = FileRecordMembers();
    const TestProject project;
    JSONNode document = libjson::parse(
        (R"({"type":"X","children":[{"type":"CAEPART","files":[)" + FileRecordWith(members) + "]}]}")
            .c_str());
    caerest::json::DeserializeJsonToObject(document, &*project);
    const auto read = ReadProjectFile(Keep(*project), kept.console);
    const std::string text = Text(JsonSerializer(&*read).GetJsonString());
    for (const std::string& member : members) {
        EXPECT_NE(text.find(member), std::string::npos) << member << " is not in " << text;
    }
}

TEST_F(ProjectFileTest, KeepsIdentifiersWithTheirGaps) {
    TestProject project;
    CAEObject& gone = project.Add(CAE_MODEL, L"Gone");
    CAEObject& far = project.Add(CAE_MODEL, L"Far");
    project.Add(CAE_MODEL, L"Last");
    CAEObject* child = &gone;
    ASSERT_EQ(project->detachChild(child, true), 0);
    ASSERT_TRUE(korvane::Renumber(far, 2000000000));
    ASSERT_TRUE(korvane::Renumber(*project, 700));
    const std::string text = ModelText(*project);
    const std::unique_ptr<CAEProject> read = ReadProjectFile(Keep(*project), kept.console);
    EXPECT_EQ(ModelText(*read), text);
    EXPECT_EQ(read->getCAEObject(2), nullptr);
    // The identifier of what is gone does not come again.
    EXPECT_EQ(korvane::CreateObject(*read, CAE_TAG, L"")->getID(), 5);
}

TEST_F(ProjectFileTest, KeepsTextsOfAllBytesUpToTheirFirstNul) {
    TestProject project;
    for (const char* const name : {"it's \"quoted\" -- ; DROP TABLE object", "a/b\\c", "\x01\x02\t\n\x7F",
                                   "m\xE9sh\xFF", "\xE4\xB8\xAD\xF0\x9F\x94\xA7", "\xED\xA0\x80", ""}) {
        project.Add(CAE_PART, OuString(name, 0)).setDBKey(OuString(name, 0));
    }
    project.Add(CAE_PART, OuString(L"cut\0here", 8));
    const std::unique_ptr<CAEProject> read = ReadProjectFile(Keep(*project), kept.console);
    EXPECT_EQ(ModelText(*read), ModelText(*project));
    OuString name;
    read->getCAEObject(5)->getName(name);
    EXPECT_EQ(Text(name), "m\xE9sh\xFF");
    read->getCAEObject(9)->getName(name);
    EXPECT_EQ(Text(name), "cut");
}

TEST_F(ProjectFileTest, SavingReplacesEverythingInOneTransaction) {
    TestProject project;
    project.AddFile(project.Add(CAE_PART, L"Arm"), L"a.dat", CAE_FILE_REPORT);
    const std::filesystem::path file = Keep(*project);
    std::string text;
    {
        ProjectFile opened = ProjectFile::Open(file, true, kept.console);
        // Nobody else changes it meanwhile.
        EXPECT_EQ(ErrorOf([&] { ProjectFile::Open(file, true, kept.console); }),
                  "is in use by another program: try again when that program has finished");
        CAEObject* part = opened.Project().getCAEObject(2);
        opened.Project().detachChild(part, true);
        korvane::CreateObject(opened.Project(), CAE_TAG, L"New");
        text = ModelText(opened.Project());
        opened.Save(kept.console);
    }
    EXPECT_EQ(ModelText(*ReadProjectFile(file, kept.console)), text);
}

/// Two files of one project, one saved whole and one by its keys, after the same changes.
void ExpectSameAfterSavingKeys(const std::filesystem::path& whole, const std::filesystem::path& keys,
                               const std::function<void(CAEProject&)>& change, Console& console) {
    for (const std::filesystem::path& file : {whole, keys}) {
        ProjectFile opened = ProjectFile::Open(file, true, console);
        change(opened.Project());
        file == whole ? opened.Save(console) : opened.SaveKeys(console);
    }
    // Reading also compares the checksum.
    EXPECT_EQ(ModelText(*ReadProjectFile(keys, console)), ModelText(*ReadProjectFile(whole, console)));
}

TEST_F(ProjectFileTest, SavingKeysGivesWhatSavingEverythingGives) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Arm");
    project.AddFile(part, L"a.dat", CAE_FILE_REPORT);
    project.Add(CAE_PROJECT, L"Inner");
    SetMetadata(part, L"Mass", L"5");
    part.setDBKey(L"old");
    const std::filesystem::path whole = Keep(*project);
    const std::filesystem::path keys = folder / "keys.kvp";
    const auto saveBoth = [&](const std::function<void(CAEProject&)>& change) {
        std::filesystem::remove(keys);
        std::filesystem::copy_file(whole, keys);
        ExpectSameAfterSavingKeys(whole, keys, change, kept.console);
    };
    saveBoth([](CAEProject&) {});
    saveBoth([](CAEProject& opened) {
        opened.setDBKey(L"PRJ-1-with-a-key-that-is-so-long-that-its-row-waits-for-others-in-the-sum-of-rows");
        opened.getCAEObject(2)->setDBKey(L"");
        opened.getCAEObject(3)->setDBKey(L"FIL-3");
        opened.getCAEObject(4)->setDBKey(L"Tr\u00E4ger");
        opened.SetDisplayName(L"shown");
        dynamic_cast<CAEProject*>(opened.getCAEObject(4))->SetDisplayName(L"inside");
    });
    EXPECT_NE(ModelText(*ReadProjectFile(keys, kept.console)).find("display=inside"), std::string::npos);
    EXPECT_NE(ModelText(*ReadProjectFile(keys, kept.console)).find("key=FIL-3"), std::string::npos);
}

TEST_F(ProjectFileTest, SavingKeysGivesAFileWithoutChecksumOne) {
    const std::filesystem::path file = KeepDamaged(kWithoutChecksum);
    {
        ProjectFile opened = ProjectFile::Open(file, true, kept.console);
        opened.Project().setDBKey(L"PRJ-1");
        opened.SaveKeys(kept.console);
    }
    EXPECT_NE(ModelText(*ReadProjectFile(file, kept.console)).find("key=PRJ-1"), std::string::npos);
    Database(file, DatabaseUse::Changing, kProjectFileKind).Run("UPDATE object SET name = 'x'");
    EXPECT_NE(ErrorOfReading(file).find("checksum"), std::string::npos);
}

TEST_F(ProjectFileTest, WithoutSavingNothingChanges) {
    TestProject project;
    project.Add(CAE_PART, L"Arm");
    const std::filesystem::path file = Keep(*project);
    const std::string bytes = ReadWholeFile(file);
    {
        const ProjectFile opened = ProjectFile::Open(file, true, kept.console);
        korvane::CreateObject(opened.Project(), CAE_TAG, L"New");
    }
    EXPECT_EQ(ReadWholeFile(file), bytes);
    ReadProjectFile(file, kept.console);
    EXPECT_EQ(ReadWholeFile(file), bytes);
}

TEST_F(ProjectFileTest, ANewFileTakesNothingsPlaceAndLeavesNothingBeside) {
    TestProject project;
    const std::filesystem::path there = folder.Write("there.kvp", "kept");
    EXPECT_EQ(ErrorOf([&] { CreateProjectFile(there, *project, kept.console); }), "already exists");
    EXPECT_EQ(ReadWholeFile(there), "kept");
#if defined(_WIN32)
    EXPECT_EQ(ErrorOf([&] { CreateProjectFile("NUL", *project, kept.console); }), "already exists");
#endif
    const auto missing = folder / "missing/p.kvp";
    EXPECT_EQ(ErrorOf([&] { CreateProjectFile(missing, *project, kept.console); }),
              "cannot be opened or created: its directory must exist and be writable");
    folder.Write("left.kvp-journal", "x");
    EXPECT_NE(
        ErrorOf([&] { CreateProjectFile(folder / "left.kvp", *project, kept.console); }).find("'-journal'"),
        std::string::npos);
    Keep(*project);
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        names.push_back(ToUtf8(entry.path().filename()));
    }
    std::ranges::sort(names);
    EXPECT_EQ(names, (std::vector<std::string>{"left.kvp-journal", "p.kvp", "there.kvp"}));
}

TEST_F(ProjectFileTest, ANewFileLeavesWhatCameUnderItsNameMeanwhile) {
    TestProject project;
    project.Add(CAE_PART, L"Arm");
    // Progress is told while the file is written.
    Console console([](std::string_view) {}, true,
                    [&] {
                        folder.Write("p.kvp", "another program's");
                        return Console::Clock::time_point();
                    });
    std::filesystem::remove(folder / "p.kvp");
    EXPECT_EQ(ErrorOf([&] { CreateProjectFile(folder / "p.kvp", *project, console); }), "already exists");
    EXPECT_EQ(ReadWholeFile(folder / "p.kvp"), "another program's");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST_F(ProjectFileTest, RefusesWhatIsNoProjectFile) {
    EXPECT_EQ(ErrorOfReading(folder / "missing.kvp"), "does not exist");
    EXPECT_EQ(ErrorOfReading(folder.Path()), "is not a file");
    EXPECT_EQ(ErrorOfReading(folder.Write("empty.kvp", "")), "is an empty file, not a project file");
    EXPECT_EQ(ErrorOfReading(folder.Write("text.kvp", "x")), "is not a SQLite database");
    EXPECT_EQ(ErrorOfReading(folder.Write("long.kvp", std::string(10000, 'x'))), "is not a SQLite database");
    EXPECT_EQ(ErrorOfReading(KeepDamaged("PRAGMA application_id = 5")),
              "is a database of another kind, not a project file");
    EXPECT_EQ(ErrorOfReading(KeepDamaged("PRAGMA user_version = 4")),
              "was written by a newer korvane-json: it has format 4, and this version reads formats up to 3. "
              "Use the newer version");
    EXPECT_EQ(ErrorOfReading(KeepDamaged("PRAGMA user_version = 0")),
              "is damaged: it does not say which format it has. Restore it from a copy");
}

TEST_F(ProjectFileTest, RefusesDamagedContent) {
    const auto errorOf = [&](const char* statements) {
        return ErrorOfReading(KeepDamaged(std::string(kWithoutChecksum) + statements));
    };
    EXPECT_EQ(errorOf("DELETE FROM object"), "is damaged: it has no project. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE object SET above = 99 WHERE id = 2"),
              "is damaged: there is no object 99. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE object SET kind = 43 WHERE id = 2"),
              "is damaged: an object of the kind 43 with the identifier 2 cannot be created. Restore it from "
              "a copy");
    EXPECT_EQ(errorOf("UPDATE object SET id = -2 WHERE id = 2"),
              "is damaged: an object of the kind 0 with the identifier -2 cannot be created. Restore it from "
              "a copy");
    EXPECT_EQ(errorOf("UPDATE object SET kind = 0 WHERE id = 3"),
              "is damaged: an object of the kind 0 with the identifier 3 cannot be created. Restore it from "
              "a copy");
    EXPECT_EQ(errorOf("UPDATE object SET kind = 5 WHERE id = 1"),
              "is damaged: its first object is not a project. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE object SET id = 5000000000 WHERE id = 2"),
              "is damaged: the number 5000000000 is too large. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE file SET object = 2"),
              "is damaged: the object 2 is not a file. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE project SET object = 2"),
              "is damaged: the object 2 is not a project. Restore it from a copy");
    EXPECT_EQ(errorOf("INSERT INTO view_item VALUES (2, 1)"),
              "is damaged: the object 2 is not a view item. Restore it from a copy");
    EXPECT_EQ(errorOf("INSERT INTO metadata VALUES (8, 0, '', '', '', '')"),
              "is damaged: there is no object 8. Restore it from a copy");
    EXPECT_EQ(errorOf("DELETE FROM numbering"),
              "is damaged: it does not say which identifier comes next. Restore it from a copy");
}

TEST_F(ProjectFileTest, RefusesWhatCannotBeKeptAsItIs) {
    const auto errorOf = [&](const char* statements) {
        return ErrorOfReading(KeepDamaged(std::string(kWithoutChecksum) + statements));
    };
    EXPECT_EQ(errorOf("UPDATE object SET name = 'Arm' || char(0) || 'B' WHERE id = 2"),
              "is damaged: a text has a NUL character: 'Arm\\x00B'. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE file SET path = x'41'"),
              "is damaged: a value is not a text. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE file SET format = 'x'"),
              "is damaged: a value is not a number. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE file SET is_downloaded = 2"),
              "is damaged: a value is 2 and not 0 or 1. Restore it from a copy");
}

TEST_F(ProjectFileTest, RefusesWhatIsNotWhole) {
    const auto errorOf = [&](const char* statements) {
        return ErrorOfReading(KeepDamaged(std::string(kWithoutChecksum) + statements));
    };
    EXPECT_EQ(errorOf("DELETE FROM object WHERE place = 2"),
              "is damaged: the object before the object 3 is missing. Restore it from a copy");
    EXPECT_EQ(errorOf("DELETE FROM file"),
              "is damaged: it has 0 entries for files instead of 1. Restore it from a copy");
    EXPECT_EQ(errorOf("DELETE FROM project"),
              "is damaged: it has 0 entries for projects instead of 1. Restore it from a copy");
    EXPECT_EQ(errorOf("UPDATE attached_file SET position = 1"),
              "is damaged: a file of the object 2 is missing. Restore it from a copy");
    EXPECT_EQ(errorOf("INSERT INTO metadata VALUES (2, 0, 'a', '', '', ''), (2, 2, 'c', '', '', '')"),
              "is damaged: a metadata entry of the object 2 is missing. Restore it from a copy");
}

TEST_F(ProjectFileTest, ContentHasItsChecksum) {
    const std::string message =
        "is damaged: its content does not have the checksum that was written with it. Restore it from a copy";
    for (const char* const statements :
         {"UPDATE object SET name = 'Arn' WHERE id = 2", "UPDATE file SET type = type + 1",
          "UPDATE numbering SET next_id = 9", "INSERT INTO metadata VALUES (2, 0, 'a', '', '', '')",
          "UPDATE object SET database_key = name, name = database_key",
          "UPDATE checksum SET value = value + 1", "DELETE FROM checksum",
          "UPDATE project SET display_name = 'x', directory = directory || 'x'"}) {
        const std::filesystem::path file = KeepDamaged(statements);
        EXPECT_EQ(ErrorOfReading(file), message) << statements;
        EXPECT_EQ(ErrorOf([&] { ProjectFile::Open(file, true, kept.console); }), message) << statements;
    }
}

TEST_F(ProjectFileTest, AFileWithoutChecksumGetsOneWhenItIsSaved) {
    const std::filesystem::path file = KeepDamaged(kWithoutChecksum);
    std::string text;
    {
        ProjectFile opened = ProjectFile::Open(file, true, kept.console);
        text = ModelText(opened.Project());
        opened.Save(kept.console);
    }
    EXPECT_EQ(ModelText(*ReadProjectFile(file, kept.console)), text);
    Database(file, DatabaseUse::Changing, kProjectFileKind).Run("UPDATE object SET name = 'x'");
    EXPECT_NE(ErrorOfReading(file).find("checksum"), std::string::npos);
}

TEST_F(ProjectFileTest, KeepsAHundredThousandObjectsOneBelowTheOther) {
    constexpr int kDepth = 100000;
    TestProject project;
    CAEObject* innermost = &*project;
    for (int depth = 0; depth < kDepth; ++depth) {
        innermost = korvane::CreateObject(*innermost, CAE_MODEL, L"n");
    }
    const std::unique_ptr<CAEProject> read = ReadProjectFile(Keep(*project), kept.console);
    int depth = 0;
    for (const CAEObject* object = read->getCAEObject(kDepth + 1); object != read.get();
         object = object->getParent()) {
        ASSERT_NE(object, nullptr);
        ++depth;
    }
    EXPECT_EQ(depth, kDepth);
}

}  // namespace
}  // namespace host
