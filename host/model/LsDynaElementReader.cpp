#include "LsDynaElementReader.h"

#include <algorithm>
#include <optional>

#include "Numbers.h"
#include "host/system/Text.h"

namespace host {

bool LsDynaElementReader::Begin(const std::string& keyword) {
    element_ = FindLsDynaElement(keyword, linesOfOptions_);
    if (element_ == nullptr) {
        model_.CannotCountElements(lines_.Place() + ": the lines below *" + keyword + " are not known");
        return false;
    }
    return true;
}

/// Adds the numbers of a line. Returns false if it has anything else.
bool LsDynaElementReader::AddNumbers(std::string_view line) {
    constexpr std::size_t kMostNumbers = 16;
    const bool hasCommas = line.find(',') != std::string_view::npos;
    std::string_view rest = line;
    const std::size_t known = element_->first + element_->mostNodes;
    for (std::size_t field = 0; !rest.empty() && numbers_.size() < std::min(known, kMostNumbers); ++field) {
        const std::string_view text = NextLsDynaField(rest, hasCommas ? line.size() : widths_.number);
        const std::optional<std::int64_t> number = text.empty() ? 0 : ParseInteger(text);
        if (!number || *number < 0) {
            return false;
        }
        numbers_.push_back(*number);
    }
    return true;
}

void LsDynaElementReader::Read(std::string_view line) {
    if (linesLeft_ > 0) {
        --linesLeft_;
        return;
    }
    if (Trim(line).empty()) {
        return;
    }
    const bool isSecondLine = !numbers_.empty();
    if (!AddNumbers(line)) {
        model_.CannotCountElements(lines_.Place() + ": the line is not an element");
        numbers_.clear();
        return;
    }
    // Solids may have their nodes on a line of their own.
    const auto isNode = [](std::int64_t number) { return number > 0; };
    const bool hasNodes = std::any_of(
        numbers_.begin() + static_cast<std::ptrdiff_t>(std::min(element_->first, numbers_.size())),
        numbers_.end(), isNode);
    if (hasNodes || isSecondLine || element_->shape != ElementShape::Hexahedron) {
        AddElement();
    } else {
        numbers_.resize(element_->first);
    }
}

void LsDynaElementReader::AddElement() {
    numbers_.resize(std::max(numbers_.size(), element_->first + 1));
    nodes_.assign(numbers_.begin() + static_cast<std::ptrdiff_t>(element_->first), numbers_.end());
    const std::int64_t id = numbers_.front();
    numbers_.clear();
    linesLeft_ = linesOfOptions_;
    int order = 1;
    const ElementShape shape = ShapeOf(*element_, nodes_, order);
    const auto corners = static_cast<std::ptrdiff_t>(CornersOf(shape));
    if (id <= 0 ||
        std::any_of(nodes_.begin(), nodes_.begin() + corners, [](std::int64_t node) { return node <= 0; })) {
        model_.CannotCountElements(lines_.Place() + ": the element lacks a node");
        return;
    }
    model_.AddElement({id, shape, order, element_->name, nodes_}, element_->numbering);
}

void LsDynaElementReader::End() {
    if (!numbers_.empty()) {
        model_.CannotCountElements(lines_.Place() + ": the element above has no nodes");
        numbers_.clear();
    }
    linesLeft_ = 0;
}

}  // namespace host
