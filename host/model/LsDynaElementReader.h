#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "InputLines.h"
#include "LsDynaElements.h"
#include "LsDynaFields.h"
#include "ModelRecorder.h"

namespace host {

/// The elements below a keyword of LS-DYNA.
class LsDynaElementReader {
public:
    LsDynaElementReader(const LsDynaWidths& widths, InputLines& lines, ModelRecorder& model)
        : widths_(widths), lines_(lines), model_(model) {}

    /// Begins with the lines below the keyword, which is without its star. Returns false if they are not
    /// known.
    bool Begin(const std::string& keyword);
    void Read(std::string_view line);
    /// Ends with the line before the next keyword.
    void End();

private:
    bool AddNumbers(std::string_view line);
    void AddElement();

    /// They can change from file to file.
    const LsDynaWidths& widths_;
    InputLines& lines_;
    ModelRecorder& model_;
    const LsDynaElement* element_ = nullptr;
    /// Lines behind each element that have no nodes, and how many are still to come.
    std::size_t linesOfOptions_ = 0;
    std::size_t linesLeft_ = 0;
    /// Identifier, part and nodes of the element so far.
    std::vector<std::int64_t> numbers_;
    std::vector<std::int64_t> nodes_;
};

}  // namespace host
