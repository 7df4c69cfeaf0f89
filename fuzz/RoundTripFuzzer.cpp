// Writes what was read, and any bytes as name and value, and reads it again: in either text units nothing may
// get lost, whatever is changed on the way.

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "Expect.h"
#include "Texts.h"

namespace {

void ExpectSurvives(const JSONNode& node) {
    const json_string compact = node.write();
    Expect(libjson::parse(compact) == node, "compact text reads back");
    Expect(libjson::parse(compact).write() == compact, "compact text is written alike again");
    Expect(libjson::parse(node.write_formatted()) == node, "formatted text reads back");
    for (const char character : compact) {
        Expect(character >= 0x20 && character < 0x7F, "documents are printable ASCII");
    }
}

/// Changes a copy of the node in a few ways, and sees that the node is still what it was.
void ExpectUntouchedByChanges(const JSONNode& node) {
    const json_string before = node.write();
    JSONNode copy = node;
    for (JSONNode& child : copy) {
        child.set_name(Text("renamed"));
        child.push_back(node);
        for (JSONNode& grandchild : child) {
            grandchild = JSONNode(Text("new"), true);
        }
    }
    copy.push_back(copy);
    // Elements of arrays have names by now, which are not written: only the texts are compared.
    const json_string changed = copy.as_node().as_array().write();
    Expect(changed.empty() || libjson::parse(changed).write() == changed, "a changed document reads back");
    while (!copy.empty()) {
        copy.pop_back(copy.size() / 2);
    }
    Expect(node.write() == before, "a change of one holder is seen by no other");
    Expect(node.duplicate() == node, "a duplicate is the same");
}

void Run(std::string_view bytes) {
    JSONNode object;
    object.push_back(JSONNode(Text(bytes), Text(bytes)));
    ExpectSurvives(object);
    try {
        JSONNode root(JSON_ARRAY);
        root.push_back(Parse(bytes));
        ExpectSurvives(root);
        ExpectUntouchedByChanges(std::as_const(root)[0]);
    } catch (const std::invalid_argument& refusal) {
        Expect(std::string_view(refusal.what()).substr(0, 5) == "line ", "refusals say where");
        Expect(!libjson::is_valid(Text(bytes)), "is_valid agrees");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const libjson::text_units units : {libjson::text_units::bytes, libjson::text_units::utf8}) {
        const UnitsFor unitsHere(units);
        Run(bytes);
    }
    return 0;
}
