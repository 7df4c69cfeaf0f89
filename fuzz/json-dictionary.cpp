// Prints the words of the format as a dictionary for libFuzzer.

#include <CAEFunctions.h>

#include <cstdio>
#include <set>
#include <string>
#include <string_view>

#include "format/Effects.h"
#include "format/Kinds.h"
#include "format/Values.h"

namespace {

/// One entry, in which quotes and backslashes are escaped, and bytes beyond ASCII are numbers.
void Print(std::string_view word) {
    std::string escaped;
    for (const char character : word) {
        if (character == '"' || character == '\\') {
            escaped += '\\';
        }
        if (static_cast<unsigned char>(character) < 0x80) {
            escaped += character;
        } else {
            constexpr const char* kDigits = "0123456789ABCDEF";
            const auto byte = static_cast<unsigned char>(character);
            escaped += {'\\', 'x', kDigits[byte >> 4U], kDigits[byte & 15U]};
        }
    }
    std::printf("\"%s\"\n", escaped.c_str());
}

/// The word as a JSON string.
void PrintString(std::string_view word) {
    Print('"' + std::string(word) + '"');
}

void PrintMembers() {
    for (const format::MemberEffect& known : format::kMemberEffects) {
        const std::string name = '"' + std::string(known.name.View()) + "\":";
        switch (known.shape) {
            case format::Shape::kText:
                Print(name + "\"1\",");
                break;
            case format::Shape::kRecords:
                Print(name + R"({"n":{"value":"v","metaDataType":"u"}},)");
                break;
            case format::Shape::kNodes:
                Print(name + R"([{"id":"2","type":"CAEPART"}],)");
                break;
        }
        Print(name);
    }
    for (const format::MemberName name : {format::member::kValue, format::member::kMetaDataType}) {
        Print('"' + std::string(name.View()) + "\":");
    }
}

void PrintValues() {
    for (const format::KindName& kind : format::kKindNames) {
        PrintString(kind.name);
    }
    for (const format::FileFormatName& format : format::kFileFormatNames) {
        PrintString(format.name);
    }
    std::set<std::string> types;
    for (int type = 0; type < 64; ++type) {
        types.insert(CAEGetFileTypeName(type));
    }
    for (const std::string& type : types) {
        PrintString(type);
    }
    for (const char* const value :
         {format::kSubTypeValue, format::kNameless, format::kGenericStudy, format::kTrue,
          format::kDescriptionEntry, format::kDescriptionMember, format::kProgramReferenceEntry,
          format::kNoProgramReference, format::kSessionObjectType}) {
        PrintString(value);
    }
}

}  // namespace

int main() {
    PrintMembers();
    PrintValues();
    for (const char* const token :
         {"{}", "[]", "[{", "}]", "},{", "null", "true", "false", "-0", "1e9", "2147483648", "\\u0000",
          "\\uD800", "\\uDC80", "\\u00E4", "\\/", "\xC3\xA4"}) {
        Print(token);
    }
    return 0;
}
