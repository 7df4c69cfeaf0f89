#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>

#include "host/directory/FileKinds.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct Expectation {
    const char* name;
    _tagFileType type;
    Solver solver;
};

/// For the list of tests.
void PrintTo(const Expectation& expectation, std::ostream* stream) {
    *stream << expectation.name;
}

class KindOfFileNameTest : public testing::TestWithParam<Expectation> {};

TEST_P(KindOfFileNameTest, KnowsTheFile) {
    const FileKind kind = KindOfFileName(PathFromUtf8(GetParam().name));
    EXPECT_EQ(kind.type, GetParam().type) << GetParam().name;
    EXPECT_EQ(kind.solver, GetParam().solver) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(CommonFiles, KindOfFileNameTest,
                         testing::Values(Expectation{"job.inp", CAE_FILE_DECK, Solver::AbaqusOrCalculix},
                                         Expectation{"job.bdf", CAE_FILE_DECK, Solver::Nastran},
                                         Expectation{"job.nas", CAE_FILE_DECK, Solver::Nastran},
                                         Expectation{"job.fem", CAE_FILE_DECK, Solver::OptiStruct},
                                         Expectation{"job.k", CAE_FILE_DECK, Solver::LsDyna},
                                         Expectation{"job.dyn", CAE_FILE_DECK, Solver::LsDyna},
                                         Expectation{"job.uci", CAE_FILE_DECK, Solver::Permas},
                                         Expectation{"sets.nam", CAE_FILE_INCLUDE, Solver::Calculix},
                                         Expectation{"all.msh", CAE_FILE_MESH, Solver::None},
                                         Expectation{"model.unv", CAE_FILE_MESH, Solver::None},
                                         Expectation{"model.cdb", CAE_FILE_MESH, Solver::Ansys},
                                         Expectation{"part.step", CAE_FILE_CAD, Solver::None},
                                         Expectation{"par.ct.geo", CAE_FILE_CAD, Solver::None},
                                         Expectation{"part.CATPart", CAE_FILE_CAD, Solver::None},
                                         Expectation{"part.stl", CAE_FILE_CAD, Solver::None},
                                         Expectation{"job.frd", CAE_FILE_RESULT, Solver::Calculix},
                                         Expectation{"job.odb", CAE_FILE_RESULT, Solver::Abaqus},
                                         Expectation{"job.op2", CAE_FILE_RESULT, Solver::Nastran},
                                         Expectation{"d3plot", CAE_FILE_RESULT, Solver::LsDyna},
                                         Expectation{"d3plot07", CAE_FILE_RESULT, Solver::LsDyna},
                                         Expectation{"binout0000", CAE_FILE_RESULT, Solver::LsDyna},
                                         Expectation{"d3hsp", CAE_FILE_LOG, Solver::LsDyna},
                                         Expectation{"view.PNG", CAE_FILE_PICTURE, Solver::None},
                                         Expectation{"README", CAE_FILE_REPORT, Solver::None},
                                         Expectation{"report.docx", CAE_FILE_REPORT, Solver::None},
                                         Expectation{"pre.fbd", CAE_FILE_SCRIPT, Solver::Calculix},
                                         Expectation{"run.sh", CAE_FILE_SCRIPT, Solver::None},
                                         Expectation{"job.sta", CAE_FILE_LOG, Solver::None},
                                         Expectation{"curve.csv", CAE_FILE_TABLE, Solver::None},
                                         Expectation{"all.tar.gz", CAE_FILE_ARCHIVE, Solver::None},
                                         Expectation{"K\xC3\xBChler.STP", CAE_FILE_CAD, Solver::None},
                                         Expectation{"core", CAE_FILE_OTHER, Solver::None},
                                         Expectation{"no.such-extension", CAE_FILE_OTHER, Solver::None},
                                         Expectation{"ends-with-dot.", CAE_FILE_OTHER, Solver::None}));

TEST(KindOfFileName, LooksIntoFilesWhoseExtensionSeveralProgramsShare) {
    for (const char* const name : {"a.dat", "a.key", "a.pc", "a.rad", "a.mac", "a.ans", "a.cdb"}) {
        EXPECT_EQ(KindOfFileName(name).look, Look::PossibleInput) << name;
    }
    for (const char* const name : {"a.inp", "a.bdf", "a.k", "a.fem"}) {
        EXPECT_EQ(KindOfFileName(name).look, Look::Input) << name;
    }
    EXPECT_EQ(KindOfFileName("a.inc").look, Look::Part);
    EXPECT_EQ(KindOfFileName("a.png").look, Look::None);
}

TEST(KindOfFileName, GivesBinaryContentATypeOfItsOwn) {
    EXPECT_EQ(KindOfFileName("a.rst").type, CAE_FILE_REPORT);
    EXPECT_EQ(KindOfFileName("a.rst").binaryType, CAE_FILE_RESULT);
    EXPECT_EQ(KindOfFileName("a.out").type, CAE_FILE_LOG);
    EXPECT_EQ(KindOfFileName("a.out").binaryType, CAE_FILE_OTHER);
    EXPECT_EQ(KindOfFileName("a.inp").binaryType, CAE_FILE_OTHER);
    EXPECT_EQ(KindOfFileName("a.png").binaryType, CAE_FILE_PICTURE);
}

TEST(SolverName, NamesEverySolver) {
    EXPECT_EQ(SolverName(Solver::AbaqusOrCalculix), "Abaqus/CalculiX");
    EXPECT_EQ(SolverName(Solver::LsDyna), "LS-DYNA");
    EXPECT_EQ(SolverName(Solver::PamCrash), "PAM-CRASH");
    EXPECT_EQ(SolverName(Solver::None), "");
    std::set<std::string_view> names;
    for (int solver = static_cast<int>(Solver::None); solver <= static_cast<int>(kLastSolver); ++solver) {
        names.insert(SolverName(static_cast<Solver>(solver)));
    }
    EXPECT_EQ(names.size(), static_cast<std::size_t>(kLastSolver) + 1);
}

}  // namespace
}  // namespace host
