#include <EmbeddedRecording.h>
#include <gtest/gtest.h>

#include <thread>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

using Notes = std::vector<std::string>;

template <typename Operation>
Notes NotesOf(const Operation& operation) {
    korvane::StartRecording();
    operation();
    return korvane::TakeRecording();
}

#define EXPECT_NOTE(operation, note) EXPECT_EQ(NotesOf([&] { operation; }), (Notes{note}))

/// One object of each class, with the identifiers from 1 to 7; the file's is 8.
struct RecordedModel {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    CAEPart& part = dynamic_cast<CAEPart&>(project.Add(model, CAE_PART, L"Door"));
    CAESubAssembly& assembly = dynamic_cast<CAESubAssembly&>(project.Add(model, CAE_SUBASSEMBLY, L"Body"));
    CAERunAssembly& run = dynamic_cast<CAERunAssembly&>(project.Add(model, CAE_ITERATION_MODEL, L"Run"));
    CAEViewItem& item = dynamic_cast<CAEViewItem&>(project.Add(model, CAE_VIEW_ITEM, L"Item"));
    CAEObject& tag = project.Add(model, CAE_TAG, L"Tag");
    CAEFile& file = *korvane::CreateFile(*project, L"/studies/a.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    OuString text;
    int number = 0;
};

TEST(Recording, NotesWhatIdentifiesAnObject) {
    RecordedModel m;
    EXPECT_NOTE(m.part.getID(), "CAEObjectIdentification::getID(#3)");
    EXPECT_NOTE(m.part.getName(m.text), "CAEObjectIdentification::getName(#3)");
    EXPECT_NOTE(m.part.setName(L"frame"), "CAEObject::setName(#3, \"frame\")");
    EXPECT_NOTE(m.part.setID(33), "CAEObjectIdentification::setID(#3, 33)");
    EXPECT_NOTE(m.part.setID(3), "CAEObjectIdentification::setID(#33, 3)");
    EXPECT_NOTE(m.part.CAEObjectIdentification::setName(L"x"), "CAEObjectIdentification::setName(#3, \"x\")");
}

TEST(Recording, NotesTheDatabaseKeys) {
    RecordedModel m;
    EXPECT_NOTE(m.part.getDBKey(), "CAEObjectDBManagement::getDBKey(#3)");
    EXPECT_NOTE(m.part.setDBKey(L"K"), "CAEObject::setDBKey(#3, \"K\")");
    EXPECT_NOTE(m.part.getLinkDBKey(), "CAEObjectDBManagement::getLinkDBKey(#3)");
    EXPECT_NOTE(m.part.setLinkDBKey(L"L"), "CAEObjectDBManagement::setLinkDBKey(#3, \"L\")");
    EXPECT_NOTE(m.part.CAEObjectDBManagement::setDBKey(L"K"), "CAEObjectDBManagement::setDBKey(#3, \"K\")");
}

TEST(Recording, NotesThePlaceInTheTree) {
    RecordedModel m;
    OuList children;
    CAEObject* child = &m.tag;
    CAEObject* none = nullptr;
    EXPECT_NOTE(m.part.getType(), "CAEObject::getType(#3)");
    EXPECT_NOTE(CAEObject::getTypeName(CAE_ITERATION_MODEL), "CAEObject::getTypeName(8)");
    EXPECT_NOTE(m.part.getParent(), "CAEObject::getParent(#3)");
    EXPECT_NOTE(m.part.getProject(), "CAEObject::getProject(#3)");
    EXPECT_NOTE(m.model.getChildrenList(children), "CAEObject::getChildrenList(#2)");
    EXPECT_NOTE(m.model.detachChild(child, false), "CAEObject::detachChild(#2, #7, false)");
    EXPECT_NOTE(m.model.addChild(&m.tag), "CAEObject::addChild(#2, #7)");
    EXPECT_NOTE(m.model.addChild(nullptr), "CAEObject::addChild(#2, null)");
    EXPECT_NOTE(m.model.detachChild(none, true), "CAEObject::detachChild(#2, null, true)");
    child = &m.tag;
    EXPECT_NOTE(m.model.detachChild(child, true), "CAEObject::detachChild(#2, #7, true)");
}

TEST(Recording, NotesDateAndUser) {
    RecordedModel m;
    EXPECT_NOTE(m.part.getCreatedDate(m.text), "CAEObject::getCreatedDate(#3)");
    EXPECT_NOTE(m.part.setCreatedDate(L"today"), "CAEObject::setCreatedDate(#3, \"today\")");
    EXPECT_NOTE(m.part.getCreatedUserName(m.text), "CAEObject::getCreatedUserName(#3)");
}

TEST(Recording, NotesTheFilesOfAnObject) {
    RecordedModel m;
    EXPECT_NOTE(m.part.GetFiles(), "CAEObject::GetFiles(#3)");
    EXPECT_NOTE(m.part.attachCustomFile(8, nullptr), "CAEObject::attachCustomFile(#3, 8, null)");
    EXPECT_NOTE(m.part.attachCustomFile(8, &*m.project), "CAEObject::attachCustomFile(#3, 8, #1)");
    EXPECT_NOTE(m.part.setCADFile(8), "CAEPart::setCADFile(#3, 8)");
    EXPECT_NOTE(m.part.setGraphicFile(8), "CAEPart::setGraphicFile(#3, 8)");
    EXPECT_NOTE(m.part.attachNewMeshOrMeshingRequest(8), "CAEPart::attachNewMeshOrMeshingRequest(#3, 8)");
    EXPECT_NOTE(m.part.setActiveMesh(8), "CAEPart::setActiveMesh(#3, 8)");
    EXPECT_NOTE(m.assembly.setCADFile(8), "CAESubAssembly::setCADFile(#4, 8)");
    EXPECT_NOTE(m.assembly.setGraphicFile(8), "CAESubAssembly::setGraphicFile(#4, 8)");
    EXPECT_NOTE(m.assembly.attachNewRepresentationOrMeshingReq(8),
                "CAESubAssembly::attachNewRepresentationOrMeshingReq(#4, 8)");
    EXPECT_NOTE(m.assembly.setActiveMesh(8), "CAESubAssembly::setActiveMesh(#4, 8)");
    EXPECT_NOTE(m.run.setFERepresentationFile(8), "CAERunAssembly::setFERepresentationFile(#5, 8)");
    EXPECT_NOTE(m.item.setReferencedCAEObject(4), "CAEViewItem::setReferencedCAEObject(#6, 4)");
}

TEST(Recording, NotesMetadata) {
    RecordedModel m;
    OuTemplateArray<OuString, OuCRTAllocator> names;
    OuTemplateArray<OuString, OuCRTAllocator> values;
    EXPECT_NOTE(m.part.getAllMetadata(names, values), "CAEObject::getAllMetadata(#3)");
    EXPECT_NOTE(m.part.getMetadataType(L"Mass", m.text), "CAEObject::getMetadataType(#3, \"Mass\")");
    EXPECT_NOTE(m.part.getMetadataUnitString(L"Mass", m.text),
                "CAEObject::getMetadataUnitString(#3, \"Mass\")");
    EXPECT_NOTE(m.part.getMetadataValue(L"Mass", m.text), "CAEObject::getMetadataValue(#3, \"Mass\")");
    EXPECT_NOTE(m.part.setMetadataType(L"Mass", L"kg"), "CAEObject::setMetadataType(#3, \"Mass\", \"kg\")");
    EXPECT_NOTE(m.part.setMetadataValue(L"", L"12"), "CAEObject::setMetadataValue(#3, \"\", \"12\")");
}

TEST(Recording, NotesVersions) {
    RecordedModel m;
    OuArray majors;
    OuArray minors;
    const CAEObject* version = nullptr;
    EXPECT_NOTE(m.model.createNewVersion(3, 14, true, false),
                "CAEObject::createNewVersion(#2, 3, 14, true, false)");
    EXPECT_NOTE(m.model.getAvailableVersions(majors, minors), "CAEObject::getAvailableVersions(#2)");
    EXPECT_NOTE(m.model.getPointerToVersion(3, 14, version), "CAEObject::getPointerToVersion(#2, 3, 14)");
    EXPECT_NOTE(overwriteCurrentVersionWithVersion(&*m.project, 2, 3, 14),
                "overwriteCurrentVersionWithVersion(#1, 2, 3, 14)");
    EXPECT_NOTE(m.model.createNewVersion(-1, 0, false, true),
                "CAEObject::createNewVersion(#2, -1, 0, false, true)");
}

TEST(Recording, NotesProjects) {
    RecordedModel m;
    CAEFile file(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
    EXPECT_NOTE(m.project->getCAEObject(3), "CAEProject::getCAEObject(#1, 3)");
    EXPECT_NOTE(m.project->getFile(8), "CAEProject::getFile(#1, 8)");
    EXPECT_NOTE(m.project->assignID(&file), "CAEProject::assignID(#1, #0)");
    EXPECT_NOTE(m.project->assignID(nullptr), "CAEProject::assignID(#1, null)");
    EXPECT_NOTE(m.project->addFile(&m.file), "CAEProject::addFile(#1, #8)");
    EXPECT_NOTE(m.project->addFile(nullptr), "CAEProject::addFile(#1, null)");
    EXPECT_NOTE(m.project->getDirectory(m.text), "CAEProject::getDirectory(#1)");
    EXPECT_NOTE(m.project->SetDisplayName(L"Shown"), "CAEProject::SetDisplayName(#1, \"Shown\")");
    EXPECT_NOTE(m.project->getAdditionalType(), "CAEProject::getAdditionalType(#1)");
    EXPECT_NOTE(m.project->setAdditionalType(L"Study"), "CAEProject::setAdditionalType(#1, \"Study\")");
    EXPECT_NOTE(m.project->SetProgramReference(false), "CAEProject::SetProgramReference(#1, false)");
}

TEST(Recording, NotesFiles) {
    RecordedModel m;
    OuString path(L"/a.dat");
    EXPECT_NOTE(CAEFile(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false),
                "CAEFile::CAEFile(null, 0, 0, false)");
    EXPECT_NOTE(CAEFile(&path, CAE_FILE_CAD, CAE_FORMAT_BINARY, true),
                "CAEFile::CAEFile(\"/a.dat\", 1, 2, true)");
    EXPECT_NOTE(m.file.getFullPathName(m.text), "CAEFile::getFullPathName(#8)");
    EXPECT_NOTE(m.file.setFullPathName(path), "CAEFile::setFullPathName(#8, \"/a.dat\")");
    EXPECT_NOTE(m.file.getFileType(), "CAEFile::getFileType(#8)");
    EXPECT_NOTE(m.file.setFileType(CAE_FILE_MESH), "CAEFile::setFileType(#8, 2)");
    EXPECT_NOTE(m.file.getFileFormat(), "CAEFile::getFileFormat(#8)");
    EXPECT_NOTE(m.file.setFileFormat(CAE_FORMAT_BINARY), "CAEFile::setFileFormat(#8, 2)");
    EXPECT_NOTE(m.file.setGlobalFrameCoordinate(true), "CAEFile::setGlobalFrameCoordinate(#8, true)");
    EXPECT_NOTE(m.file.SetFileDownloadFlag(false), "CAEFile::SetFileDownloadFlag(#8, false)");
}

TEST(Recording, NotesFreeFunctions) {
    RecordedModel m;
    EXPECT_NOTE(createCAEObject(&*m.project, 1, CAE_PROJECT, m.number), "createCAEObject(#1, 1, 4)");
    EXPECT_NOTE(createCAEObject(&*m.project, 1, CAE_FILE, m.number), "createCAEObject(#1, 1, 3)");
    EXPECT_NOTE(createCAEObject(nullptr, 1, CAE_PART, m.number), "createCAEObject(null, 1, 0)");
    EXPECT_NOTE(getMasterAssemblyCAEIDByITEMID(&*m.project, L"K", m.number),
                "getMasterAssemblyCAEIDByITEMID(#1, \"K\")");
    EXPECT_NOTE(CAEGetFileTypeName(1), "CAEGetFileTypeName(1)");
    EXPECT_NOTE(GetCAEFileType(L"CAD"), "GetCAEFileType(\"CAD\")");
}

TEST(Recording, LeavesOutWhatIsNoPartOfTheSuitesInterface) {
    RecordedModel m;
    const Notes notes = NotesOf([&] {
        korvane::SetCreation(*m.project, L"today", L"me");
        CAEObject* const created = korvane::CreateObject(*m.project, CAE_FILE, L"a");
        korvane::CreateObject(*m.project, CAE_PROJECT, L"b");
        korvane::CreateFile(*m.project, L"/b.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
        korvane::Renumber(*created, 77);
        korvane::SetCreatedUserName(*created, L"me");
        korvane::SetMetadataUnit(*created, L"Mass", L"kg");
        korvane::SetDirectory(*m.project, L"/");
        korvane::GetDisplayName(*m.project);
        korvane::GetProgramReference(*m.project);
        korvane::GetProjectFiles(*m.project);
        korvane::GetFileRoles(m.part);
        korvane::GetCurrentVersion(m.part);
        korvane::GetReferencedObject(m.item);
        korvane::IsInGlobalFrame(m.file);
        korvane::IsDownloaded(m.file);
        korvane::VisitTree(*m.project, [](CAEObject&, int) {});
        const auto other = korvane::CreateProject(L"Other", L"/");
    });
    EXPECT_EQ(notes, Notes{});
}

TEST(Recording, KeepsTheOrderOfTheCalls) {
    RecordedModel m;
    const Notes notes = NotesOf([&] {
        m.part.setName(L"a");
        m.tag.setName(L"b");
        m.part.getID();
    });
    EXPECT_EQ(notes, (Notes{"CAEObject::setName(#3, \"a\")", "CAEObject::setName(#7, \"b\")",
                            "CAEObjectIdentification::getID(#3)"}));
}

TEST(Recording, HoldsNothingFromOutsideOfIt) {
    RecordedModel m;
    m.part.setName(L"before");
    EXPECT_EQ(NotesOf([] {}), Notes{});
    korvane::StartRecording();
    m.part.setName(L"dropped");
    korvane::StartRecording();
    m.part.setName(L"kept");
    EXPECT_EQ(korvane::TakeRecording(), (Notes{"CAEObject::setName(#3, \"kept\")"}));
    m.part.setName(L"after");
    EXPECT_EQ(korvane::TakeRecording(), Notes{});
}

TEST(Recording, BelongsToTheThreadThatStartedIt) {
    RecordedModel m;
    Notes others;
    const Notes notes = NotesOf([&] {
        std::thread([&] {
            m.part.setName(L"elsewhere");
            others = NotesOf([&] { m.part.setName(L"there"); });
        }).join();
        m.part.setName(L"here");
    });
    EXPECT_EQ(notes, (Notes{"CAEObject::setName(#3, \"here\")"}));
    EXPECT_EQ(others, (Notes{"CAEObject::setName(#3, \"there\")"}));
}

TEST(Recording, WritesTextsInUtf8) {
    RecordedModel m;
    EXPECT_NOTE(m.part.setName(L"\u00E4\u20AC\U0001F697"),
                "CAEObject::setName(#3, \"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x9A\x97\")");
    const wchar_t keptByte[] = {L'a', static_cast<wchar_t>(0xDCFF), L'b', 0};
    EXPECT_NOTE(m.part.setName(keptByte),
                "CAEObject::setName(#3, \"a\xFF"
                "b\")");
}

}  // namespace
