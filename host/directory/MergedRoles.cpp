#include "MergedRoles.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "MergedOrder.h"

namespace host {
namespace {

auto Values(const korvane::FileRoles& roles) {
    return std::tie(roles.files, roles.cadFile, roles.graphicFile, roles.activeMesh, roles.feRepresentation,
                    roles.meshes, roles.customFiles);
}

}  // namespace

korvane::FileRoles MergeRoles(const korvane::FileRoles& before, const korvane::FileRoles& reading,
                              const std::function<bool(int)>& isThere) {
    const std::unordered_set<int> isWanted(reading.files.begin(), reading.files.end());
    std::vector<int> kept;
    std::ranges::copy_if(before.files, std::back_inserter(kept),
                         [&](int id) { return isWanted.contains(id) || !isThere(id); });
    korvane::FileRoles roles;
    roles.files = MergedOrder(kept, reading.files);
    const auto choose = [&](int now, int old) { return now != 0 ? now : isThere(old) ? 0 : old; };
    roles.cadFile = choose(reading.cadFile, before.cadFile);
    roles.graphicFile = choose(reading.graphicFile, before.graphicFile);
    roles.activeMesh = choose(reading.activeMesh, before.activeMesh);
    roles.feRepresentation = choose(reading.feRepresentation, before.feRepresentation);
    // In the order of all files, as the object model has them.
    const auto merge = [&](const std::vector<int>& now, const std::vector<int>& old) {
        std::unordered_set<int> isIn(now.begin(), now.end());
        std::ranges::copy_if(old, std::inserter(isIn, isIn.end()), [&](int id) { return !isThere(id); });
        std::vector<int> merged;
        std::ranges::copy_if(roles.files, std::back_inserter(merged),
                             [&](int id) { return isIn.contains(id); });
        return merged;
    };
    roles.meshes = merge(reading.meshes, before.meshes);
    roles.customFiles = merge(reading.customFiles, before.customFiles);
    return roles;
}

korvane::FileRoles TranslateRoles(const korvane::FileRoles& roles, const std::function<int(int)>& translate) {
    korvane::FileRoles translated = roles;
    for (std::vector<int>* const files : {&translated.files, &translated.meshes, &translated.customFiles}) {
        std::ranges::transform(*files, files->begin(), translate);
    }
    for (int* const file : {&translated.cadFile, &translated.graphicFile, &translated.activeMesh,
                            &translated.feRepresentation}) {
        *file = *file != 0 ? translate(*file) : 0;
    }
    return translated;
}

bool AreSame(const korvane::FileRoles& left, const korvane::FileRoles& right) {
    return Values(left) == Values(right);
}

}  // namespace host
