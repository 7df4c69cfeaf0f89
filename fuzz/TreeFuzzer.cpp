// Builds object trees from the bytes, with every kind, name and file that they say, and sees them make the
// trip: export, import, export. Texts that are written without nodes are compared with those of the nodes.

#include <CAEFile.h>
#include <CAEFunctions.h>
#include <EmbeddedModel.h>
#include <fuzzer/FuzzedDataProvider.h>
#include <korvaneexchange/WriteDocument.h>
#include <korvanejson/JsonSerializer.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Expect.h"
#include "Trip.h"
#include "support/ModelBuilders.h"

namespace exchange = korvane::exchange;

namespace {

constexpr std::size_t kLongestText = 24;
constexpr int kMostSteps = 64;

class TreeBuilder {
public:
    TreeBuilder(FuzzedDataProvider& bytes, CAEProject& project) : bytes_(bytes), project_(project) {
        objects_.push_back(&project);
    }

    void Build() {
        for (int step = 0; step < kMostSteps && bytes_.remaining_bytes() > 0; ++step) {
            Step(bytes_.ConsumeIntegralInRange(0, 9));
        }
    }

    CAEObject& AnyObject() {
        return *objects_[bytes_.ConsumeIntegralInRange<std::size_t>(0, objects_.size() - 1)];
    }

private:
    OuString Text() { return OuString(bytes_.ConsumeRandomLengthString(kLongestText).c_str(), 0); }

    void AddObject() {
        CAEObject* const added =
            korvane::CreateObject(AnyObject(), bytes_.PickValueInArray(kObjectKinds), Text());
        if (added != nullptr) {
            objects_.push_back(added);
        }
    }
    void AddFile() {
        const auto type = static_cast<_tagFileType>(bytes_.ConsumeIntegralInRange(-1, 15));
        const auto format = static_cast<_tagFileFormat>(bytes_.ConsumeIntegralInRange(-1, 4));
        const std::string name = bytes_.ConsumeRandomLengthString(kLongestText);
        const OuString path(("/studies/" + name).c_str(), 0);
        CAEFile* const added = korvane::CreateFile(project_, path, type, format);
        Expect(added != nullptr, "a file can be created");
        added->m_locationType = Text();
        AttachFile(AnyObject(), added->getID(), type);
        files_.push_back(added);
    }
    void SetAdditionalType(CAEObject& object) {
        if (auto* const project = dynamic_cast<CAEProject*>(&object)) {
            project->setAdditionalType(bytes_.ConsumeBool() ? OuString(L"CAEPROJECT") : Text());
        }
    }

    /// To any object; files have no files here, since one that is below itself has no end.
    void AttachAnyFile() {
        if (!files_.empty()) {
            CAEFile& file = *files_[bytes_.ConsumeIntegralInRange<std::size_t>(0, files_.size() - 1)];
            AttachFile(AnyObject(), file.getID(), file.getFileType());
        }
    }

    void Step(int step) {
        switch (step) {
            case 0:
            case 1:
            case 2:
                return AddObject();
            case 3:
                return AddFile();
            case 4:
                return AnyObject().setName(Text());
            case 5:
                static_cast<void>(AnyObject().setDBKey(Text()));
                return;
            case 6:
                return AnyObject().setCreatedDate(Text());
            case 7:
                return SetMetadata(AnyObject(), Text(), Text(), Text(), Text());
            case 8:
                return SetAdditionalType(AnyObject());
            default:
                return AttachAnyFile();
        }
    }

    FuzzedDataProvider& bytes_;
    CAEProject& project_;
    std::vector<CAEObject*> objects_;
    std::vector<CAEFile*> files_;
};

std::string Written(CAEObject& object, exchange::ExportMode mode, exchange::Layout layout) {
    std::string text;
    const exchange::WriteReport report =
        exchange::WriteDocument(object, {.mode = mode, .layout = layout}, [&text](std::string_view page) {
            Expect(!page.empty(), "no page is empty");
            text += page;
        });
    Expect(report.bytes == text.size(), "the bytes are counted");
    return text;
}

/// In every mode, from the serializer and from KorvaneExchange.
void ExpectTextsOfNodes(CAEObject& object) {
    const std::pair<const wchar_t*, exchange::ExportMode> modes[] = {
        {L"PROJECT", exchange::ExportMode::kProject},
        {L"STUDY", exchange::ExportMode::kStudy},
        {L"", exchange::ExportMode::kEverything}};
    for (const auto& [text, mode] : modes) {
        JsonSerializer serializer(&object);
        serializer.SetExportMode(text);
        const JSONNode node = serializer.GetJson();
        Expect(node.write() == serializer.GetJsonString().GetAnsiBuffer(), "text and node are one document");
        Expect(node.write() == Written(object, mode, exchange::Layout::kCompact),
               "what is written into a sink is the node's document");
        Expect(node.write_formatted() == Written(object, mode, exchange::Layout::kIndented),
               "so it is when it is indented");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider bytes(data, size);
    const std::unique_ptr<CAEProject> project = MakeProject();
    TreeBuilder builder(bytes, *project);
    builder.Build();
    ExpectTrip(*project);
    ExpectTrip(builder.AnyObject());
    ExpectTextsOfNodes(*project);
    return 0;
}
