#include <EmbeddedModel.h>
#include <gtest/gtest.h>
#include <korvaneexchange/Text.h>

#include "host/query/Condition.h"

namespace host {
namespace {

class ConditionTest : public testing::Test {
protected:
    ConditionTest() {
        study = korvane::CreateObject(*project, CAE_MODEL, L"Static");
        meshed = korvane::CreateObject(*study, CAE_PART, L"bracket left");
        designed = korvane::CreateObject(*study, CAE_PART, L"bolt");
        auto& meshedPart = dynamic_cast<CAEPart&>(*meshed);
        const int mesh =
            korvane::CreateFile(*project, L"/nowhere/Static/left.msh", CAE_FILE_MESH, CAE_FORMAT_ASCII)
                ->getID();
        meshedPart.attachNewMeshOrMeshingRequest(mesh);
        meshedPart.setActiveMesh(mesh);
        dynamic_cast<CAEPart&>(*designed).setCADFile(
            korvane::CreateFile(*project, L"/nowhere/Static/bolt.step", CAE_FILE_CAD, CAE_FORMAT_ASCII)
                ->getID());
        SetEntry(*meshed, L"Mass", L"2.5", L"kg");
        SetEntry(*designed, L"Mass", L"120", L"g");
        SetEntry(*study, L"Solver", L"CalculiX", L"");
        SetEntry(*study, L"Run on", L"2026-03-01", L"");
        designed->setDBKey(L"MOD-12");
    }

    static void SetEntry(CAEObject& object, const OuString& name, const OuString& value,
                         const OuString& unit) {
        object.setMetadataValue(name, value);
        korvane::SetMetadataUnit(object, name, unit);
    }

