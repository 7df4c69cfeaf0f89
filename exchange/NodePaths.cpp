#include "NodePaths.h"

#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <vector>

#include "NodeText.h"
#include "format/MemberNames.h"

namespace korvane::exchange {
namespace {

constexpr std::size_t kMostNames = 40;
constexpr std::size_t kLongestName = 80;
constexpr std::size_t kBeforeDifference = 20;

/// The nodes from the root to this one.
std::vector<NodeIndex> WayTo(const CarriedTree& tree, NodeIndex node) {
    std::vector<NodeIndex> way;
    for (; node != kNoNode; node = tree.nodes[node].parent) {
        way.push_back(node);
    }
    std::ranges::reverse(way);
    return way;
}

std::string ShownName(const CarriedTree& tree, const DistinctTexts& texts, NodeIndex node) {
    const std::string_view name = texts.TextOf(tree.nodes[node].name);
    if (name.empty()) {
        return "''";
    }
    const std::string printable = Printable(Utf8OfAnsi(name.substr(0, 4 * kLongestName)));
    const std::string_view beginning = CutUtf8(printable, kLongestName);
    return std::string(beginning) + (beginning.size() < printable.size() ? "..." : "");
}

}  // namespace

std::string PointerOf(const CarriedTree& tree, const DistinctTexts& texts, NodeIndex node) {
    std::string pointer;
    for (const NodeIndex passed : WayTo(tree, node)) {
        const CarriedNode& carried = tree.nodes[passed];
        if (carried.place == NodePlace::Root) {
            continue;
        }
        pointer += PointerTo(SectionOf(carried.place).View());
        const auto named = tree.elementNames.find(passed);
        pointer += named == tree.elementNames.end() ? "/" + std::to_string(carried.position)
                                                    : PointerTo(Utf8OfAnsi(texts.TextOf(named->second)));
    }
    return pointer;
}

std::string PathOf(const CarriedTree& tree, const DistinctTexts& texts, NodeIndex node) {
    const std::vector<NodeIndex> way = WayTo(tree, node);
    const std::size_t shownAtEachEnd = kMostNames / 2;
    std::string path;
    for (std::size_t index = 0; index < way.size(); ++index) {
        if (index > 0) {
            path += '/';
        }
        if (way.size() > kMostNames && index == shownAtEachEnd) {
            path += "...";
            index = way.size() - shownAtEachEnd - 1;
            continue;
        }
        path += ShownName(tree, texts, way[index]);
    }
    return path;
}

ExcerptPair ExcerptsOf(std::string_view first, std::string_view second) {
    ExcerptPair excerpts = {Excerpt(first), Excerpt(second)};
    if (excerpts.first != excerpts.second) {
        return excerpts;
    }
    const auto different = std::ranges::mismatch(first, second).in1 - first.begin();
    auto begin = static_cast<std::size_t>(different);
    begin -= std::min(begin, kBeforeDifference);
    // Not in the middle of a character.
    while (begin > 0 && (static_cast<unsigned char>(first[begin]) & 0xC0U) == 0x80) {
        --begin;
    }
    const auto from = [&](std::string_view text) {
        return (begin > 0 ? "..." : "") + Excerpt(text.substr(begin));
    };
    return {from(first), from(second)};
}

}  // namespace korvane::exchange
