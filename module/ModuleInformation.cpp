#include "ModuleInformation.h"

#include <korvanejson/Module.h>

#include <iterator>

#include "module/BuildData.h"

namespace {

constexpr char kKind[] = "Dynamic linked library";
constexpr char kVersion[] = KORVANEJSON_VERSION;

/// Opens the banner for programs that look for such texts in files; the query leaves it out.
constexpr char kMark[] = "@(#)" KORVANEJSON_MAKER_PREFIX ":";
constexpr std::size_t kMarkLength = std::size(kMark) - 1;
static_assert(kMarkLength == 8);

/// The suite fixes the spelling "More informations", and that no blank stands before the rights notice.
constexpr char kBanner[] = "@(#)" KORVANEJSON_MAKER_PREFIX
                           ":"
                           "KorvaneJson"
                           " version " KORVANEJSON_VERSION " (More informations on " KORVANEJSON_WEB_ADDRESS
                           "), built on " KORVANEJSON_BUILD_HOST_NAME " (" KORVANEJSON_BUILD_DATE
                           " at " KORVANEJSON_BUILD_TIME ")" KORVANEJSON_RIGHTS_NOTICE;

static_assert(std::size(KORVANEJSON_BUILD_RUNNER) - 1 == 15);
static_assert(std::size(KORVANEJSON_RIGHTS_NOTICE) - 1 == 31);
static_assert(std::size(KORVANEJSON_REVISION) - 1 == 40);

constexpr wchar_t kWideRightsNotice[] = L"\u00C2\u00A9" KORVANEJSON_RIGHTS_NOTICE_REST;
static_assert(std::size(kWideRightsNotice) - 1 == 24);

}  // namespace

const char* ModuleInformation(int selector) noexcept {
    switch (selector) {
        case KORVANEJSON_MODULE_KIND:
            return kKind;
        case KORVANEJSON_MODULE_VERSION:
            return kVersion;
        default:
            return kBanner + kMarkLength;
    }
}

ModuleTexts::ModuleTexts()
    : buildRunner(KORVANEJSON_BUILD_RUNNER),
      rightsNotice(KORVANEJSON_RIGHTS_NOTICE),
      wideRightsNotice(kWideRightsNotice),
      dependency("OrsUtl"),
      sourceBranch("develop"),
      releaseCandidate("-rc1"),
      revision(KORVANEJSON_REVISION) {}
