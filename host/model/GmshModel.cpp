#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "GmshElementReader.h"
#include "GmshNodeReader.h"
#include "GmshNumbers.h"
#include "ModelSyntaxes.h"

// Gmsh, versions 2.0 to 2.2 and 4.1, as text or as bytes. Version 2 has a node or an element on each line;
// version 4 has blocks of them, one for each point, curve, surface or volume of the geometry.

namespace host {
namespace {

constexpr std::array<std::string_view, 4> kVersionsWithLines = {"2", "2.0", "2.1", "2.2"};
constexpr std::string_view kVersionWithBlocks = "4.1";

class GmshReader {
public:
    GmshReader(ModelFile& file, ModelRecorder& model) : numbers_(file), model_(model) {}

    void Read();

private:
    void ReadSection(const std::string& name);
    void ReadFormat();
    void Lacks(const std::string& what) { model_.CannotCount(numbers_.Place() + ": " + what); }
    void LacksNodes(const std::string& what) { model_.CannotCountNodes(numbers_.Place() + ": " + what); }
    void LacksElements(const std::string& what) {
        model_.CannotCountElements(numbers_.Place() + ": " + what);
    }

    GmshNumbers numbers_;
    ModelRecorder& model_;
    bool hasFormat_ = false;
    bool hasNodes_ = false;
    bool hasElements_ = false;
    /// Whether the format is one that is read.
    bool isKnown_ = false;
    bool hasBlocks_ = false;
    GmshNodeReader nodes_{numbers_, model_};
    GmshElementReader elements_{numbers_, model_};
};

void GmshReader::Read() {
    std::string name;
    while (numbers_.NextSection(name)) {
        ReadSection(name);
    }
    if (!hasFormat_) {
        Lacks("there is no $MeshFormat");
    } else if (!hasNodes_) {
        LacksNodes("there is no $Nodes");
    } else if (!hasElements_) {
        LacksElements("there is no $Elements");
    }
}

void GmshReader::ReadSection(const std::string& name) {
    void (GmshReader::*lacks)(const std::string&) = nullptr;
    if (name == "MeshFormat") {
        hasFormat_ = true;
        ReadFormat();
        lacks = &GmshReader::Lacks;
    } else if (isKnown_ && name == "Nodes") {
        hasNodes_ = true;
        hasBlocks_ ? nodes_.ReadBlocks() : nodes_.ReadLines();
        lacks = &GmshReader::LacksNodes;
    } else if (isKnown_ && name == "Elements") {
        hasElements_ = true;
        hasBlocks_ ? elements_.ReadBlocks() : elements_.ReadLines();
        lacks = &GmshReader::LacksElements;
    }
    if (!numbers_.EndSection() && lacks != nullptr) {
        (this->*lacks)("$" + name + " does not end where it should");
    }
}

void GmshReader::ReadFormat() {
    numbers_.NextLine();
    const std::string version(numbers_.Word());
    std::int64_t hasBytes = 0;
    std::int64_t size = 0;
    hasBlocks_ = version == kVersionWithBlocks;
    numbers_.SetLongIds(hasBlocks_);
    isKnown_ = (hasBlocks_ || std::ranges::find(kVersionsWithLines, version) != kVersionsWithLines.end()) &&
               numbers_.Integer(hasBytes) && numbers_.Integer(size) && size == sizeof(double);
    if (!isKnown_) {
        Lacks("this version of Gmsh's format is not read");
        return;
    }
    std::int64_t one = 1;
    if (hasBytes != 0) {
        numbers_.SetBytes();
        isKnown_ = numbers_.NextRecord() && numbers_.Integer(one) && one == 1;
    }
    if (!isKnown_) {
        Lacks("the bytes of the numbers are in another order");
    }
}

}  // namespace

void ReadGmshModel(ModelFile& file, ModelRecorder& model) {
    GmshReader(file, model).Read();
}

}  // namespace host
