#include <algorithm>
#include <string>
#include <vector>

#include "AbaqusElements.h"
#include "CoordinateSystem.h"
#include "IncludedFile.h"
#include "ModelSyntaxes.h"
#include "Numbers.h"
#include "StarKeywords.h"
#include "StatedUnits.h"
#include "host/system/Text.h"

// Abaqus and CalculiX. A keyword has data on the lines below it; a comma at the end continues a line.

namespace host {
namespace {

enum class Block { Other, Nodes, Elements, Heading, Instance };
constexpr std::size_t kLongestKeyword = 4096;

/// The keyword without any blanks: the solvers read *ENDSTEP and *END STEP alike.
std::string KeywordOf(std::string_view line) {
    std::string keyword = StarKeyword(line);
    std::erase(keyword, ' ');
    return keyword;
}

class AbaqusReader {
public:
    AbaqusReader(InputLines& lines, ModelRecorder& model) : lines_(lines), model_(model) {}

    void Read();

private:
    void ReadKeyword(const std::string& line);
    void ReadPartKeyword(const std::string& keyword, const std::string& line);
    void BeginData(const std::string& keyword, const std::string& line);
    void NoteGaps(const std::string& keyword, const std::string& line);
    void ReadData(std::string_view line);
    void ReadNode(std::string_view line);
    void ReadElement(std::string_view line);
    void EndElement();
    void ReadPlacement(std::string_view line);
    void BeginInstance();
    void EndBlock();

