#include "InputKinds.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

/// Paths are compared as the file systems of this platform compare them.
std::string KeyOfPath(const path& file) {
    OuString key = ToOuString(file.lexically_normal());
#if defined(_WIN32)
    key.MakeUpper();
#endif
    return key.GetAnsiBuffer();
}

std::string KeyOfName(OuString name) {
    name.MakeUpper();
    return name.GetAnsiBuffer();
}

/// The name of the starter that belongs to an engine file of Radioss; empty if the name has no number.
std::string StarterName(const path& engine) {
    const OuString text = ToOuString(engine);
    std::string name = text.GetAnsiBuffer();
    const std::size_t underscore = name.rfind('_');
    if (underscore == std::string::npos) {
        return {};
    }
    return name.replace(underscore, name.find('.', underscore) - underscore, "_0000");
}

class Settlement {
public:
    Settlement(const std::vector<InputCandidate>& candidates, DirectoryTree& tree)
        : candidates_(candidates), tree_(tree) {}

    void Run();

private:
    ScannedFile& FileOf(const InputCandidate& candidate) {
        return tree_.directories[candidate.directory].files[candidate.file];
    }
    void FindIncluded();
    _tagFileType TypeOf(const InputCandidate& candidate, bool isIncluded);
    bool HasStarter(const InputCandidate& candidate);

    const std::vector<InputCandidate>& candidates_;
    DirectoryTree& tree_;
    std::unordered_set<const InputCandidate*> included_;
    /// The names in directories with engine files of Radioss, in upper case.
    std::unordered_map<std::size_t, std::unordered_set<std::string>> namesOfDirectory_;
};

void Settlement::Run() {
    FindIncluded();
    for (const InputCandidate& candidate : candidates_) {
        ScannedFile& file = FileOf(candidate);
        file.type = TypeOf(candidate, included_.contains(&candidate));
        if (candidate.input.role != InputRole::Unclear) {
            file.solver = candidate.input.solver;
        }
    }
}

void Settlement::FindIncluded() {
    const auto hasIncludes = [](const InputCandidate& candidate) {
        return !candidate.input.includes.empty();
    };
    if (std::ranges::none_of(candidates_, hasIncludes)) {
        return;
    }
    std::unordered_map<std::string, const InputCandidate*> byPath;
    for (const InputCandidate& candidate : candidates_) {
        byPath.emplace(KeyOfPath(tree_.directories[candidate.directory].path / FileOf(candidate).name),
                       &candidate);
    }
    for (const InputCandidate& candidate : candidates_) {
        for (const std::string& reference : candidate.input.includes) {
            const path target =
                tree_.directories[candidate.directory].path / ToPath(OuString(reference.c_str(), 0));
            const auto found = byPath.find(KeyOfPath(target));
            if (found != byPath.end() && found->second != &candidate) {
                included_.insert(found->second);
            }
        }
    }
}

_tagFileType Settlement::TypeOf(const InputCandidate& candidate, bool isIncluded) {
    const _tagFileType typeSoFar = FileOf(candidate).type;
    const InputRole role = candidate.input.role;
    if (role == InputRole::Unclear) {
        const bool isDeckByName = candidate.kind.type == CAE_FILE_DECK;
        return isDeckByName && isIncluded ? CAE_FILE_INCLUDE : typeSoFar;
    }
    if (candidate.kind.look == Look::Part) {
        return CAE_FILE_INCLUDE;
    }
    if (role == InputRole::Deck) {
        return isIncluded ? CAE_FILE_INCLUDE : CAE_FILE_DECK;
    }
    if (role == InputRole::Continuation) {
        return HasStarter(candidate) ? CAE_FILE_INCLUDE : CAE_FILE_DECK;
    }
    if (candidate.kind.type == CAE_FILE_MESH || candidate.kind.type == CAE_FILE_SCRIPT) {
        return typeSoFar;
    }
    return role == InputRole::Mesh ? CAE_FILE_MESH : CAE_FILE_INCLUDE;
}

/// Whether the starter that belongs to an engine file of Radioss is in the same directory.
bool Settlement::HasStarter(const InputCandidate& candidate) {
    const std::string starter = StarterName(FileOf(candidate).name);
    if (starter.empty()) {
        return false;
    }
    const auto [known, isNew] = namesOfDirectory_.try_emplace(candidate.directory);
    if (isNew) {
        for (const ScannedFile& file : tree_.directories[candidate.directory].files) {
            known->second.insert(KeyOfName(ToOuString(file.name)));
        }
    }
    return known->second.contains(KeyOfName(OuString(starter.c_str(), 0)));
}

}  // namespace

void SettleInput(const std::vector<InputCandidate>& candidates, DirectoryTree& tree) {
    Settlement(candidates, tree).Run();
}

void SettleUndecidedSolvers(DirectoryTree& tree) {
    for (ScannedDirectory& directory : tree.directories) {
        const auto has = [&](Solver solver) {
            return std::ranges::any_of(directory.files,
                                       [&](const ScannedFile& file) { return file.solver == solver; });
        };
        if (!has(Solver::AbaqusOrCalculix) || has(Solver::Abaqus) == has(Solver::Calculix)) {
            continue;
        }
        const Solver settled = has(Solver::Abaqus) ? Solver::Abaqus : Solver::Calculix;
        for (ScannedFile& file : directory.files) {
            file.solver = file.solver == Solver::AbaqusOrCalculix ? settled : file.solver;
        }
    }
}

}  // namespace host
