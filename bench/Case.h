#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Subject.h"

/// One piece of work that is measured. It is made and prepared for a subject, and then run any number of
/// times: Prepare, Run, Result (or not), Clear.
class Case {
public:
    Case() = default;
    Case(const Case&) = delete;
    Case& operator=(const Case&) = delete;
    virtual ~Case() = default;

    /// What every run needs anew.
    virtual void Prepare() {}
    /// What is measured.
    virtual void Run() = 0;
    /// What the run made, as text; cases that do the same work give the same text. May be costly.
    virtual std::string Result() = 0;
    /// Frees what the run made.
    virtual void Clear() {}
};

struct NamedCase {
    std::string_view name;
    /// What the results of all cases of one outcome are equal in.
    std::string_view outcome;
    std::unique_ptr<Case> (*make)(Subject& subject);
};

template <typename Made>
std::unique_ptr<Case> MakeCase(Subject& subject) {
    return std::make_unique<Made>(subject);
}

inline constexpr std::string_view kSameDocument = "document";
inline constexpr std::string_view kSameImport = "import";
inline constexpr std::string_view kSameAnswer = "answer";

// Each in the source file of its name.

std::vector<NamedCase> TextCases();
std::vector<NamedCase> NodeCases();
std::vector<NamedCase> ParseCases();
std::vector<NamedCase> ImportCases();
std::vector<NamedCase> AnswerCases();

std::vector<NamedCase> AllCases();