    InputLines& lines_;
    ModelRecorder& model_;
    Block block_ = Block::Other;
    CoordinateSystem coordinates_ = CoordinateSystem::Rectangular;
    std::string type_;
    ElementKind kind_;
    /// The identifier of the element, and its nodes so far.
    std::vector<std::int64_t> numbers_;
    std::string partOfInstance_;
    std::vector<double> placement_;
};

void AbaqusReader::Read() {
    // A keyword line that the next line continues.
    std::string keyword;
    std::string_view next;
    while (lines_.Next(next)) {
        const std::string_view line = Trim(next);
        if (line.starts_with("**")) {
            model_.AddUnits(StatedUnits(line));
        } else if (!keyword.empty() || IsStarKeyword(line)) {
            if (keyword.size() > kLongestKeyword) {
                model_.CannotCount(lines_.Place() + ": the keyword is too long");
                keyword.clear();
            }
            keyword += line;
            if (!keyword.ends_with(',')) {
                ReadKeyword(keyword);
                keyword.clear();
            }
        } else if (!line.empty()) {
            ReadData(line);
        }
    }
    if (!keyword.empty()) {
        ReadKeyword(keyword);
    }
    EndBlock();
}

void AbaqusReader::ReadKeyword(const std::string& line) {
    const std::string keyword = KeywordOf(line);
    if (keyword == "INCLUDE") {
        // The lines of the file may continue the data above.
        IncludeFile(FileReference(StarParameter(line, "INPUT")), lines_, model_);
        return;
    }
    EndBlock();
    if (keyword == "STEP") {
        model_.AddStep();
    } else if (keyword == "MATERIAL") {
        model_.AddMaterial(FileReference(StarParameter(line, "NAME")));
    } else if (keyword == "HEADING") {
        block_ = Block::Heading;
    } else if (keyword == "NODE" || keyword == "ELEMENT") {
        BeginData(keyword, line);
    } else {
        ReadPartKeyword(keyword, line);
        NoteGaps(keyword, line);
    }
}

void AbaqusReader::BeginData(const std::string& keyword, const std::string& line) {
    if (keyword == "NODE") {
        block_ = Block::Nodes;
        coordinates_ = CoordinateSystemOf(StarParameter(line, "SYSTEM"));
    } else {
        block_ = Block::Elements;
        type_ = ToUpperAscii(Trim(StarParameter(line, "TYPE")));
        kind_ = AbaqusElement(type_);
    }
    if (const std::string file = FileReference(StarParameter(line, "INPUT")); !file.empty()) {
        IncludeFile(file, lines_, model_);
    }
}

void AbaqusReader::ReadPartKeyword(const std::string& keyword, const std::string& line) {
    if (keyword == "PART") {
        model_.BeginPart(FileReference(StarParameter(line, "NAME")));
    } else if (keyword == "ENDPART") {
        model_.EndPart();
    } else if (keyword == "INSTANCE") {
        partOfInstance_ = FileReference(StarParameter(line, "PART"));
        placement_.clear();
        block_ = Block::Instance;
    } else if (keyword == "ENDINSTANCE") {
        model_.EndInstance();
    }
}

void AbaqusReader::NoteGaps(const std::string& keyword, const std::string& line) {
    if (keyword == "NGEN" || keyword == "NFILL" || keyword == "NCOPY" || keyword == "NMAP") {
        model_.CannotCountNodes(lines_.Place() + ": *" + keyword + " lets the solver make nodes");
    } else if (keyword == "ELGEN" || keyword == "ELCOPY") {
        model_.CannotCountElements(lines_.Place() + ": *" + keyword + " lets the solver make elements");
    } else if (keyword == "IMPORT" || keyword == "SUBSTRUCTUREGENERATE" ||
               (keyword == "RESTART" && ToUpperAscii(line).find("READ") != std::string::npos)) {
        model_.CannotCount(lines_.Place() + ": *" + keyword + " takes the model from another run");
    } else if (keyword == "SYSTEM") {
        model_.CannotPlace(lines_.Place() + ": *SYSTEM moves the nodes");
    }
}

void AbaqusReader::ReadData(std::string_view line) {
    switch (block_) {
        case Block::Other:
            break;
        case Block::Nodes:
            ReadNode(line);
            break;
        case Block::Elements:
            ReadElement(line);
            break;
        case Block::Heading:
            model_.AddUnits(StatedUnits(line));
            break;
        case Block::Instance:
            ReadPlacement(line);
            break;
    }
}

void AbaqusReader::ReadNode(std::string_view line) {
    CommaFields fields(line);
    std::string_view field;
    const std::optional<std::int64_t> id = fields.Next(field) ? ParseInteger(field) : std::nullopt;
    if (!id || *id <= 0) {
        model_.CannotCountNodes(lines_.Place() + ": the line is not a node");
        return;
    }
    Position position{};
    for (std::size_t axis = 0; model_.WantsPositions() && axis < position.size() && fields.Next(field);
         ++axis) {
        const std::optional<double> value = field.empty() ? 0.0 : ParseReal(field);
        if (!value) {
            model_.CannotPlace(lines_.Place() + ": " + Quoted(field) + " is not a coordinate");
            break;
        }
        position.at(axis) = *value;
    }
    model_.AddNode(*id, Rectangular(position, coordinates_));
}

void AbaqusReader::ReadElement(std::string_view line) {
    CommaFields fields(line);
    std::string_view field;
    while (fields.Next(field)) {
        const std::optional<std::int64_t> number = field.empty() ? 0 : ParseInteger(field);
        if (!number || *number < 0) {
            model_.CannotCountElements(lines_.Place() + ": " + Quoted(field) +
                                       " is not a node of an element");
            return;
        }
        numbers_.push_back(*number);
    }
    const std::size_t nodes = numbers_.empty() ? 0 : numbers_.size() - 1;
    const bool isContinued = line.ends_with(',') && (kind_.mostNodes == 0 || nodes < kind_.mostNodes);
    if (nodes >= kind_.fewestNodes && !isContinued) {
        EndElement();
    }
}

void AbaqusReader::EndElement() {
    const std::size_t nodes = numbers_.empty() ? 0 : numbers_.size() - 1;
    const bool isWhole = nodes >= std::max(kind_.fewestNodes, std::size_t{1}) &&
                         (kind_.mostNodes == 0 || nodes <= kind_.mostNodes) && numbers_.front() > 0;
    if (isWhole) {
        model_.AddElement(
            {numbers_.front(), kind_.shape, kind_.order, type_, std::span(numbers_).subspan(1)});
    } else {
        model_.CannotCountElements(lines_.Place() + ": an element " + Quoted(type_) + " has " +
                                   FormatCount(nodes, "node", "nodes"));
    }
    numbers_.clear();
}

void AbaqusReader::ReadPlacement(std::string_view line) {
    CommaFields fields(line);
    std::string_view field;
    // Shift, then two points and an angle.
    constexpr std::size_t kNumbers = 10;
    while (fields.Next(field) && placement_.size() < kNumbers) {
        const std::optional<double> value = field.empty() ? 0.0 : ParseReal(field);
        if (!value) {
            model_.CannotPlace(lines_.Place() + ": " + Quoted(field) + " is not a coordinate");
        }
        placement_.push_back(value.value_or(0));
    }
}

void AbaqusReader::BeginInstance() {
    placement_.resize(10);
    Placement placement;
    std::copy_n(placement_.begin(), 3, placement.shift.begin());
    std::copy_n(placement_.begin() + 3, 3, placement.from.begin());
    std::copy_n(placement_.begin() + 6, 3, placement.to.begin());
    placement.degrees = placement_.back();
    if (!model_.BeginInstance(partOfInstance_, placement)) {
        model_.CannotCount(lines_.Place() + ": there is no part " + Quoted(partOfInstance_));
    }
}

/// Everything that the lines below a keyword began ends with the next keyword.
void AbaqusReader::EndBlock() {
    if (block_ == Block::Instance) {
        BeginInstance();
    } else if (!numbers_.empty()) {
        EndElement();
    }
    block_ = Block::Other;
}

}  // namespace

void ReadAbaqusModel(InputLines& lines, ModelRecorder& model) {
    AbaqusReader(lines, model).Read();
}

}  // namespace host
