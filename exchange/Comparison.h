#pragma once

#include <korvaneexchange/Compare.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Alignment.h"
#include "CarriedTree.h"
#include "NodePaths.h"
#include "ReportBuilder.h"
#include "format/MemberName.h"

namespace korvane::exchange {

/// Reports how two aligned trees differ, going through the second: what was moved and what has changed of a
/// node, what was removed below it, and then what is below it.
class Comparison {
public:
    Comparison(const CarriedTree& first, const CarriedTree& second, const DistinctTexts& texts,
               const Alignment& alignment, const CompareOptions& options, CompareReport& report);

    /// One node of the second tree; all of them in their order make the report.
    void CompareNode(NodeIndex second);

private:
    /// How many objects and files below a node have no partner either.
    struct Count {
        std::uint32_t objects = 0;
        std::uint32_t files = 0;
    };
    /// A node of either tree.
    struct Side {
        const CarriedTree& tree;
        bool isSecond;
    };
    struct Pair {
        NodeIndex first;
        NodeIndex second;
    };

    std::vector<Count> CountAlone(const Side& side) const;
    bool IsAlone(const Side& side, NodeIndex node) const;
    /// Whether the node has no partner, unlike its parent.
    bool IsTopAlone(const Side& side, NodeIndex node) const;
    void ReportAlone(const Side& side, NodeIndex node, Reason reason, const std::vector<Count>& below);
    void ReportMoved(const Pair& pair);
    void CompareMembers(const Pair& pair);
    void CompareType(const Pair& pair);
    void CompareNames(const Pair& pair);
    bool IsProjectNameTaken(const Pair& pair) const;
    bool IsDisplayedAs(const Side& side, NodeIndex project, TextId name) const;
    void CompareStudyTypes(const Pair& pair);
    void CompareFileMembers(const Pair& pair);
    void CompareMetadata(const Pair& pair);
    void CompareEntry(const Pair& pair, const CarriedEntry& first, const CarriedEntry& second);
    void CompareTexts(const Pair& pair, format::MemberName member, TextId first, TextId second);
    void ReportChange(const Pair& pair, std::string_view member, const std::string& what,
                      std::string_view first, std::string_view second);
    void ReportValue(const Pair& pair, const CarriedEntry& entry, const char* what);
    void ReportOldName(const Pair& pair, const CarriedEntry& entry, TextId name);
    /// The unit of an entry in the tree; empty in a document.
    static std::string UnitIn(const Side& side, NodeIndex node, const OuString& name);
    std::string UnitOf(const Pair& pair, const CarriedEntry& entry) const;
    std::string Shown(const std::string& value, const std::string& unit) const;
    ExcerptPair ValueTexts(const Pair& pair, const CarriedEntry& first, const CarriedEntry& second) const;
    void ReportOrder(const Pair& pair);
    void AddEntry(const Pair& pair, const CarriedEntry& entry, const std::string& sentence);
    void Add(Reason reason, const Side& side, NodeIndex node, const std::string& memberPointer,
             int identifier, const std::string& sentence);
    int IdentifierOf(const Pair& pair) const;

    Side first_;
    Side second_;
    const DistinctTexts& texts_;
    const Alignment& alignment_;
    const CompareOptions& options_;
    CompareReport& report_;
    ReportBuilder builder_;
    std::vector<Count> removedBelow_;
    std::vector<Count> addedBelow_;
    /// By the number of a compared name, where the last entry of the first tree that was looked at is.
    std::vector<std::size_t> entryOfName_;
};

}  // namespace korvane::exchange
