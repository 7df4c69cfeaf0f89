#include "FieldNames.h"

#include <EmbeddedModel.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <set>
#include <unordered_set>

#include "TextMatch.h"
#include "host/system/NearestWord.h"
#include "host/system/Text.h"

namespace host {
namespace {

/// What may have been meant by a name that nothing has: a metadata entry, or one of the fixed words.
std::string NearestTo(const std::string& name, std::vector<std::string> names) {
    std::ranges::copy(FixedFields(), std::back_inserter(names));
    return DidYouMean(NearestWord(name, names));
}

}  // namespace

std::vector<std::string> MetadataNames(CAEObject& root) {
    std::vector<std::string> names;
    std::unordered_set<std::string> exact;
    std::set<std::string> folded;
    WalkObjects(root, [&](const WalkedObject& walked) {
        for (const korvane::MetadataValues& entry : korvane::GetMetadata(walked.object)) {
            std::string name = korvane::exchange::ToUtf8(entry.name);
            // Most names occur again and again, exactly alike.
            if (exact.insert(name).second && folded.insert(FoldCase(name)).second) {
                names.push_back(std::move(name));
            }
        }
    });
    return names;
}

std::string ListNames(const std::vector<std::string>& names) {
    constexpr std::size_t kMostListed = 10;
    std::string text;
    for (std::size_t index = 0; index < std::min(names.size(), kMostListed); ++index) {
        text += (index == 0 ? "" : ", ") + Quoted(names[index]);
    }
    return names.size() > kMostListed ? text + " and " + std::to_string(names.size() - kMostListed) + " more"
                                      : text;
}

void SayUnknownNames(CAEObject& root, const std::vector<Field>& fields, const std::string& input,
                     Console& console) {
    const bool isAnyMetadata =
        std::ranges::any_of(fields, [](const Field& field) { return field.kind == FieldKind::Metadata; });
    if (!isAnyMetadata) {
        return;
    }
    const std::vector<std::string> names = MetadataNames(root);
    std::set<std::string> known;
    std::ranges::transform(names, std::inserter(known, known.end()), FoldCase);
    for (const Field& field : fields) {
        // Each name is said once.
        if (field.kind != FieldKind::Metadata || !known.insert(FoldCase(field.name)).second) {
            continue;
        }
        const std::string nearest = NearestTo(field.name, names);
        console.Say("no object of " + input + " has the metadata entry " + Quoted(field.name) +
                    (!nearest.empty() ? nearest
                     : names.empty()  ? "; none has any metadata"
                                      : "; there are " + ListNames(names)));
    }
}

}  // namespace host
