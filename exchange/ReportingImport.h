#pragma once

#include <korvaneexchange/ImportDocument.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>

#include "ReportBuilder.h"
#include "format/Effects.h"
#include "objectjson/ImportPolicy.h"

namespace korvane::exchange {

/// An import that makes everything anew, as the product's own does, and reports what happens to every value
/// of the document.
class ReportingImport : public ImportPolicy {
public:
    /// `total` is what the progress callback is told. All must live as long as this.
    ReportingImport(const ImportOptions& options, ImportReport& report, std::size_t total);
    ReportingImport(const ReportingImport&) = delete;
    ReportingImport& operator=(const ReportingImport&) = delete;
    virtual ~ReportingImport();

    /// The target itself, before its node is read. Returns false, with an entry, where nothing is to be read
    /// onto it.
    virtual bool EnterRoot(const ImportTarget& target, const JSONNode& node);
    /// The target, when its node becomes a child of it.
    virtual void EnterParentOfRoot(const ImportTarget& target);
    /// The root, where nothing can be read onto the target because that belongs to no project.
    void RefuseRoot(const JSONNode& node);
    /// Behind everything else. Not called after a stop.
    virtual void Finish() {}

    void EnterMember(const ImportTarget& target, const JSONNode& member) override;
    bool SetsMember(const ImportTarget& target, format::MemberName member, const OuString& value) override;
    EntrySetting EnterRecord(const ImportTarget& target, const JSONNode& record, const OuString& name,
                             const OuString& type, const OuString& value) override;
    std::optional<ImportTarget> EnterChild(const ImportTarget& parent, const JSONNode& element) override;
    bool ResolvesReference(const ImportTarget& viewItem) override;
    void LeaveReference(const ImportTarget& viewItem, bool isFound) override;
    void LeaveChild(const ImportTarget& child) override;
    FileLanding EnterFile(const ImportTarget& owner, const JSONNode& record) override;
    bool SetsPath(CAEFile& file, const OuString& path) override;
    bool AttachesFile(const ImportTarget& owner, CAEFile& file) override;
    void LeaveFile(const ImportTarget& owner) override;

    /// What an update keeps of a node. Its own class says what.
    class Matching {
    public:
        virtual ~Matching() = default;
    };

protected:
    /// A node that is being read.
    struct Frame {
        const JSONNode* node = nullptr;
        /// The section above that it is an element of; empty for the root.
        std::string_view section = {};
        /// Where it stands in the section, which may be an object: then its name counts.
        std::size_t index = 0;
        bool isNamed = false;
        bool isFileRecord = false;
        /// Whether the object or file is made for this node.
        bool isNew = false;
        /// The identifier of the object or file that it is read onto; 0 as long as there is none.
        int identifier = 0;
        /// The new file, as soon as it has been read.
        const CAEFile* madeFile = nullptr;
        bool isUnattached = false;
        /// In a dry run, the key that the view item would get for what it shows.
        std::optional<OuString> linkKey = {};

        // What is being read in it.
        std::string_view openSection = {};
        bool isOpenSectionNamed = false;
        std::size_t next = 0;
        std::uint32_t metMembers = 0;
        bool hasMetadata = false;
        bool hasChildren = false;
        bool hasFiles = false;
        std::unique_ptr<std::unordered_set<std::string>> metEntries = nullptr;
        std::unique_ptr<Matching> matching = nullptr;
    };

    const ImportOptions& Options() const { return options_; }
    ImportReport& Result() { return report_; }
    ReportBuilder& Builder() { return builder_; }
    Frame& Innermost() { return frames_.back(); }
    Frame& AboveInnermost() { return frames_[frames_.size() - 2]; }
    /// Whether the root becomes a child of the target.
    bool HasParentOfRoot() const { return frames_.front().node == nullptr; }
    /// Whether the innermost node is the root, which becomes a child of the target.
    bool IsInnermostRoot() const { return frames_.size() == 2 && HasParentOfRoot(); }
    /// The member that is being read, where the members of an object node are.
    const JSONNode* CurrentMember() const { return member_; }
    bool IsNullKey() const { return isNullKey_; }
    /// The metadata record that is being read, as a component behind the innermost node.
    const std::string& RecordComponent() const { return recordComponent_; }
    /// The frame of the next element of the innermost node's section.
    Frame& Enter(const JSONNode& element, bool isFileRecord);
    void Leave() { frames_.pop_back(); }

    /// Lists something about the innermost node, or about what the component leads to from there. Without an
    /// identifier it is that of the node's object.
    void Tell(Reason reason, const std::string& component, int identifier, const std::string& subject,
              const std::string& sentence);
    /// The same, where the texts are made only if the entry is listed. `texts` gives subject and sentence.
    template <typename Texts>
    void Tell(Reason reason, const std::string& component, int identifier, const Texts& texts);
    /// Takes back that the value, which was counted, was taken.
    void Untake() { --report_.membersTaken; }

    /// Whether the element can become an object at all. If not, an entry says why.
    bool HasType(const JSONNode& element);
    /// A new object for the element; nothing, after an entry, if the object model makes none.
    std::optional<ImportTarget> Make(const ImportTarget& parent, const JSONNode& element);
    /// The innermost node, which is an object's, became one.
    void CountLanded();
    /// Something was made for the innermost node. This import counts it, and does not list it.
    virtual void TellAdded();
    /// Whether the name of a file record leads out of the directory; if so, an entry says it.
    bool IsStray(const JSONNode& record);
    /// Counts a key of the document.
    void CountKey(const ImportTarget& target, format::MemberName member, const OuString& value);
    /// Whether the value, which is not there yet, is set now. In a dry run, notes what follows from it.
    bool Sets(const ImportTarget& target, format::MemberName member, const OuString& value);
    /// Whether a view item with the key, which is not empty, shows something; in a dry run also, whether it
    /// would.
    bool HasMasterAssembly(CAEProject* project, const OuString& key) const;
    /// Tells that the view item that was read shows nothing.
    void TellNoMasterAssembly(int identifier, const OuString& key);
    /// A step of the work, for the progress callback. Throws StopImport where that ends the import.
    void CountStep();
    std::string Pointer() const;

    static std::string ComponentOf(const JSONNode& member);
    /// The value that is being read, as a component behind the innermost node.
    const std::string& Component();

private:
    void TellOf(const JSONNode& member, const format::MemberEffect* known);
    void TellOfTaken(const JSONNode& member, const format::MemberEffect& known);
    void TellOfText(const JSONNode& value, const std::string& component, const std::string& name);
    void TellOfRecordMembers(const JSONNode& record, const std::string& component, const std::string& name);
    void TellUnattached();

    const ImportOptions& options_;
    ImportReport& report_;
    ReportBuilder builder_;
    std::size_t total_;
    std::size_t steps_ = 0;
    std::deque<Frame> frames_;
    const JSONNode* member_ = nullptr;
    std::string component_;
    bool isNullKey_ = false;
    std::size_t nextRecord_ = 0;
    std::string recordComponent_;
    /// In a dry run, the keys that assemblies would get, and the assemblies that would get another.
    std::unordered_set<std::string> assemblyKeys_;
    std::unordered_set<int> assembliesWithOtherKeys_;
};

/// Whether view items can show an object of the kind.
bool IsAssembly(format::Kind kind);

/// Ends an import between two objects.
struct StopImport {};

template <typename Texts>
void ReportingImport::Tell(Reason reason, const std::string& component, int identifier, const Texts& texts) {
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(reason);
        return;
    }
    const auto [subject, sentence] = texts();
    Tell(reason, component, identifier, subject, sentence);
}

}  // namespace korvane::exchange
