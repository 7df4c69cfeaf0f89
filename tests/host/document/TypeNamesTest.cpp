#include <CAEObject.h>
#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>

#include <set>
#include <string>
#include <vector>

#include "host/document/DocumentNode.h"
#include "host/document/ObjectLists.h"
#include "support/ModelBuilders.h"

// The library keeps its names of kinds to itself, and the host has a table of its own: they must read alike.

namespace host {
namespace {

/// The kind of object that the library makes of a child with this "type".
_tagCAEObjectType KindThatIsMadeOf(const std::string& type) {
    const TestProject project;
    JSONNode child(JSON_NODE);
    child.push_back(JSONNode(member::kType, type.c_str()));
    JSONNode children(JSON_ARRAY);
    children.set_name(member::kChildren);
    children.push_back(child);
    JSONNode document(JSON_NODE);
    document.push_back(JSONNode(member::kType, "SIMULATION"));
    document.push_back(children);
    caerest::json::DeserializeJsonToObject(document, &*project);
    const std::vector<CAEObject*> made = ChildrenOf(*project);
    return made.empty() ? CAE_UNKNOWN_OBJECT : made.front()->getType();
}

/// Every name that a document can have from the library, and what a project can be besides.
std::set<std::string> Names() {
    std::set<std::string> names = {"CAEPROJECT", "CAEPROGRAM"};
    for (int type = -2; type < 60; ++type) {
        OuString name(CAEObject::getTypeName(static_cast<_tagCAEObjectType>(type)), 0);
        name.MakeUpper();
        names.insert(std::string("CAE") + name.GetAnsiBuffer());
    }
    return names;
}

std::set<std::string> NearMisses(const std::string& name) {
    return {name.substr(3),
            name.substr(0, name.size() - 1),
            name + "S",
            name + " ",
            " " + name,
            "cae" + name.substr(3),
            "CAE" + name.substr(3, 1) + static_cast<char>(name[4] - 'A' + 'a') + name.substr(5)};
}

TEST(TypeNames, MakeTheKindThatTheHostExpects) {
    int read = 0;
    for (const std::string& name : Names()) {
        EXPECT_EQ(KindOfTypeName(name), KindThatIsMadeOf(name)) << name;
        read += KindOfTypeName(name) == CAE_UNKNOWN_OBJECT ? 0 : 1;
    }
    EXPECT_EQ(read, 14);
}

TEST(TypeNames, MakeNothingWhereTheyAreNotExact) {
    std::set<std::string> others = {"", "CAE", "SIMULATION"};
    for (const std::string& name : Names()) {
        others.merge(NearMisses(name));
    }
    for (const std::string& name : others) {
        if (!Names().contains(name)) {
            EXPECT_EQ(KindOfTypeName(name), CAE_UNKNOWN_OBJECT) << '"' << name << '"';
            EXPECT_EQ(KindThatIsMadeOf(name), CAE_UNKNOWN_OBJECT) << '"' << name << '"';
        }
    }
}

}  // namespace
}  // namespace host
