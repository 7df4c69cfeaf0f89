#include "GmshElementReader.h"

#include "GmshBlocks.h"
#include "host/system/Text.h"

namespace host {

void GmshElementReader::ReadLines() {
    std::int64_t stated = 0;
    if (!numbers_.NextLine() || !numbers_.Integer(stated)) {
        Lacks("the number of elements is missing");
        return;
    }
    std::int64_t count = 0;
    while (count < stated && numbers_.NextRecord()) {
        if (numbers_.HasBytes()) {
            if (!ReadElementsOfOneType(stated - count, count)) {
                Lacks("it is not an element");
                return;
            }
            continue;
        }
        if (!ReadLine()) {
            Lacks("the line is not an element");
        }
        ++count;
    }
    if (count < stated) {
        Lacks("there are " + std::to_string(count) + " of " +
              FormatCount(static_cast<std::uint64_t>(stated), "element", "elements"));
    }
}

bool GmshElementReader::ReadLine() {
    std::int64_t id = 0;
    std::int64_t type = 0;
    std::int64_t tags = 0;
    return numbers_.Id(id) && numbers_.Integer(type) && numbers_.Integer(tags) && SkipIntegers(tags) &&
           ReadElement(id, FindGmshElement(type));
}

/// In bytes, elements of one type follow each other. Returns false if it cannot be said what comes next.
bool GmshElementReader::ReadElementsOfOneType(std::int64_t most, std::int64_t& count) {
    std::int64_t type = 0;
    std::int64_t elements = 0;
    std::int64_t tags = 0;
    if (!numbers_.Integer(type) || !numbers_.Integer(elements) || !numbers_.Integer(tags) || elements <= 0 ||
        elements > most || FindGmshElement(type) == nullptr) {
        return false;
    }
    for (std::int64_t element = 0; element < elements; ++element) {
        std::int64_t id = 0;
        if (!numbers_.Id(id) || !SkipIntegers(tags) || !ReadElement(id, FindGmshElement(type))) {
            return false;
        }
        ++count;
    }
    return true;
}

bool GmshElementReader::SkipIntegers(std::int64_t count) {
    std::int64_t skipped = 0;
    for (std::int64_t index = 0; index < count; ++index) {
        if (!numbers_.Integer(skipped)) {
            return false;
        }
    }
    return count >= 0;
}

void GmshElementReader::ReadBlocks() {
    ReadGmshBlocks(
        numbers_, "elements", [this](std::int64_t& count) { return ReadBlock(count); },
        [this](const std::string& what) { Lacks(what); });
}

bool GmshElementReader::ReadBlock(std::int64_t& count) {
    std::int64_t dimension = 0;
    std::int64_t entity = 0;
    std::int64_t type = 0;
    std::int64_t elements = 0;
    if (!numbers_.NextRecord() || !numbers_.Integer(dimension) || !numbers_.Integer(entity) ||
        !numbers_.Integer(type) || !numbers_.Size(elements) || elements < 0) {
        return false;
    }
    const GmshElement* const kind = FindGmshElement(type);
    if (kind == nullptr && numbers_.HasBytes()) {
        return false;
    }
    for (std::int64_t element = 0; element < elements; ++element) {
        std::int64_t id = 0;
        if (!numbers_.NextRecord()) {
            return false;
        }
        if (!numbers_.Id(id) || !ReadElement(id, kind)) {
            if (numbers_.HasBytes()) {
                return false;
            }
            Lacks("the line is not an element");
        }
        ++count;
    }
    return true;
}

/// Of an element whose type is not known, the line is left out.
bool GmshElementReader::ReadElement(std::int64_t id, const GmshElement* element) {
    if (id <= 0) {
        return false;
    }
    if (element == nullptr) {
        model_.AddElement({id, ElementShape::Other, 1, "", {}});
        return true;
    }
    nodes_.resize(element->nodes);
    for (std::int64_t& node : nodes_) {
        if (!numbers_.Id(node) || node <= 0) {
            return false;
        }
    }
    if (!numbers_.HasBytes() && !numbers_.Word().empty()) {
        return false;
    }
    ordered_ = nodes_;
    for (std::size_t index = 0; index < element->places.size(); ++index) {
        ordered_[index] = nodes_[element->places[index]];
    }
    model_.AddElement({id, element->shape, element->order, element->name, ordered_});
    return true;
}

}  // namespace host
