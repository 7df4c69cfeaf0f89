#include <windows.h>

#include <string>

#include "AnsiCodePage.h"
#include "OuString.h"
#include "SystemCodePage.h"

namespace orsutl::detail {

const AnsiCodePage& CurrentAnsiCodePage() {
    static const SystemCodePage system(GetACP());
    static const AnsiCodePage& current = GetACP() == CP_UTF8 ? Utf8AnsiCodePage() : system;
    return current;
}

}  // namespace orsutl::detail

bool OuSetAnsiCodePage(const char* name) {
    if (name == nullptr) {
        return false;
    }
    std::string wanted;
    for (const char* place = name; *place != '\0'; ++place) {
        if (*place != '-' && *place != '_') {
            wanted += *place >= 'a' && *place <= 'z' ? static_cast<char>(*place - 'a' + 'A') : *place;
        }
    }
    const UINT own = GetACP();
    const std::string number = std::to_string(own);
    return wanted == "CP" + number || wanted == "WINDOWS" + number || (own == CP_UTF8 && wanted == "UTF8");
}
