#include <algorithm>
#include <string>
#include <vector>

#include "IncludedFile.h"
#include "LsDynaElements.h"
#include "ModelSyntaxes.h"
#include "Numbers.h"
#include "StatedUnits.h"
#include "host/system/Text.h"

// LS-DYNA. Lines have fields of fixed columns below a keyword, or commas between the fields.

namespace host {
namespace {

enum class Block { Other, Nodes, Elements, MaterialTitle, Material, Units, Include, Title };

/// The columns of the fields: numbers, and coordinates.
struct Widths {
    std::size_t number = 8;
    std::size_t coordinate = 16;
};

class LsDynaReader {
public:
    LsDynaReader(InputLines& lines, ModelRecorder& model) : lines_(lines), model_(model) {}

    void Read();

private:
    void ReturnFromIncludes();
    void ReadKeyword(std::string_view line);
    void BeginElements(const std::string& keyword);
    void NoteGaps(const std::string& keyword);
    void ReadData(std::string_view line);
    void ReadNode(std::string_view line);
    void ReadElement(std::string_view line);
    bool AddNumbers(std::string_view line);
    void AddElement();
    void ReadMaterial(std::string_view line);
    void ReadUnits(std::string_view line);
    void ReadInclude(std::string_view line);
    void EndBlock();
    std::string_view NextField(std::string_view& rest, std::size_t width) const;

