#include <algorithm>
#include <string>
#include <vector>

#include "IncludedFile.h"
#include "ModelSyntaxes.h"
#include "NastranCards.h"
#include "Numbers.h"
#include "StatedUnits.h"
#include "host/system/Text.h"

// Nastran and OptiStruct. Behind the control sections come cards: eight fields of eight columns, four of
// sixteen, or as many between commas. What a card has no room for is on continuation lines.

namespace host {
namespace {

constexpr std::size_t kColumns = 8;
/// A hexahedron with all its nodes has 22 fields; nothing that is read here has more.
constexpr std::size_t kMostFields = 24;

enum class Section { Unknown, Control, Bulk };

/// The columns of a line without tabs, which go to the next multiple of eight.
std::string WithoutTabs(std::string_view line) {
    std::string plain;
    for (const char character : line) {
        if (character == '\t') {
            plain.append(kColumns - plain.size() % kColumns, ' ');
        } else {
            plain += character;
        }
    }
    return plain;
}

class NastranReader {
public:
    NastranReader(InputLines& lines, ModelRecorder& model) : lines_(lines), model_(model) {}

    void Read();

private:
    bool ReadLine(std::string_view line);
    void ReadControl(const std::string& word);
    void ReadInclude(std::string text);
    void ReadBulk(std::string_view line);
    void BeginCard(std::string_view line);
    void AddFields(std::string_view line);
    void AddField(std::string_view field);
    void EndCard();
    void ReadGrid();
    void ReadElement(const NastranElement& card);
    void ReadUnits();
    std::string_view Field(std::size_t index) const {
        return index < fields_.size() ? std::string_view(fields_[index]) : std::string_view();
    }

