#include <korvanejson/JsonSerializer.h>

#include <string>
#include <utility>

#include "CompareSupport.h"
#include "RandomTree.h"
#include "exchange/NodeWalker.h"
#include "format/Kinds.h"
#include "format/MemberNames.h"
#include "support/LongRun.h"

namespace korvane::exchange {
namespace {

/// Changes the n-th of the texts in a document that the format carries, or removes the n-th of its metadata
/// entries, children and files.
class Mutation {
public:
    explicit Mutation(std::size_t number) : left_(number) {}

    /// False where there are fewer.
    bool Apply(JSONNode& document) {
        WalkNodesToChange(document, SectionOrder::AsWritten, [&](const auto& visit) {
            const bool isCarried =
                visit.place == NodePlace::Root || (visit.place == NodePlace::Child && IsCarried(visit.node));
            if (isCarried && !isDone_) {
                Mutate(visit.node, visit.place);
                MutateSections(visit.node);
            }
            return isCarried && !isDone_;
        });
        return isDone_;
    }

    const std::string& What() const { return what_; }

private:
    bool IsNow(const std::string& what) {
        if (isDone_ || left_-- > 0) {
            return false;
        }
        what_ = what;
        isDone_ = true;
        return true;
    }

    static std::string TextOf(const JSONNode& node, format::MemberName name) {
        const auto found = node.find(name.c_str());
        return found == node.end() ? std::string() : std::string(found->as_string().c_str());
    }

    static bool IsCarried(const JSONNode& child) {
        return format::KindOfType(TextOf(child, format::member::kType)) != format::Kind::kUnknown;
    }

    static bool IsAttached(const JSONNode& record, const JSONNode& owner) {
        const std::string type = TextOf(owner, format::member::kType);
        const std::string fileType = TextOf(record, format::member::kFileType);
        const auto read = static_cast<format::FileType>(GetCAEFileType(OuString(fileType.c_str(), 0)));
        return type == "CAEPART" || type == "CAESUBASSEMBLY" || type == "CAEITERATIONMODEL" ||
               !format::HasRole(read);
    }

    void Mutate(JSONNode& node, NodePlace place) {
        namespace member = format::member;
        const std::string type = TextOf(node, member::kType);
        const bool isRecord = place == NodePlace::FileRecord;
        const bool isProject = place == NodePlace::Root || type == "CAEPROJECT" || type == "CAEPROGRAM";
        const bool isNamelessFile = !isRecord && type == "CAEFILE" && TextOf(node, member::kName).empty();
        const std::pair<format::MemberName, bool> carried[] = {
            {member::kName, !isProject && !isNamelessFile},
            {member::kCreatedDate, true},
            {member::kType, !isRecord},
            {member::kDatabaseKey, type != "CAEVIEWITEM"},
            {member::kFileType, isRecord && TextOf(node, member::kFileType) != "Unknown"},
            {member::kFileFormat, isRecord && TextOf(node, member::kFileFormat) != "Unknown"},
            {member::kLocationType, isRecord},
        };
        for (const auto& [name, isCarried] : carried) {
            if (isCarried) {
                AppendTo(node, name);
            }
        }
        MutateMetadata(node);
    }

    void MutateSections(JSONNode& node) {
        JSONNode& children = node.at("children");
        for (json_index_t index = 0; index < children.size(); ++index) {
            if (IsCarried(children.at(index)) && IsNow("a child")) {
                children.pop_back(index);
            }
        }
        JSONNode& files = node.at("files");
        for (json_index_t index = 0; index < files.size(); ++index) {
            if (!IsAttached(files.at(index), node)) {
                continue;
            }
            if (IsNow("a file")) {
                files.pop_back(index);
            } else if (!isDone_) {
                Mutate(files.at(index), NodePlace::FileRecord);
            }
        }
    }

    void AppendTo(JSONNode& node, format::MemberName name) {
        const auto found = node.find(name.c_str());
        if (found != node.end() && IsNow(std::string(name.View()))) {
            *found = JSONNode(name.c_str(), (std::string(found->as_string().c_str()) + "x").c_str());
        }
    }

    void MutateMetadata(JSONNode& node) {
        JSONNode& metadata = node.at("metaData");
        for (json_index_t index = 0; index < metadata.size(); ++index) {
            if (IsNow("a metadata value")) {
                metadata.at(index).at("value") = JSONNode("value", "another");
            } else if (IsNow("a metadata entry")) {
                metadata.pop_back(index);
            }
        }
    }

    std::size_t left_;
    bool isDone_ = false;
    std::string what_;
};

/// So a loss on the way there and back is always found.
TEST(CompareMutations, FindsEveryChangeOfADocument) {
    std::size_t count = 0;
    const unsigned trees = kIsSanitized && !IsLongRun() ? 5 : 20;
    for (unsigned seed = 1; seed <= trees; ++seed) {
        const RandomTree tree(seed);
        const JSONNode document = JsonSerializer(&*tree).GetJson();
        for (std::size_t number = 0;; ++number) {
            JSONNode changed = document.duplicate();
            Mutation mutation(number);
            if (!mutation.Apply(changed)) {
                break;
            }
            ++count;
            const CompareReport report = CompareBothWays(document, changed);
            ASSERT_FALSE(report.IsSame()) << mutation.What() << " " << changed.write().c_str();
            ASSERT_FALSE(Compare(*tree, changed).IsSame()) << mutation.What();
        }
    }
    EXPECT_GT(count, 100U * trees);
}

}  // namespace
}  // namespace korvane::exchange
