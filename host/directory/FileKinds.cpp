#include "FileKinds.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "FileExtensions.h"
#include "host/system/Text.h"

namespace host {
namespace {

// Whole names. Digits at the end, with which solvers number their files ("d3plot07"), do not matter.
constexpr FileKindRule kFileNames[] = {
    Is("readme", CAE_FILE_REPORT),
    Is("notes", CAE_FILE_REPORT),
    Is("license", CAE_FILE_REPORT),
    Is("licence", CAE_FILE_REPORT),
    Is("copying", CAE_FILE_REPORT),
    Is("changelog", CAE_FILE_REPORT),
    Is("makefile", CAE_FILE_SCRIPT),
    Is("d3plot", CAE_FILE_RESULT, Solver::LsDyna),
    Is("d3part", CAE_FILE_RESULT, Solver::LsDyna),
    Is("d3thdt", CAE_FILE_RESULT, Solver::LsDyna),
    Is("d3eigv", CAE_FILE_RESULT, Solver::LsDyna),
    Is("d3dump", CAE_FILE_RESULT, Solver::LsDyna),
    Is("intfor", CAE_FILE_RESULT, Solver::LsDyna),
    Is("binout", CAE_FILE_RESULT, Solver::LsDyna),
    Is("glstat", CAE_FILE_RESULT, Solver::LsDyna),
    Is("matsum", CAE_FILE_RESULT, Solver::LsDyna),
    Is("rcforc", CAE_FILE_RESULT, Solver::LsDyna),
    Is("nodout", CAE_FILE_RESULT, Solver::LsDyna),
    Is("elout", CAE_FILE_RESULT, Solver::LsDyna),
    Is("d3hsp", CAE_FILE_LOG, Solver::LsDyna),
    Is("messag", CAE_FILE_LOG, Solver::LsDyna),
    Is("mes", CAE_FILE_LOG, Solver::LsDyna),
    Is("status.out", CAE_FILE_LOG),
};

/// Whether every rule can be found: names are compared in lower case, and the first one counts.
template <std::size_t Size>
constexpr bool IsEveryNameFound(const FileKindRule (&rules)[Size]) {
    for (const FileKindRule* rule = rules; rule != rules + Size; ++rule) {
        const bool isLower = std::ranges::none_of(
            rule->name, [](char character) { return character >= 'A' && character <= 'Z'; });
        if (!isLower || std::ranges::find(rules, rule->name, &FileKindRule::name) != rule) {
            return false;
        }
    }
    return true;
}
static_assert(IsEveryNameFound(kFileExtensions), "each extension is listed once, in lower case");
static_assert(IsEveryNameFound(kFileNames), "each name is listed once, in lower case");

std::string ToLowerAscii(std::string text) {
    for (char& character : text) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return text;
}

const FileKind* Find(std::span<const FileKindRule> rules, std::string_view name) {
    const auto found = std::ranges::find(rules, name, &FileKindRule::name);
    return found == rules.end() ? nullptr : &found->kind;
}

}  // namespace

FileKind KindOfFileName(const std::filesystem::path& name) {
    const OuString text = ToOuString(name);
    const std::string lowerName = ToLowerAscii(text.GetAnsiBuffer());
    const std::string_view stem =
        std::string_view(lowerName).substr(0, lowerName.find_last_not_of("0123456789") + 1);
    for (const std::string_view candidate : {std::string_view(lowerName), stem}) {
        if (const FileKind* const kind = Find(kFileNames, candidate)) {
            return *kind;
        }
    }
    const std::size_t dot = lowerName.rfind('.');
    if (dot != std::string::npos) {
        const std::string_view extension = std::string_view(lowerName).substr(dot + 1);
        if (const FileKind* const kind = Find(kFileExtensions, extension)) {
            return *kind;
        }
    }
    return {};
}

}  // namespace host
