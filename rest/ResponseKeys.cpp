#include "ResponseKeys.h"

#include <algorithm>

#include "AnswerWalk.h"
#include "format/MemberNames.h"

namespace {

std::uint64_t BeginningOf(std::string_view text) {
    std::uint64_t beginning = 0;
    for (std::size_t index = 0; index < sizeof(beginning); ++index) {
        const unsigned char byte = index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
        beginning = beginning << 8U | byte;
    }
    return beginning;
}

}  // namespace

ResponseKey::ResponseKey(const NodeText& id, const NodeText& key, std::size_t position)
    : beginning_(BeginningOf(UpToNul(id))), id_(UpToNul(id)), key_(UpToNul(key)), position_(position) {}

std::vector<ResponseKey> ReadResponseKeys(const JSONNode& answer) {
    std::vector<ResponseKey> keys;
    const auto take = [&keys](const NodeText& id, const NodeText& key) {
        keys.emplace_back(id, key, keys.size());
    };
    if (answer.type() == JSON_ARRAY) {
        for (const JSONNode& element : answer) {
            WalkAnswer(element, take);
        }
    } else {
        WalkAnswer(answer, take);
    }
    // Not a stable sort, which hides that there was no memory.
    std::sort(keys.begin(), keys.end());
    const auto haveSameId = [](const ResponseKey& left, const ResponseKey& right) {
        return left.Id() == right.Id();
    };
    keys.erase(std::unique(keys.begin(), keys.end(), haveSameId), keys.end());
    return keys;
}

void SetKey(CAEObject& target, const ResponseKey& key) {
    // Its own key for every kind: the server answers with the view item's, not with the item's it shows.
    target.setDBKey(TextFromAnsi(key.Key()));
}

void TakeDisplayName(const JSONNode& answer, CAEObject& object) {
    auto* const project =
        KindOf(object) == format::Kind::kProject ? dynamic_cast<CAEProject*>(&object) : nullptr;
    const JSONNode* const name = project == nullptr ? nullptr : FindMember(answer, format::member::kName);
    if (name != nullptr) {
        project->SetDisplayName(WideValue(*name));
    }
}
