#include <algorithm>
#include <string>
#include <vector>

#include "IncludedFile.h"
#include "LsDynaElementReader.h"
#include "LsDynaFields.h"
#include "ModelSyntaxes.h"
#include "Numbers.h"
#include "StatedUnits.h"
#include "host/system/Text.h"

// LS-DYNA. Lines have fields of fixed columns below a keyword, or commas between the fields.

namespace host {
namespace {

enum class Block { Other, Nodes, Elements, MaterialTitle, Material, Units, Include, Title };

class LsDynaReader {
public:
    LsDynaReader(InputLines& lines, ModelRecorder& model) : lines_(lines), model_(model) {}

    void Read();

private:
    void ReturnFromIncludes();
    void ReadKeyword(std::string_view line);
    void NoteGaps(const std::string& keyword);
    void ReadData(std::string_view line);
    void ReadNode(std::string_view line);
    void ReadMaterial(std::string_view line);
    void ReadUnits(std::string_view line);
    void ReadInclude(std::string_view line);
    void EndBlock();

    InputLines& lines_;
    ModelRecorder& model_;
    Block block_ = Block::Other;
    LsDynaWidths widths_;
    LsDynaElementReader elements_{widths_, lines_, model_};
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
        widths_ = whole.find("LONG=Y") != std::string::npos  ? LsDynaWidths{20, 20}
                  : whole.find("I10=Y") != std::string::npos ? LsDynaWidths{10, 16}
                                                             : LsDynaWidths();
    } else if (keyword == "END") {
        lines_.SkipFile();
    } else if (keyword == "NODE") {
        block_ = Block::Nodes;
    } else if (keyword.starts_with("ELEMENT_")) {
        block_ = elements_.Begin(keyword) ? Block::Elements : Block::Other;
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
            elements_.Read(line);
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

void LsDynaReader::ReadNode(std::string_view line) {
    if (Trim(line).empty()) {
        return;
    }
    const bool hasCommas = line.find(',') != std::string_view::npos;
    const std::size_t all = line.size();
    std::string_view rest = line;
    const std::optional<std::int64_t> id =
        ParseInteger(NextLsDynaField(rest, hasCommas ? all : widths_.number));
    if (!id || *id <= 0) {
        model_.CannotCountNodes(lines_.Place() + ": the line is not a node");
        return;
    }
    Position position{};
    for (std::size_t axis = 0; model_.WantsPositions() && axis < position.size(); ++axis) {
        // The last field of a line has no comma behind it.
        const std::string_view field = NextLsDynaField(rest, hasCommas ? all : widths_.coordinate);
        const std::optional<double> value = field.empty() ? 0.0 : ParseReal(field);
        if (!value) {
            model_.CannotPlace(lines_.Place() + ": " + Quoted(field) + " is not a coordinate");
        }
        position.at(axis) = value.value_or(0);
    }
    model_.AddNode(*id, position);
}

void LsDynaReader::ReadMaterial(std::string_view line) {
    std::string_view rest = line;
    // Without a title a material has its kind and its number.
    model_.AddMaterial(
        !title_.empty() ? title_ : material_ + ' ' + std::string(NextLsDynaField(rest, widths_.number + 2)));
    title_.clear();
    block_ = Block::Other;
}

void LsDynaReader::ReadUnits(std::string_view line) {
    std::string_view rest = line;
    std::string list;
    for (int unit = 0; unit < 3; ++unit) {
        list += std::string(NextLsDynaField(rest, 10)) + ' ';
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
    elements_.End();
    title_.clear();
    include_.clear();
    block_ = Block::Other;
}

}  // namespace

void ReadLsDynaModel(InputLines& lines, ModelRecorder& model) {
    LsDynaReader(lines, model).Read();
}

}  // namespace host
