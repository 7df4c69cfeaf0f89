#pragma once

#include <string>

/// What KorvaneJson_get_module_info answers.
const char* ModuleInformation(int selector) noexcept;

/// The texts that the library keeps for the life of the module, made when it is loaded in the order of the
/// members and released in the reverse order. No code of the library reads them; they are there for whoever
/// looks into the module.
struct ModuleTexts {
    ModuleTexts();

    std::string buildRunner;
    std::string rightsNotice;
    /// Begins with U+00C2 U+00A9, the bytes of a copyright sign in UTF-8 taken as one character each, as in
    /// every library of the suite.
    std::wstring wideRightsNotice;
    std::string dependency;
    std::string sourceBranch;
    std::string releaseCandidate;
    std::string empty;
    std::string revision;
};

/// The texts of this module.
const ModuleTexts& LoadedModuleTexts() noexcept;
