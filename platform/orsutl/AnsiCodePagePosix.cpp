#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "AnsiCodePage.h"
#include "OuString.h"
#include "TableCodePage.h"

namespace orsutl::detail {

namespace {

/// Null for UTF-8.
constinit std::atomic<const AnsiCodePage*> chosen{nullptr};

/// The code page of an iconv name, made at the first call and kept; null where there is none.
const AnsiCodePage* FindTableCodePage(const std::string& name) {
    using CodePages = std::map<std::string, std::unique_ptr<const TableCodePage>>;
    static std::mutex mutex;
    // Never destroyed: texts are still converted while the process ends.
    static CodePages& codePages = *std::make_unique<CodePages>().release();

    const std::lock_guard lock(mutex);
    const auto known = codePages.find(name);
    if (known != codePages.end()) {
        return known->second.get();
    }
    std::unique_ptr<const TableCodePage> made = TableCodePage::Make(name);
    return made ? codePages.emplace(name, std::move(made)).first->second.get() : nullptr;
}

}  // namespace

const AnsiCodePage& CurrentAnsiCodePage() {
    const AnsiCodePage* codePage = chosen.load(std::memory_order_acquire);
    return codePage == nullptr ? Utf8AnsiCodePage() : *codePage;
}

}  // namespace orsutl::detail

bool OuSetAnsiCodePage(const char* name) {
    std::string upper(name == nullptr ? "" : name);
    // Not std::toupper, which asks the locale.
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    });
    const orsutl::detail::AnsiCodePage* codePage = nullptr;
    if (upper != "UTF-8" && upper != "UTF8" && upper != "CP65001") {
        codePage = orsutl::detail::FindTableCodePage(upper);
        if (codePage == nullptr) {
            return false;
        }
    }
    orsutl::detail::chosen.store(codePage, std::memory_order_release);
    return true;
}