    /// The names of the objects that meet all conditions, in the order of the tree.
    std::string Found(const std::vector<std::string>& texts) {
        const auto parsed = ParseConditions(texts);
        if (const auto* const complaint = std::get_if<std::string>(&parsed)) {
            return "! " + *complaint;
        }
        std::string found;
        Units units;
        WalkObjects(*project, [&](const WalkedObject& walked) {
            for (const Condition& condition : std::get<std::vector<Condition>>(parsed)) {
                if (!condition.IsMet(walked, units, notes)) {
                    return;
                }
            }
            OuString name;
            walked.object.getName(name);
            found += (found.empty() ? "" : ", ") + korvane::exchange::ToUtf8(name);
        });
        return found;
    }

    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"Demo", L"/nowhere");
    CAEObject* study = nullptr;
    CAEObject* meshed = nullptr;
    CAEObject* designed = nullptr;
    Notes notes;
};

TEST_F(ConditionTest, KindsHaveTheNamesOfTheTreeAndOfTheFormat) {
    EXPECT_EQ(Found({"kind=Part"}), "bracket left, bolt");
    EXPECT_EQ(Found({"KIND=caepart"}), "bracket left, bolt");
    EXPECT_EQ(Found({"kind=study"}), "Static");
    EXPECT_EQ(Found({"kind=Model"}), "Static");
    EXPECT_EQ(Found({"kind!=Part", "kind!=File"}), "Demo, Static");
    EXPECT_EQ(Found({"kind~*art"}), "bracket left, bolt");
}

TEST_F(ConditionTest, NamesAndKeysAreTexts) {
    EXPECT_EQ(Found({"name=BOLT"}), "bolt");
    EXPECT_EQ(Found({"name~bracket*"}), "bracket left");
    EXPECT_EQ(Found({"name!~b*", "kind!=File"}), "Demo, Static");
    EXPECT_EQ(Found({"key=MOD-12"}), "bolt");
    EXPECT_EQ(Found({"key~MOD-*"}), "bolt");
    EXPECT_EQ(Found({"name = bolt"}), "bolt") << "blanks around the comparison";
}

TEST_F(ConditionTest, PathsAreNamesBelowTheRoot) {
    EXPECT_EQ(Found({"path=Static/*"}), "bracket left, bolt");
    EXPECT_EQ(Found({"path=static/BOLT"}), "bolt");
    EXPECT_EQ(Found({"path=**/bolt*"}), "bolt, bolt.step");
    EXPECT_EQ(Found({"path=."}), "Demo");
}

TEST_F(ConditionTest, FilesAndWhatTheyAreToTheObject) {
    EXPECT_EQ(Found({"kind=Part", "has=mesh", "has!=cad"}), "bracket left");
    EXPECT_EQ(Found({"kind=Part", "has!=mesh"}), "bolt");
    EXPECT_EQ(Found({"has=active-mesh", "kind!=Study"}), "bracket left");
    EXPECT_EQ(Found({"has=key"}), "bolt");
    EXPECT_EQ(Found({"file~*.step", "kind!=Study"}), "bolt");
    EXPECT_EQ(Found({"kind=Part", "file!~*.step"}), "bracket left");
    EXPECT_EQ(Found({"kind=file", "type=mesh"}), "left.msh");
}

TEST_F(ConditionTest, AStudyHasTheFilesOfItsIterationsAndPartsButNotThoseOfAnotherStudy) {
    const auto attach = [&](CAEObject& object, const OuString& path, _tagFileType type) {
        object.attachCustomFile(korvane::CreateFile(*project, path, type, CAE_FORMAT_ASCII)->getID(),
                                nullptr);
    };
    CAEObject* const iteration = korvane::CreateObject(*study, CAE_ITERATION, L"run");
    CAEObject* const item = korvane::CreateObject(*iteration, CAE_SUBASSEMBLY, L"assembly");
    CAEObject* const inner = korvane::CreateObject(*iteration, CAE_MODEL, L"Inner");
    attach(*iteration, L"/nowhere/Static/run.inp", CAE_FILE_DECK);
    attach(*item, L"/nowhere/Static/run.png", CAE_FILE_PICTURE);
    attach(*inner, L"/nowhere/Static/inner.frd", CAE_FILE_RESULT);
    EXPECT_EQ(Found({"kind=Study", "file~*.inp"}), "Static");
    EXPECT_EQ(Found({"kind=Study", "file~*.png"}), "Static");
    EXPECT_EQ(Found({"kind=Study", "file~*.msh", "has=mesh", "has=active-mesh", "has=cad"}), "Static");
    EXPECT_EQ(Found({"kind=Study", "has=result"}), "Inner");
    EXPECT_EQ(Found({"kind=Study", "has!=deck"}), "Inner");
    EXPECT_EQ(Found({"kind=Study", "file!~*.frd"}), "Static");
    EXPECT_EQ(Found({"kind=Iteration", "file~*"}), "run");
    EXPECT_EQ(Found({"kind=Iteration", "has=picture"}), "") << "other objects have their own files only";
    EXPECT_EQ(Found({"kind=Study", "has=key"}), "") << "a key is an object's own";
    EXPECT_EQ(Found({"kind=Project", "has=file"}), "");
}

TEST_F(ConditionTest, NumbersAreComparedAsNumbers) {
    EXPECT_EQ(Found({"Mass>100"}), "bolt") << "a condition without a unit takes any unit";
    EXPECT_EQ(Found({"mass<=2.5", "kind=part"}), "bracket left");
    EXPECT_EQ(Found({"Mass=2.50 kg"}), "bracket left");
    EXPECT_EQ(Found({"Mass=120.0 g"}), "bolt");
    EXPECT_EQ(Found({"id<=2"}), "Demo, Static");
}

TEST_F(ConditionTest, UnitsAreConvertedWhereThatIsPossible) {
#if defined(_WIN32)
    EXPECT_EQ(Found({"Mass>1 kg"}), "bracket left");
    EXPECT_EQ(notes.CountOf("values of 'Mass' whose unit cannot be converted to 'kg'"), 1U);
#else
    EXPECT_EQ(Found({"Mass>1 kg"}), "bracket left");
    EXPECT_EQ(Found({"Mass<1 kg"}), "bolt");
    EXPECT_EQ(Found({"Mass=0.12 kg"}), "bolt");
    EXPECT_EQ(Found({"Mass<0.12 kg"}), "") << "equal but for the conversion";
    EXPECT_EQ(notes.CountOf("values of 'Mass' whose unit cannot be converted to 'kg'"), 0U);
    EXPECT_EQ(Found({"Mass>1 mm"}), "");
    EXPECT_EQ(notes.CountOf("values of 'Mass' whose unit cannot be converted to 'mm'"), 2U);
#endif
}

TEST_F(ConditionTest, ANumberThatHasNoEndInTheOtherUnitMeetsNoCondition) {
    SetEntry(*meshed, L"Size", L"1e308", L"TB");
    EXPECT_EQ(Found({"Size=5 B"}), "");
    EXPECT_EQ(Found({"Size<5 B"}), "");
    EXPECT_EQ(Found({"Size>5 B"}), "");
    EXPECT_EQ(notes.CountOf("values of 'Size' whose unit cannot be converted to 'B'"), 3U);
}

TEST_F(ConditionTest, AnEntryOfADocumentHasItsUnitAsItsType) {
    study->setMetadataValue(L"Results", L"3000");
    study->setMetadataType(L"Results", L"B");
    EXPECT_EQ(Found({"Results>2.9 kB"}), "Static");
    EXPECT_EQ(Found({"Results>3.1 kB"}), "");
}

TEST_F(ConditionTest, AListMeetsAConditionIfAPartDoes) {
    SetEntry(*study, L"Solver", L"Abaqus/CalculiX, Nastran", L"");
    SetEntry(*study, L"Materials", L"Steel, AlMg3", L"");
    for (const char* const solver :
         {"Abaqus", "calculix", "Nastran", "Abaqus/CalculiX", "Abaqus/CalculiX, Nastran", "*stran"}) {
        EXPECT_EQ(Found({std::string("Solver~") + solver}), "Static") << solver;
        EXPECT_EQ(Found({std::string("Solver!~") + solver, "kind=Model"}), "") << solver;
    }
    EXPECT_EQ(Found({"Solver=Nastran"}), "Static");
    EXPECT_EQ(Found({"Solver!=Nastran", "kind=Model"}), "");
    EXPECT_EQ(Found({"Solver=LS-DYNA"}), "");
    EXPECT_EQ(Found({"Materials=almg3"}), "Static");
    EXPECT_EQ(Found({"Materials=Mg3"}), "");
    SetEntry(*study, L"Materials", L"a/b", L"");
    EXPECT_EQ(Found({"Materials=a"}), "") << "a slash separates nothing but solvers";
}

TEST_F(ConditionTest, ANumberIsNeitherLessNorGreaterThanAText) {
    SetEntry(*study, L"Mass", L"unknown", L"");
    EXPECT_EQ(Found({"Mass>100"}), "bolt");
    EXPECT_EQ(notes.CountOf("values of 'Mass' that are not numbers, as that of the condition is"), 1U);
    EXPECT_EQ(Found({"Mass>heavy"}), "Static");
    EXPECT_EQ(notes.CountOf("values of 'Mass' that are numbers, as that of the condition is not"), 2U);
    EXPECT_EQ(Found({"Mass=unknown"}), "Static");
    SetEntry(*study, L"Mass", L"5 kg", L"g");
    EXPECT_EQ(Found({"Mass=5 kg"}), "Static") << "a value with two units is a text";
    EXPECT_EQ(Found({"Mass<=5 kg", "kind=Model"}), "") << "and not to be compared with a number";
    EXPECT_EQ(Found({"name>bolt", "kind=Part"}), "bracket left") << "names are texts";
}

TEST_F(ConditionTest, MetadataNamesMayHaveBlanksAndBeFixedWords) {
    EXPECT_EQ(Found({"Run on>2026-02-28"}), "Static");
    EXPECT_EQ(Found({"Run on<2026-02-28"}), "");
    SetEntry(*designed, L"Name", L"M6", L"");
    EXPECT_EQ(Found({"metadata:name=m6"}), "bolt");
    EXPECT_EQ(Found({"name=m6"}), "");
    EXPECT_EQ(Found({"Solver~*"}), "Static");
    EXPECT_EQ(Found({"kind=Part", "Solver!~*"}), "bracket left, bolt");
    EXPECT_EQ(Found({"solver=calculix"}), "Static");
}

TEST_F(ConditionTest, ABadConditionIsNamed) {
    EXPECT_EQ(Found({"kind=Part", "Mass"}),
              "! 'Mass' is not a condition; a condition is a name, one of = != ~ !~ < <= > >=, and a value: "
              "kind=Part, name~bracket*, 'Mass>2 kg' (in quotes, because the shell takes > for itself)");
    EXPECT_TRUE(Found({"=Part"}).starts_with("! '=Part' is not a condition; "));
    EXPECT_TRUE(Found({""}).starts_with("! '' is not a condition; "));
    EXPECT_TRUE(Found({"kind=Prat"})
                    .starts_with("! the condition 'kind=Prat' names no kind of object; did you mean 'Part'? "
                                 "There are Part, "));
    EXPECT_TRUE(Found({"has=msh"})
                    .starts_with("! the condition 'has=msh' names no file, type of file or key; did you mean "
                                 "'mesh'? There are cad, "));
    EXPECT_EQ(Found({"Mass>10,5 kg"}),
              "! the condition 'Mass>10,5 kg' has a comma in its number; the decimal sign is a point");
    EXPECT_EQ(Found({"Mass> "}), "! the condition 'Mass> ' has no value to compare with");
    for (const char* const signs : {"==", "=>", "=<", "<>", ">>", "<<", ">==", "!=="}) {
        EXPECT_EQ(
            Found({std::string("Mass") + signs + "2 kg"})
                .find("! the condition 'Mass" + std::string(signs) + "2 kg' has the sign '" + signs + "'"),
            0U)
            << Found({std::string("Mass") + signs + "2 kg"});
    }
    EXPECT_EQ(Found({"name= =x"}), "") << "a value that begins with a sign";
    EXPECT_EQ(Found({"has~mesh"}),
              "! the condition 'has~mesh' can only use = or !=, like has=mesh or has!=cad");
}

}  // namespace
}  // namespace host
