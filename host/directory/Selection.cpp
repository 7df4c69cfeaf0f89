#include "Selection.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "RelativePath.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

bool IsIn(std::string_view entry, std::string_view directory) {
    return directory.empty() || entry == directory ||
           (entry.starts_with(directory) && entry[directory.size()] == '/');
}

/// Finds out which directories of a tree are kept.
class Narrowing {
public:
    explicit Narrowing(DirectoryTree& tree)
        : tree_(tree), above_(tree.directories.size(), 0), isKept_(tree.directories.size()) {
        for (std::size_t index = 0; index < tree.directories.size(); ++index) {
            for (const std::size_t inner : tree.directories[index].directories) {
                above_[inner] = index;
            }
        }
    }

    void Keep(std::size_t directory) {
        KeepBelow(directory, true);
        while (directory != 0) {
            directory = above_[directory];
            if (tree_.directories[directory].hasDecks) {
                // Its files are those of the directories without decks below it.
                KeepBelow(directory, false);
            }
        }
    }
    const std::vector<bool>& Kept() const { return isKept_; }

private:
    void KeepBelow(std::size_t top, bool isWhole) {
        std::vector<std::size_t> waiting = {top};
        while (!waiting.empty()) {
            const std::size_t next = waiting.back();
            waiting.pop_back();
            const ScannedDirectory& directory = tree_.directories[next];
            isKept_[next] = isKept_[next] || isWhole || next == top || !directory.hasDecksInTree;
            for (const std::size_t inner : directory.directories) {
                if (isWhole || !tree_.directories[inner].hasDecks) {
                    waiting.push_back(inner);
                }
            }
        }
    }

    DirectoryTree& tree_;
    std::vector<std::size_t> above_;
    std::vector<bool> isKept_;
};

}  // namespace

Exclusion::Exclusion(const std::vector<std::string>& patterns) {
    for (const std::string& pattern : patterns) {
        patterns_.AddRule(pattern);
    }
}

void Exclusion::AddFile(const std::string& directory, std::string_view text) {
    IgnoreRules rules;
    rules.AddLines(text);
    if (!rules.IsEmpty()) {
        files_.emplace(directory, std::move(rules));
    }
}

void Exclusion::KeepOnly(std::vector<std::string> whole, std::unordered_set<std::string> single) {
    isNarrowed_ = true;
    whole_ = std::move(whole);
    single_ = std::move(single);
}

bool Exclusion::LeavesOut(std::string_view entry, bool isDirectory) const {
    IgnoreRules::Verdict verdict = patterns_.About(entry, isDirectory);
    // The nearest file that says anything decides.
    std::string_view directory = entry;
    while (verdict == IgnoreRules::Verdict::None && !directory.empty() && !files_.empty()) {
        directory = DirectoryIn(directory);
        const auto file = files_.find(directory);
        if (file != files_.end()) {
            const std::size_t begin = directory.empty() ? 0 : directory.size() + 1;
            verdict = file->second.About(entry.substr(begin), isDirectory);
        }
    }
    return verdict == IgnoreRules::Verdict::LeftOut;
}

bool Exclusion::IsKept(std::string_view file) const {
    return !isNarrowed_ || single_.contains(std::string(DirectoryIn(file))) ||
           std::ranges::any_of(whole_, [&](const std::string& directory) { return IsIn(file, directory); });
}

bool Exclusion::LeavesOutFile(std::string_view file) const {
    if (!IsKept(file)) {
        return true;
    }
    for (std::size_t end = file.find('/'); end != std::string_view::npos; end = file.find('/', end + 1)) {
        if (LeavesOut(file.substr(0, end), true)) {
            return true;
        }
    }
    return LeavesOut(file, false);
}

path KeepStudies(const std::vector<path>& studies, DirectoryTree& tree, Exclusion& exclusion) {
    std::unordered_map<path::string_type, std::size_t> indexOf;
    for (std::size_t index = 0; index < tree.directories.size(); ++index) {
        indexOf.emplace(tree.directories[index].path.native(), index);
    }
    const OuString root = ToOuString(tree.directories.front().path);
    const auto relative = [&](const path& directory) {
        return RelativePath(ToOuString(directory), root).value_or("");
    };
    Narrowing narrowing(tree);
    std::vector<std::string> whole;
    for (const path& study : studies) {
        const auto found = indexOf.find(study.native());
        if (found == indexOf.end() || !tree.directories[found->second].hasDecksInTree) {
            return study;
        }
        narrowing.Keep(found->second);
        whole.push_back(relative(study));
    }
    std::unordered_set<std::string> single;
    for (std::size_t index = 0; index < tree.directories.size(); ++index) {
        ScannedDirectory& directory = tree.directories[index];
        if (narrowing.Kept()[index]) {
            single.insert(relative(directory.path));
        } else {
            directory.files.clear();
            directory.hasDescription = false;
        }
    }
    exclusion.KeepOnly(std::move(whole), std::move(single));
    return {};
}

}  // namespace host
