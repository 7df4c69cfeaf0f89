#include <gtest/gtest.h>

#include "host/HostSupport.h"
#include "host/directory/DeckModel.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

TEST(DeckModel, KnowsTheSyntaxOfAFile) {
    TemporaryDirectory folder;
    const auto syntaxOf = [&](const std::string& name, std::string_view text) {
        folder.Write(name, text);
        return ModelSyntaxOf(folder / name);
    };
    EXPECT_EQ(syntaxOf("a.inp", kAbaqusDeck), ModelSyntax::Abaqus);
    EXPECT_EQ(syntaxOf("a.msh", "*NODE\n1,0\n*ELEMENT,TYPE=B31\n1,1,2\n"), ModelSyntax::Abaqus);
    EXPECT_EQ(syntaxOf("a.bdf", kNastranDeck), ModelSyntax::Nastran);
    EXPECT_EQ(syntaxOf("a.fem", kNastranDeck), ModelSyntax::Nastran);
    EXPECT_EQ(syntaxOf("a.k", kLsDynaDeck), ModelSyntax::LsDyna);
    EXPECT_EQ(syntaxOf("b.inp", "/PREP7\nSOLVE\n"), std::nullopt);
    EXPECT_EQ(syntaxOf("a.txt", "some words\n"), std::nullopt);
    EXPECT_EQ(ModelSyntaxOf(folder / "none.inp"), std::nullopt);
    folder.MakeDirectory("folder.inp");
    EXPECT_EQ(ModelSyntaxOf(folder / "folder.inp"), std::nullopt);
}

}  // namespace
}  // namespace host