    InputLines& lines_;
    ModelRecorder& model_;
    Section section_ = Section::Unknown;
    bool hasSolution_ = false;
    std::uint64_t subcases_ = 0;
    /// The name of the card, without the star of large fields; empty for cards that are not read.
    std::string name_;
    std::vector<std::string> fields_;
    std::string place_;
    std::vector<std::int64_t> nodes_;
};

void NastranReader::Read() {
    std::string_view line;
    while (lines_.Next(line)) {
        if (!ReadLine(line)) {
            lines_.SkipAll();
        }
    }
    EndCard();
    // Without a SUBCASE the solver runs one.
    const std::uint64_t steps = subcases_ == 0 && hasSolution_ ? 1 : subcases_;
    for (std::uint64_t step = 0; step < steps; ++step) {
        model_.AddStep();
    }
}

/// Returns false at the end of the input.
bool NastranReader::ReadLine(std::string_view line) {
    const std::string_view text = Trim(line);
    if (text.starts_with('$')) {
        model_.AddUnits(StatedUnits(text));
        return true;
    }
    if (text.empty()) {
        return true;
    }
    constexpr std::size_t kLongestWord = 9;
    const std::string word =
        ToUpperAscii(text.substr(0, std::min({text.find_first_of(" \t,='\"(*"), text.size(), kLongestWord})));
    if (word == "ENDDATA") {
        return false;
    }
    if (word == "INCLUDE") {
        ReadInclude(std::string(text.substr(word.size())));
    } else if (word == "BEGIN") {
        if (section_ == Section::Bulk) {
            model_.CannotCount(lines_.Place() + ": several parts of the model have numbers of their own");
        }
        section_ = Section::Bulk;
    } else if (section_ != Section::Bulk && (word == "SOL" || word == "CEND" || word == "SUBCASE")) {
        ReadControl(word);
    } else if (section_ != Section::Control) {
        ReadBulk(line);
    }
    return true;
}

void NastranReader::ReadControl(const std::string& word) {
    section_ = Section::Control;
    hasSolution_ = hasSolution_ || word == "SOL";
    subcases_ += word == "SUBCASE" ? 1 : 0;
}

/// The name may continue on the next lines, up to its closing quote.
void NastranReader::ReadInclude(std::string text) {
    constexpr std::size_t kLongestName = 4096;
    text = std::string(Trim(text));
    const char quote = text.empty() ? '\0' : text.front();
    std::string_view next;
    while ((quote == '\'' || quote == '"') && text.find(quote, 1) == std::string::npos &&
           text.size() < kLongestName && lines_.Next(next)) {
        text += Trim(next);
    }
    IncludeFile(FileReference(text), lines_, model_);
}

void NastranReader::ReadBulk(std::string_view line) {
    line = line.substr(0, std::min(line.find('$'), line.size()));
    std::string plain;
    if (line.find('\t') != std::string_view::npos) {
        plain = WithoutTabs(line);
        line = plain;
    }
    if (Trim(line).empty()) {
        return;
    }
    const char first = line.front();
    const bool isContinuation =
        first == '+' || first == '*' || first == ',' ||
        (first == ' ' && Trim(line.substr(0, std::min(line.find(','), kColumns))).empty());
    if (isContinuation) {
        if (!name_.empty()) {
            AddFields(line);
        }
        return;
    }
    EndCard();
    BeginCard(line);
}

void NastranReader::BeginCard(std::string_view line) {
    const std::string_view word =
        Trim(line.substr(0, std::min({line.find_first_of(",*"), kColumns, line.size()})));
    if (word.starts_with('=')) {
        model_.CannotCount(lines_.Place() + ": the line repeats the one above");
        return;
    }
    const std::string name = ToUpperAscii(word);
    const bool isRead =
        name == "GRID" || name == "GRDSET" || name == "DTI" || name.starts_with("MAT") ||
        std::ranges::find(kNastranElements, name, &NastranElement::name) != kNastranElements.end();
    if (isRead) {
        name_ = name;
        place_ = lines_.Place();
        AddFields(line);
    }
}

/// Adds the fields of a line behind its name or its mark of continuation. A line has eight of them, or four
/// large ones, whatever of it is written.
void NastranReader::AddFields(std::string_view line) {
    const std::size_t comma = line.find(',');
    const std::string_view mark = line.substr(0, std::min({comma, kColumns, line.size()}));
    const std::size_t count = mark.find('*') != std::string_view::npos ? 4 : 8;
    if (comma == std::string_view::npos) {
        const std::size_t width = 8 * kColumns / count;
        for (std::size_t field = 0; field < count; ++field) {
            const std::size_t begin = kColumns + field * width;
            AddField(begin < line.size() ? line.substr(begin, width) : std::string_view());
        }
        return;
    }
    std::string_view rest = line.substr(comma + 1);
    for (std::size_t field = 0; field < count; ++field) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        AddField(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

void NastranReader::AddField(std::string_view field) {
    if (fields_.size() < kMostFields) {
        fields_.emplace_back(Trim(field));
    }
}

void NastranReader::EndCard() {
    if (name_ == "GRID") {
        ReadGrid();
    } else if (name_ == "GRDSET") {
        if (!Field(1).empty() && Field(1) != "0") {
            model_.CannotPlace(place_ + ": the nodes are in a coordinate system of their own");
        }
    } else if (name_ == "DTI") {
        ReadUnits();
    } else if (std::ranges::find(kNastranMaterials, name_) != kNastranMaterials.end()) {
        model_.AddMaterial(name_ + ' ' + std::string(Field(0)));
    } else if (const auto* const card = std::ranges::find(kNastranElements, name_, &NastranElement::name);
               card != kNastranElements.end()) {
        ReadElement(*card);
    }
    name_.clear();
    fields_.clear();
}

void NastranReader::ReadGrid() {
    const std::optional<std::int64_t> id = ParseInteger(Field(0));
    if (!id || *id <= 0) {
        model_.CannotCountNodes(place_ + ": the grid point has no number");
        return;
    }
    if (!Field(1).empty() && Field(1) != "0") {
        model_.CannotPlace(place_ + ": the node is in a coordinate system of its own");
    }
    Position position{};
    for (std::size_t axis = 0; model_.WantsPositions() && axis < position.size(); ++axis) {
        const std::string_view field = Field(axis + 2);
        const std::optional<double> value = field.empty() ? 0.0 : ParseReal(field);
        if (!value) {
            model_.CannotPlace(place_ + ": " + Quoted(field) + " is not a coordinate");
        }
        position.at(axis) = value.value_or(0);
    }
    model_.AddNode(*id, position);
}

void NastranReader::ReadElement(const NastranElement& card) {
    const std::optional<std::int64_t> id = ParseInteger(Field(0));
    if (!id || *id <= 0) {
        model_.CannotCountElements(place_ + ": the element has no number");
        return;
    }
    nodes_.clear();
    for (std::size_t index = 0; index < card.mostNodes; ++index) {
        const std::string_view field = Field(card.first + index);
        const std::optional<std::int64_t> node = field.empty() ? 0 : ParseInteger(field);
        const bool isCorner = index < static_cast<std::size_t>(CornersOf(card.shape));
        if (!node || *node < 0 || (isCorner && *node == 0)) {
            model_.CannotCountElements(place_ + ": " + card.name.data() + ' ' + std::to_string(*id) +
                                       " lacks a node");
            return;
        }
        nodes_.push_back(*node);
    }
    // Fields behind the corners may be empty.
    while (!nodes_.empty() && nodes_.back() == 0) {
        nodes_.pop_back();
    }
    const bool isQuadratic = nodes_.size() > static_cast<std::size_t>(CornersOf(card.shape));
    model_.AddElement({*id, card.shape, isQuadratic ? 2 : 1, card.name, nodes_});
}

/// DTI,UNITS,1,MGG,N,MM,S
void NastranReader::ReadUnits() {
    if (ToUpperAscii(Field(0)) != "UNITS") {
        return;
    }
    std::string list;
    for (std::size_t field = 2; field < 6; ++field) {
        list += std::string(Field(field)) + ' ';
    }
    model_.AddUnits(UnitList(list, 4));
}

}  // namespace

void ReadNastranModel(InputLines& lines, ModelRecorder& model) {
    NastranReader(lines, model).Read();
}

}  // namespace host
