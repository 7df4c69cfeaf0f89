#include <cxxabi.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "Functions.h"
#include "support/TemporaryDirectory.h"

namespace {

/// What a library exports and the proofs leave out: all names that begin like this.
struct LeftOut {
    std::string_view beginning;
    std::string_view why;
};

constexpr LeftOut kLeftOut[] = {
    {"JsonSerializer::JsonSerializer(", "keeps a pointer"},
    {"JsonSerializer::operator=(", "keeps a pointer"},
    {"JsonSerializer::~JsonSerializer()", "has nothing to release"},
    {"JsonSerializer::SetExportMode(", "keeps one of three values"},
    {"KorvaneJsonInitialize", "loads the library, which tests/module does"},
    {"KorvaneJsonTerminate", "unloads the library, which tests/module does"},
    {"KorvaneJson_get_module_info", "gives texts that stand in the library"},
    {"__localFnToKeepKorvaneJsonDllLoaded", "does nothing"},
    {"korvane::exchange::CutUtf8(", "gives a part of the text that it is given"},
    {"korvane::exchange::Excerpt(", "makes a text of 80 bytes at most, by Printable"},
    {"korvane::exchange::NameOf(korvane::exchange::Reason)", "gives a text that stands in the library"},
    {"korvane::exchange::DocumentError::", "is thrown by ParseDocument"},
    {"korvane::exchange::Stopped::", "is an exception without a value"},
    {"typeinfo for ", "is no function"},
    {"typeinfo name for ", "is no function"},
    {"vtable for ", "is no function"},
};

/// The declaration that the name of an export stands for, without what compilers add to it.
std::string DeclarationOf(const std::string& name) {
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> demangled(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), std::free);
    std::string declaration = status == 0 ? demangled.get() : name;
    constexpr std::string_view kTag = "[abi:cxx11]";
    for (auto tag = declaration.find(kTag); tag != std::string::npos; tag = declaration.find(kTag)) {
        declaration.erase(tag, kTag.size());
    }
    return declaration;
}

std::set<std::string> Exports() {
    std::set<std::string> exports;
    for (const char* const file : {KORVANEJSON_EXPORTS, KORVANEEXCHANGE_EXPORTS}) {
        std::istringstream names(ReadWholeFile(file));
        for (std::string name; std::getline(names, name);) {
            exports.insert(DeclarationOf(name.substr(0, name.find('\r'))));
        }
    }
    return exports;
}

std::set<std::string> Beginning(const std::set<std::string>& exports, std::string_view beginning) {
    std::set<std::string> found;
    for (const std::string& declaration : exports) {
        if (declaration.starts_with(beginning)) {
            found.insert(declaration);
        }
    }
    return found;
}

TEST(FunctionsOfTheProofs, AreAllThatTheLibrariesExport) {
    const std::set<std::string> exports = Exports();
    std::set<std::string> tried;
    for (const Function& function : Functions()) {
        if (function.exported != nullptr) {
            const std::set<std::string> found = Beginning(exports, function.exported);
            EXPECT_EQ(found.size(), 1U) << function.exported;
            tried.insert(found.begin(), found.end());
        }
    }
    std::set<std::string> known = tried;
    for (const LeftOut& leftOut : kLeftOut) {
        const std::set<std::string> found = Beginning(exports, leftOut.beginning);
        EXPECT_FALSE(found.empty()) << leftOut.beginning << " is not exported, but left out: it "
                                    << leftOut.why;
        for (const std::string& declaration : found) {
            EXPECT_FALSE(tried.contains(declaration)) << declaration << " is tried and left out";
            known.insert(declaration);
        }
    }
    for (const std::string& declaration : exports) {
        EXPECT_TRUE(known.contains(declaration))
            << declaration << " is exported, and has no row in Functions.cpp";
    }
}

}  // namespace