    InputLines& lines_;
    ModelRecorder& model_;
    Block block_ = Block::Other;
    Widths widths_;
    const LsDynaElement* element_ = nullptr;
    /// Lines behind each element that have no nodes, and how many are still to come.
    std::size_t linesOfOptions_ = 0;
    std::size_t linesLeft_ = 0;
    /// Identifier, part and nodes of the element so far.
    std::vector<std::int64_t> numbers_;
    std::vector<std::int64_t> nodes_;
    std::string material_;
    std::string title_;
    std::string include_;
    /// The depths of the files that include the one that is read.
    std::vector<std::size_t> including_;
};

void LsDynaReader::Read() {
    std::string_view line;
    while (lines_.Next(line)) {
        ReturnFromIncludes();
        if (line.starts_with('$')) {
            model_.AddUnits(StatedUnits(line));
        } else if (line.starts_with('*')) {
            ReadKeyword(line);
        } else {
            ReadData(line);
        }
    }
    EndBlock();
}

/// The names below *INCLUDE continue behind the lines of the file before.
void LsDynaReader::ReturnFromIncludes() {
    while (!including_.empty() && lines_.Depth() <= including_.back()) {
        EndBlock();
        block_ = Block::Include;
        including_.pop_back();
    }
}

void LsDynaReader::ReadKeyword(std::string_view line) {
    EndBlock();
    std::string keyword =
        ToUpperAscii(line.substr(1, std::min(line.find_first_of(" \t,", 1), line.size()) - 1));
    const std::string whole = ToUpperAscii(line);
    if (keyword == "KEYWORD") {
        widths_ = whole.find("LONG=Y") != std::string::npos  ? Widths{20, 20}
                  : whole.find("I10=Y") != std::string::npos ? Widths{10, 16}
                                                             : Widths();
    } else if (keyword == "END") {
        lines_.SkipFile();
    } else if (keyword == "NODE") {
        block_ = Block::Nodes;
    } else if (keyword.starts_with("ELEMENT_")) {
        BeginElements(keyword);
    } else if (keyword.starts_with("MAT_") && !keyword.starts_with("MAT_ADD_")) {
        const bool hasTitle = keyword.ends_with("_TITLE");
        material_ = keyword.substr(4, keyword.size() - 4 - (hasTitle ? 6 : 0));
        block_ = hasTitle ? Block::MaterialTitle : Block::Material;
    } else if (keyword == "CONTROL_UNITS") {
        block_ = Block::Units;
    } else if (keyword == "TITLE") {
        block_ = Block::Title;
    } else if (keyword == "INCLUDE") {
        block_ = Block::Include;
    } else {
        NoteGaps(keyword);
    }
    // A sign behind a keyword changes the columns of its lines alone.
    const std::string_view rest = Trim(std::string_view(whole).substr(keyword.size() + 1));
    if ((block_ == Block::Nodes || block_ == Block::Elements) &&
        (rest == "+" || rest == "-" || rest == "%")) {
        model_.CannotCount(lines_.Place() + ": the columns of the lines are not the usual ones");
        block_ = Block::Other;
    }
}

void LsDynaReader::BeginElements(const std::string& keyword) {
    element_ = FindLsDynaElement(keyword, linesOfOptions_);
    if (element_ == nullptr) {
        model_.CannotCountElements(lines_.Place() + ": the lines below *" + keyword + " are not known");
        return;
    }
    block_ = Block::Elements;
}

void LsDynaReader::NoteGaps(const std::string& keyword) {
    if (keyword == "INCLUDE_TRANSFORM" || keyword == "INCLUDE_COMPENSATION_BLANK_RUNS" ||
        keyword.starts_with("INCLUDE_STAMPED") || keyword == "INCLUDE_BINARY" ||
        keyword == "INCLUDE_NASTRAN") {
        model_.CannotCount(lines_.Place() + ": *" + keyword + " changes numbers and places");
    } else if (keyword == "NODE_TRANSFORM") {
        model_.CannotPlace(lines_.Place() + ": *" + keyword + " moves the nodes");
    } else if (keyword.starts_with("ELEMENT_GENERATE") || keyword == "NODE_TO_TARGET_VECTOR") {
        model_.CannotCount(lines_.Place() + ": *" + keyword + " lets the solver make nodes and elements");
    }
}

void LsDynaReader::ReadData(std::string_view line) {
    switch (block_) {
        case Block::Nodes:
            ReadNode(line);
            break;
        case Block::Elements:
            ReadElement(line);
            break;
        case Block::MaterialTitle:
            title_ = Trim(line);
            block_ = Block::Material;
            break;
        case Block::Material:
            ReadMaterial(line);
            break;
        case Block::Units:
            ReadUnits(line);
            break;
        case Block::Include:
            ReadInclude(line);
            break;
        case Block::Title:
            model_.AddUnits(StatedUnits(line));
            block_ = Block::Other;
            break;
        case Block::Other:
            break;
    }
}

/// Takes a field off the line: up to the next comma, or so many columns.
std::string_view LsDynaReader::NextField(std::string_view& rest, std::size_t width) const {
    const std::size_t comma = rest.find(',');
    const std::size_t end = std::min(comma != std::string_view::npos ? comma : width, rest.size());
    const std::string_view field = Trim(rest.substr(0, end));
    rest.remove_prefix(std::min(comma != std::string_view::npos ? end + 1 : end, rest.size()));
    return field;
}

void LsDynaReader::ReadNode(std::string_view line) {
    if (Trim(line).empty()) {
        return;
    }
    const bool hasCommas = line.find(',') != std::string_view::npos;
    const std::size_t all = line.size();
    std::string_view rest = line;
    const std::optional<std::int64_t> id = ParseInteger(NextField(rest, hasCommas ? all : widths_.number));
    if (!id || *id <= 0) {
        model_.CannotCountNodes(lines_.Place() + ": the line is not a node");
        return;
    }
    Position position{};
    for (std::size_t axis = 0; model_.WantsPositions() && axis < position.size(); ++axis) {
        // The last field of a line has no comma behind it.
        const std::string_view field = NextField(rest, hasCommas ? all : widths_.coordinate);
        const std::optional<double> value = field.empty() ? 0.0 : ParseReal(field);
        if (!value) {
            model_.CannotPlace(lines_.Place() + ": " + Quoted(field) + " is not a coordinate");
        }
        position.at(axis) = value.value_or(0);
    }
    model_.AddNode(*id, position);
}

/// Adds the numbers of a line. Returns false if it has anything else.
bool LsDynaReader::AddNumbers(std::string_view line) {
    constexpr std::size_t kMostNumbers = 16;
    const bool hasCommas = line.find(',') != std::string_view::npos;
    std::string_view rest = line;
    const std::size_t known = element_->first + element_->mostNodes;
    for (std::size_t field = 0; !rest.empty() && numbers_.size() < std::min(known, kMostNumbers); ++field) {
        const std::string_view text = NextField(rest, hasCommas ? line.size() : widths_.number);
        const std::optional<std::int64_t> number = text.empty() ? 0 : ParseInteger(text);
        if (!number || *number < 0) {
            return false;
        }
        numbers_.push_back(*number);
    }
    return true;
}

void LsDynaReader::ReadElement(std::string_view line) {
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

void LsDynaReader::AddElement() {
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

void LsDynaReader::ReadMaterial(std::string_view line) {
    std::string_view rest = line;
    // Without a title a material has its kind and its number.
    model_.AddMaterial(!title_.empty() ? title_
                                       : material_ + ' ' + std::string(NextField(rest, widths_.number + 2)));
    title_.clear();
    block_ = Block::Other;
}

void LsDynaReader::ReadUnits(std::string_view line) {
    std::string_view rest = line;
    std::string list;
    for (int unit = 0; unit < 3; ++unit) {
        list += std::string(NextField(rest, 10)) + ' ';
    }
    model_.AddUnits(UnitList(list, 3));
    block_ = Block::Other;
}

void LsDynaReader::ReadInclude(std::string_view line) {
    constexpr std::size_t kLongestName = 4096;
    const std::string_view text = Trim(line);
    // A plus sign after a blank continues a long name on the next line.
    const bool isContinued = text.ends_with(" +") && include_.size() < kLongestName;
    include_ += Trim(isContinued ? text.substr(0, text.size() - 2) : text);
    if (isContinued || include_.empty()) {
        return;
    }
    const std::string name = FileReference(include_);
    include_.clear();
    const std::size_t depth = lines_.Depth();
    if (IncludeFile(name, lines_, model_)) {
        including_.push_back(depth);
        block_ = Block::Other;
    }
}

void LsDynaReader::EndBlock() {
    if (!numbers_.empty()) {
        model_.CannotCountElements(lines_.Place() + ": the element above has no nodes");
        numbers_.clear();
    }
    title_.clear();
    include_.clear();
    linesLeft_ = 0;
    block_ = Block::Other;
}

}  // namespace

void ReadLsDynaModel(InputLines& lines, ModelRecorder& model) {
    LsDynaReader(lines, model).Read();
}

}  // namespace host
