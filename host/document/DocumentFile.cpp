#include "DocumentFile.h"

#include <stdexcept>
#include <system_error>
#include <type_traits>

#include "format/MemberNames.h"
#include "host/system/InputFile.h"
#include "host/system/Phase.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"
#include "objectjson/NodeReading.h"

namespace host {
namespace {

JSONNode ParseText(const std::string& text) {
    // Some builds of libjson have texts of another type.
    if constexpr (std::is_same_v<json_string, std::string>) {
        return libjson::parse(text);
    } else {
        return libjson::parse(json_string(text.data(), text.size()));
    }
}

}  // namespace

std::string InputName(const std::string& file) {
    return file == kStandardStream ? "the standard input" : Quoted(file);
}

std::optional<JSONNode> ReadJson(const std::string& file, Console& console) {
    console.ShowProgress("Reading the document", 0, 0);
    const Phase phase(console, "reading " + InputName(file));
    std::string text;
    const std::error_code error =
        file == kStandardStream ? ReadStandardInput(text) : ReadInputFile(PathFromUtf8(file), text);
    if (error) {
        console.Say("cannot read " + InputName(file) + ": " + error.message() +
                    (IsOverLimit(error) ? "" : ". Give a JSON document that you can read"));
        return std::nullopt;
    }
    console.Detail(InputName(file) + " has " + FormatSize(text.size()));
    try {
        return ParseText(text);
    } catch (const std::invalid_argument& fault) {
        console.Say("cannot read " + InputName(file) + ": " + fault.what() + ". Nothing was changed");
        return std::nullopt;
    }
}

bool IsImportable(const JSONNode& document, const std::string& file, Console& console) {
    std::string reason;
    if (document.type() != JSON_NODE) {
        reason = "it is not an object";
    } else if (const JSONNode* const type = FindMember(document, format::member::kType); type == nullptr) {
        reason = "its root has no \"type\"";
    } else if (type->as_string().c_str()[0] == '\0') {
        reason = "the \"type\" of its root is empty";
    }
    if (reason.empty()) {
        return true;
    }
    console.Say("cannot use " + InputName(file) + ": " + reason +
                ", so nothing can be imported from it. Nothing was changed");
    return false;
}

}  // namespace host
