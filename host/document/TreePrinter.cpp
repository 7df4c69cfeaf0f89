#include "TreePrinter.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "TreeRows.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::size_t kWidestTreeColumn = 64;
constexpr std::size_t kFormatWidth = 7;

struct Colours {
    std::string_view object;
    std::string_view kind;
    std::string_view dim;
    std::string_view end;
};
constexpr Colours kColours = {"\x1B[1m", "\x1B[36m", "\x1B[2m", "\x1B[0m"};
constexpr Colours kNoColours = {"", "", "", ""};

struct Widths {
    std::size_t tree = 0;
    std::size_t kind = 0;
    std::size_t identifier = 0;
    std::size_t type = 0;
    std::size_t size = 0;
};

std::size_t TreeWidth(const TreeRow& row) {
    return DisplayWidth(row.strokes) + DisplayWidth(row.name);
}

Widths MeasureColumns(const std::vector<TreeRow>& rows) {
    Widths widths;
    for (const TreeRow& row : rows) {
        if (!row.isMetadata) {
            // One long name must not move the columns of all other lines.
            widths.tree = std::max(widths.tree, std::min(TreeWidth(row), kWidestTreeColumn));
            widths.kind = std::max(widths.kind, row.kind.size());
            widths.identifier = std::max(widths.identifier, row.identifier.size());
            widths.type = std::max(widths.type, row.format.empty() ? 0 : row.type.size());
            widths.size = std::max(widths.size, row.size.size());
        }
    }
    return widths;
}

std::string Padding(std::size_t width, std::size_t used) {
    return std::string(width > used ? width - used : 0, ' ');
}

std::string Coloured(std::string_view colour, const std::string& text, const Colours& colours) {
    return colour.empty() ? text : std::string(colour) + text + std::string(colours.end);
}

/// The columns after the tree and the kind.
std::string DetailsOf(const TreeRow& row, const Widths& widths) {
    std::string text = "  " + row.identifier;
    const std::string gap = Padding(widths.identifier, row.identifier.size()) + "  ";
    if (!row.format.empty()) {
        text += gap + row.type + Padding(widths.type, row.type.size()) + "  " + row.format +
                Padding(kFormatWidth, row.format.size()) + "  " + Padding(widths.size, row.size.size()) +
                row.size;
    } else if (!row.type.empty()) {
        text += gap + row.type;
    }
    return row.note.empty() ? text : text + (row.type.empty() ? gap : "  ") + row.note;
}

std::string LineOf(const TreeRow& row, const Widths& widths, const Colours& colours) {
    if (row.isMetadata) {
        return Coloured(colours.dim, row.strokes + row.name, colours);
    }
    return Coloured(colours.dim, row.strokes, colours) +
           Coloured(row.isObject ? colours.object : "", row.name, colours) +
           Padding(widths.tree, TreeWidth(row)) + "  " +
           Coloured(row.isObject ? colours.kind : colours.dim, row.kind, colours) +
           Padding(widths.kind, row.kind.size()) + DetailsOf(row, widths);
}

}  // namespace

std::string PrintTree(CAEObject& object, const TreeStyle& style, const TreeContent& content) {
    const TreeRows tree = ListTreeRows(object, style.isUtf8, content);
    const Widths widths = MeasureColumns(tree.rows);
    const Colours& colours = style.isColoured ? kColours : kNoColours;
    std::string text;
    for (const TreeRow& row : tree.rows) {
        text += LineOf(row, widths, colours) + '\n';
    }
    return text + '\n' + tree.summary + '\n';
}

}  // namespace host
