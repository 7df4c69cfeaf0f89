#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ModelFile.h"

namespace host {

/// The sections of a Gmsh file, and the numbers in them: words on lines, or bytes.
class GmshNumbers {
public:
    explicit GmshNumbers(ModelFile& file) : file_(file) {}

    /// Continues with the next section. Returns false at the end of the file.
    bool NextSection(std::string& name);
    /// Continues behind the section. Returns whether its end came next.
    bool EndSection();

    /// From here on sections have bytes, except for the lines that NextLine takes.
    void SetBytes() { hasBytes_ = true; }
    bool HasBytes() const { return hasBytes_; }

    /// Begins with the next line that is not blank. Returns false at the end of the section.
    bool NextLine();
    /// Begins with the next line, or with the next bytes.
    bool NextRecord();

    /// Each takes the next number of the line, or of the bytes: an integer has four of them, a size and a
    /// real number eight. They return false if there is none.
    bool Integer(std::int64_t& number);
    bool Size(std::int64_t& number);
    bool Real(double& number);
    /// The number of a node or an element, which is an integer or a size.
    bool Id(std::int64_t& number) { return hasLongIds_ ? Size(number) : Integer(number); }
    void SetLongIds(bool hasLongIds) { hasLongIds_ = hasLongIds; }
    /// Takes the lowest and the highest number of the section.
    bool SkipRange() {
        std::int64_t limit = 0;
        return Size(limit) && Size(limit);
    }
    /// The next word of the line.
    std::string_view Word();

    std::string Place() const { return file_.Place(); }

private:
    bool IntegerOf(std::size_t size, std::int64_t& number);

    ModelFile& file_;
    bool hasBytes_ = false;
    bool hasLongIds_ = false;
    /// The section, and the next one if its name came in place of the end.
    std::string name_;
    std::string next_;
    bool isAtEnd_ = true;
    bool hasEnd_ = false;
    /// Whether numbers are taken from the line.
    bool isInLine_ = true;
    std::string_view line_;
};

}  // namespace host
