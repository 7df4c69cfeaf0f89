#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string>

#include "ModelSyntaxes.h"
#include "Numbers.h"
#include "PointNumbers.h"
#include "host/system/Text.h"

// STL: triangles with their corners, as text or as bytes. Corners at the same place are one node, without
// which a surface would have each of its edges twice.

namespace host {
namespace {

/// Bytes: 80 of any content, the number of triangles, and for each a normal, three corners and two bytes.
constexpr std::size_t kTitle = 80;
constexpr std::size_t kBeginning = kTitle + 4;
constexpr std::size_t kTriangle = 50;
constexpr std::size_t kNormal = 12;
constexpr std::size_t kCorners = 3;

/// The lowest byte comes first, on every machine.
std::uint32_t NumberAt(std::string_view bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t index = 0; index < 4; ++index) {
        number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[place + index])) << 8U * index;
    }
    return number;
}

bool IsText(std::string_view beginning) {
    const auto isControl = [](char byte) {
        return static_cast<unsigned char>(byte) < 0x20 && (byte < '\t' || byte > '\r');
    };
    return ToUpperAscii(Trim(beginning).substr(0, 5)) == "SOLID" &&
           std::ranges::none_of(beginning, isControl);
}

class StlReader {
public:
    StlReader(ModelFile& file, ModelRecorder& model) : file_(file), model_(model) {}

    void Read();

private:
    void ReadBytes();
    void ReadTriangle(std::string_view bytes);
    void ReadText();
    void ReadLine(std::string_view line);
    void ReadCorner(std::string_view rest);
    void EndTriangle();
    void AddTriangle();
    void Lacks(const std::string& what) { model_.CannotCount(file_.Place() + ": " + what); }

    ModelFile& file_;
    ModelRecorder& model_;
    PointNumbers numbers_;
    std::int64_t last_ = 0;
    std::array<Position, kCorners> corners_{};
    /// Of a triangle of text: how many corners it has so far, whether all of them can be read, and whether
    /// the lines are inside of it, and of a solid.
    std::size_t count_ = 0;
    bool isWhole_ = true;
    bool isInTriangle_ = false;
    bool isInSolid_ = false;
};

void StlReader::Read() {
    constexpr std::size_t kSample = 512;
    const std::string_view beginning = file_.Peek(kSample);
    // Many files of bytes begin with "solid" as well.
    const bool hasSizeOfBytes =
        beginning.size() >= kBeginning &&
        file_.Size() == kBeginning + std::uint64_t{kTriangle} * NumberAt(beginning, kTitle);
    if (!hasSizeOfBytes && IsText(beginning)) {
        ReadText();
    } else {
        ReadBytes();
    }
}

void StlReader::ReadBytes() {
    std::string_view bytes;
    if (!file_.Next(kBeginning, bytes)) {
        Lacks("the file is too short for STL");
        return;
    }
    const std::uint64_t stated = NumberAt(bytes, kTitle);
    const std::uint64_t room = (file_.Size() - kBeginning) / kTriangle;
    if (file_.Size() != kBeginning + kTriangle * stated) {
        Lacks("the size of the file, " + FormatCount(file_.Size(), "byte", "bytes") + ", is not that of " +
              FormatCount(stated, "triangle", "triangles"));
    }
    for (std::uint64_t triangle = 0; triangle < std::min(stated, room); ++triangle) {
        if (!file_.Next(kTriangle, bytes)) {
            return;
        }
        ReadTriangle(bytes);
    }
}

void StlReader::ReadTriangle(std::string_view bytes) {
    std::size_t place = kNormal;
    for (Position& corner : corners_) {
        for (double& coordinate : corner) {
            coordinate = std::bit_cast<float>(NumberAt(bytes, place));
            place += sizeof(float);
            if (!IsCoordinate(coordinate)) {
                Lacks("a corner of the triangle is at no place");
                return;
            }
        }
    }
    AddTriangle();
}

void StlReader::ReadText() {
    std::string_view line;
    while (file_.NextLine(line)) {
        ReadLine(line);
    }
    if (isInTriangle_ || isInSolid_) {
        Lacks("the file ends before its solid");
    }
}

void StlReader::ReadLine(std::string_view line) {
    // Longer words are none of these.
    constexpr std::size_t kLongestWord = 16;
    const std::string word = ToUpperAscii(NextWord(line).substr(0, kLongestWord));
    if (word == "VERTEX") {
        ReadCorner(line);
    } else if (word == "FACET" || word == "ENDFACET") {
        if (isInTriangle_ != (word == "ENDFACET")) {
            Lacks(isInTriangle_ ? "the triangle above has no end" : "the triangle has no beginning");
            count_ = 0;
        } else if (isInTriangle_) {
            EndTriangle();
        }
        isInTriangle_ = word == "FACET";
        count_ = 0;
        isWhole_ = true;
    } else if (word == "SOLID" || word == "ENDSOLID") {
        isInSolid_ = word == "SOLID";
    } else if (!word.empty() && word != "OUTER" && word != "ENDLOOP") {
        Lacks("the line is not one of STL");
    }
}

void StlReader::ReadCorner(std::string_view rest) {
    Position corner{};
    for (double& coordinate : corner) {
        const std::optional<double> value = ParseReal(NextWord(rest));
        isWhole_ = isWhole_ && value && IsCoordinate(*value);
        coordinate = value.value_or(0);
    }
    if (count_ < kCorners) {
        corners_.at(count_) = corner;
    }
    ++count_;
}

void StlReader::EndTriangle() {
    if (count_ != kCorners) {
        Lacks("the triangle has " + FormatCount(count_, "corner", "corners"));
    } else if (!isWhole_) {
        Lacks("a corner of the triangle is at no place");
    } else {
        AddTriangle();
    }
}

void StlReader::AddTriangle() {
    std::array<std::int64_t, kCorners> nodes{};
    for (std::size_t corner = 0; corner < kCorners; ++corner) {
        bool isNew = false;
        nodes.at(corner) = numbers_.NumberOf(corners_.at(corner), isNew);
        if (isNew) {
            model_.AddNode(nodes.at(corner), corners_.at(corner));
        }
    }
    model_.AddElement({++last_, ElementShape::Triangle, 1, "facet", nodes});
}

}  // namespace

void ReadStlModel(ModelFile& file, ModelRecorder& model) {
    StlReader(file, model).Read();
}

}  // namespace host
