#include "RandomTexts.h"

#include "format/Kinds.h"

namespace {

using namespace std::string_literals;

const std::string kPieces[] = {
    "Door",
    "a",
    " ",
    "front crash",
    "\"",
    "\\",
    "/",
    "\x01",
    "\t\n\r\b\f",
    "\x1F\x7F",
    "\xC3\xBC",
    "\xC3\x9F",
    "\xC5\xBF",
    "\xC4\xB1",
    "\xE4\xB8\xAD",
    "\xF0\x9F\x98\x80",
    "\xF0\x90\x90\xA8",
    "\xFC",
    "\x80",
    "\xE4\xB8",
    "\xC0\x80",
    "\xED\xA0\x80",
    "\xED\xB0\x80",
    "\xED\xB2\x80",
    "\xF4\x90\x80\x80",
    "\\u0041",
    "%s%n",
    "..",
};

constexpr const char* kMeaningful[] = {
    "",       "No",      "no",   "nO",  "Yes",     "true",    "True",  "false",      "ASCII",   "ascii",
    "Binary", "Unknown", "Mesh", "CAD", "Graphic", "Deck",    "Other", "No\xC4\xB1", "CAEPART", "model",
    "0",      "1",       "-7",   "2.5", "1.50e2",  "Generic", "SDM",   "PROJECT",    "K1",      "/x/y.inp",
};

}  // namespace

std::string RandomText(Random& random) {
    if (random.OneIn(3)) {
        return random.Pick(kMeaningful);
    }
    std::string text;
    const int pieces = random.OneIn(40) ? random.Between(100, 400) : random.Between(0, 5);
    for (int i = 0; i < pieces; ++i) {
        text += random.Pick(kPieces);
    }
    return text;
}

std::string RandomBytes(Random& random) {
    const std::string text = RandomText(random);
    return random.OneIn(15) ? text + '\0' + RandomText(random) : text;
}

OuString RandomWide(Random& random) {
    const OuString text(RandomText(random).c_str(), 0);
    if (!random.OneIn(12)) {
        return text;
    }
    std::wstring wide(text.GetBuffer(), text.GetLength());
    for (int i = random.Between(1, 3); i > 0; --i) {
        constexpr wchar_t kRare[] = {0x0000, 0xD800, 0xDBFF, 0xDC00, 0xDC80, 0xDCFF, 0xFFFF, 0x00DF, 0x0130};
        const wchar_t rare = random.Pick(kRare);
        wide.insert(wide.begin() + random.Below(wide.size() + 1), rare);
    }
    return {wide.data(), wide.size()};
}

std::string RandomKey(Random& random) {
    constexpr const char* kKeys[] = {"K1", "K2", "K3", "k1", "ITEM-1", "ITEM-2", ""};
    return random.OneIn(5) ? RandomText(random) : random.Pick(kKeys);
}

std::string RandomEntryName(Random& random) {
    constexpr const char* kNames[] = {"Description",
                                      "description",
                                      "DESCRIPTION",
                                      "Reference To Program",
                                      "Reference To Program",
                                      "Reference To Program",
                                      "reference to program",
                                      "Reference To Program ",
                                      "Mass",
                                      "mass",
                                      "",
                                      "value",
                                      "metaDataType"};
    return random.OneIn(4) ? RandomText(random) : random.Pick(kNames);
}

OuString RandomWideEntryName(Random& random) {
    const OuString name(RandomEntryName(random).c_str(), 0);
    if (!random.OneIn(12)) {
        return name;
    }
    std::wstring wide(name.GetBuffer(), name.GetLength());
    wide += L'\0';
    wide += random.OneIn(2) ? L"x" : L"";
    return {wide.data(), wide.size()};
}

std::string RandomTypeName(Random& random) {
    // View items, and what they show.
    constexpr const char* kOften[] = {"CAEVIEWITEM", "CAEVIEWITEM", "CAESUBASSEMBLY", "CAEPART"};
    constexpr const char* kOther[] = {
        "caepart",    "CAEPART ",         "CAE",      "CAEUNKNOWN",         "PART", "",
        "CAESESSION", "CAESESSIONOBJECT", "CAEPARTS", "CAEITERATIONFOLDERS"};
    return random.OneIn(10)   ? random.Pick(kOther)
           : random.OneIn(20) ? RandomText(random)
           : random.OneIn(5)  ? random.Pick(kOften)
                              : std::string(random.Pick(format::kKindNames).name);
}

OuString RandomMode(Random& random) {
    const OuString modes[] = {L"", L"PROJECT", L"STUDY",    L"PROJECT", L"STUDY",
                              L"", L"study",   L"PROJECT ", L"ALL"};
    return random.OneIn(20) ? OuString(L"STUDY\0X", 7) : random.Pick(modes);
}
