#include <gtest/gtest.h>

#include <new>

#include "Comparison.h"
#include "ExpectNoDifference.h"
#include "PlainReading.h"
#include "RandomModel.h"
#include "support/LongRun.h"

namespace {

/// The second reading with one mistake, which the comparison has to find.
class WrongReading final : public PlainReading {
public:
    enum class Mistake { kText, kCall, kState, kNode, kException };

    explicit WrongReading(Mistake mistake) : mistake_(mistake) {}

    OuString ObjectNodeText(const JSONNode& node) override {
        std::string text = PlainReading::ObjectNodeText(node).GetAnsiBuffer();
        if (const std::size_t slash = text.find("\\/"); mistake_ == Mistake::kText && slash != text.npos) {
            text.erase(slash, 1);
        }
        return {text.c_str(), 0};
    }
    JSONNode Document(CAEObject* object, const OuString& mode) override {
        if (mistake_ == Mistake::kCall && object != nullptr) {
            object->getID();
        }
        return PlainReading::Document(object, mode);
    }
    void ImportFileRecord(const JSONNode& record, CAEFile* file) override {
        PlainReading::ImportFileRecord(record, file);
        if (mistake_ == Mistake::kState && file != nullptr) {
            file->m_fullPathCopy = L"";
        }
    }
    void Import(JSONNode& document, CAEObject* object) override {
        if (mistake_ == Mistake::kNode) {
            document.push_back(JSONNode(json_string("type"), "CAEPART"));
        }
        try {
            PlainReading::Import(document, object);
        } catch (const std::bad_alloc&) {
            if (mistake_ != Mistake::kException) {
                throw;
            }
        }
    }

private:
    Mistake mistake_;
};

}  // namespace

TEST(Readings, AreTheSame) {
    ExpectNoDifference(KORVANEJSON_COMPARISON_SECONDS);
}

TEST(Readings, AreAskedForEverythingThatTheyAskOfTheObjectModel) {
    const std::unique_ptr<Reading> library = MakeLibraryReading();
    PlainReading plain;
    const ComparisonResult result = Compare(*library, plain, {.rounds = kIsSanitized ? 450 : 600});
    EXPECT_EQ(result.difference, "");
    for (const char* const expected : {"CAEFile::CAEFile",
                                       "CAEFile::SetFileDownloadFlag",
                                       "CAEFile::getFileFormat",
                                       "CAEFile::getFileType",
                                       "CAEFile::getFullPathName",
                                       "CAEFile::setFileFormat",
                                       "CAEFile::setFileType",
                                       "CAEFile::setFullPathName",
                                       "CAEFile::setGlobalFrameCoordinate",
                                       "CAEGetFileTypeName",
                                       "CAEObject::GetFiles",
                                       "CAEObject::addChild",
                                       "CAEObject::attachCustomFile",
                                       "CAEObject::createNewVersion",
                                       "CAEObject::detachChild",
                                       "CAEObject::getAllMetadata",
                                       "CAEObject::getAvailableVersions",
                                       "CAEObject::getChildrenList",
                                       "CAEObject::getCreatedDate",
                                       "CAEObject::getCreatedUserName",
                                       "CAEObject::getMetadataType",
                                       "CAEObject::getMetadataUnitString",
                                       "CAEObject::getMetadataValue",
                                       "CAEObject::getParent",
                                       "CAEObject::getPointerToVersion",
                                       "CAEObject::getProject",
                                       "CAEObject::getType",
                                       "CAEObject::getTypeName",
                                       "CAEObject::setCreatedDate",
                                       "CAEObject::setDBKey",
                                       "CAEObject::setMetadataType",
                                       "CAEObject::setMetadataValue",
                                       "CAEObject::setName",
                                       "CAEObjectDBManagement::getDBKey",
                                       "CAEObjectDBManagement::getLinkDBKey",
                                       "CAEObjectDBManagement::setLinkDBKey",
                                       "CAEObjectIdentification::getID",
                                       "CAEObjectIdentification::getName",
                                       "CAEObjectIdentification::setID",
                                       "CAEPart::attachNewMeshOrMeshingRequest",
                                       "CAEPart::setActiveMesh",
                                       "CAEPart::setCADFile",
                                       "CAEPart::setGraphicFile",
                                       "CAEProject::SetDisplayName",
                                       "CAEProject::SetProgramReference",
                                       "CAEProject::addFile",
                                       "CAEProject::assignID",
                                       "CAEProject::getAdditionalType",
                                       "CAEProject::getCAEObject",
                                       "CAEProject::getDirectory",
                                       "CAEProject::getFile",
                                       "CAEProject::setAdditionalType",
                                       "CAERunAssembly::setFERepresentationFile",
                                       "CAESubAssembly::attachNewRepresentationOrMeshingReq",
                                       "CAESubAssembly::setActiveMesh",
                                       "CAESubAssembly::setCADFile",
                                       "CAESubAssembly::setGraphicFile",
                                       "CAEViewItem::setReferencedCAEObject",
                                       "GetCAEFileType",
                                       "createCAEObject",
                                       "getMasterAssemblyCAEIDByITEMID",
                                       "overwriteCurrentVersionWithVersion",
                                       "throws std::bad_alloc",
                                       "throws std::out_of_range"}) {
        EXPECT_TRUE(result.seen.contains(expected)) << expected;
    }
}

TEST(Readings, ThatDifferAreFoundWhereverTheyDo) {
    using Mistake = WrongReading::Mistake;
    for (const Mistake mistake :
         {Mistake::kText, Mistake::kCall, Mistake::kState, Mistake::kNode, Mistake::kException}) {
        PlainReading plain;
        WrongReading wrong(mistake);
        const ComparisonResult result = Compare(plain, wrong, {.rounds = 500});
        EXPECT_NE(result.difference, "") << static_cast<int>(mistake);
        EXPECT_LT(result.rounds, 500);
    }
}

TEST(Readings, ThatDifferAreReportedByASmallExample) {
    PlainReading plain;
    WrongReading wrong(WrongReading::Mistake::kCall);
    const std::string difference = Compare(plain, wrong, {.rounds = 500}).difference;
    for (const char* const expected : {"The model, from 0 steps:\n", "    action 0 asks\n",
                                       "    CAEObjectIdentification::getID(#1)\n"
                                       "  1 CAEObject::getType(#1)\n",
                                       "  2 CAEObjectIdentification::getID(#1)\n"}) {
        EXPECT_NE(difference.find(expected), std::string::npos) << difference;
    }
}

TEST(Readings, AreGivenEqualModels) {
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        Random random(seed);
        const RandomModel::Steps steps = RandomSteps(random);
        ASSERT_EQ(StateOf(RandomModel(steps)), StateOf(RandomModel(steps))) << seed;
    }
}
