#include <gtest/gtest.h>

#include "ProgramSupport.h"

namespace {

class ProgramPlot : public ProgramInFolder {
protected:
    ProgramPlot() {
        folder.Write("p/plates/job.inp", "*STEP\n*STATIC\n*END STEP\n");
        folder.Write("p/plates/left.msh", "$MeshFormat\n");
        folder.Write("p/modes & more/run.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
    }
};

TEST_F(ProgramPlot, DrawsTheStudiesOfADirectory) {
    Do({"plot", "p", "--x", "Files", "--y", "size", "--by", "Solver", "--kind", "Study", "-o", "plot.svg"});
    const std::string svg = Read("plot.svg");
    EXPECT_NE(svg.find("<title>modes &amp; more\nFiles: 1\nsize: 32 B\nSolver: Nastran</title>"),
              std::string::npos)
        << svg;
    EXPECT_NE(svg.find("<title>plates\nFiles: 2\nsize: 36 B\nSolver: Abaqus/CalculiX</title>"),
              std::string::npos)
        << svg;
    EXPECT_EQ(svg.find("<title>.\n"), std::string::npos) << "the project is not a study";
    EXPECT_EQ(OutputOf({"plot", "p", "--x", "Files", "--y", "size", "--by", "Solver", "kind=study"}), svg);
}

TEST_F(ProgramPlot, TakesTheEntryWhereAWordForFilesHasItsName) {
    const std::string svg = OutputOf({"plot", "p", "--x", "Files", "--y", "size"});
    EXPECT_NE(svg.find("<title>plates\nFiles: 2\nsize: 36 B</title>"), std::string::npos) << svg;
    EXPECT_EQ(svg.find("left.msh"), std::string::npos) << "a file's own size is not its study's entry";
}

TEST_F(ProgramPlot, ReplacesItsOwnPlotInTheDirectory) {
    const std::vector<std::string> arguments = {"plot", "p",    "--x", "Files",
                                                "--y",  "Size", "-o",  "p/plot.svg"};
    Do(arguments);
    const std::string svg = Read("p/plot.svg");
    Do(arguments);
    EXPECT_EQ(Read("p/plot.svg"), svg);
    ExpectRefused({"plot", "p", "--x", "Files", "--y", "Size", "-o", "p/plates/job.inp"},
                  "cannot write 'p/plates/job.inp': it is a file of the project, not a document, a page or a "
                  "plot. Nothing was "
                  "changed; give another file with -o");
}

TEST_F(ProgramPlot, SaysWhichNumbersThereAre) {
    ExpectRefused({"plot", "p", "--x", "Filess", "--y", "Size", "-o", "plot.svg"},
                  "cannot plot 'p': no object has a number 'Filess'; did you mean 'Files'? Metadata entries "
                  "with numbers are 'Files', 'Size', 'Studies', 'Steps'");
    ExpectRefused(
        {"plot", "p", "--x", "Files", "--y", "Solver", "--kind", "Study", "-o", "plot.svg"},
        "cannot plot 'p': no object that meets the conditions has a number 'Solver'. Metadata entries "
        "with numbers are 'Files', 'Size', 'Studies', 'Steps'");
    ExpectRefused(
        {"plot", "p", "--x", "Files", "--y", "Size", "--kind", "Part"},
        "cannot plot 'p': no object that meets the conditions has a number 'Files'. Metadata entries "
        "with numbers are 'Files', 'Size', 'Studies', 'Steps'");
    folder.Write("none.json", R"({"type":"SIMULATION","name":"N"})");
    ExpectRefused(
        {"plot", "none.json", "--x", "Files", "--y", "Size"},
        "cannot plot 'none.json': no object has a number 'Files'; there are no metadata entries with "
        "numbers");
    ExpectRefused({"plot", "p", "--x", "Files", "--y", "Size", "--kind", "Stud"},
                  "the condition 'kind=Stud' names no kind of object; did you mean 'Study'? There are Part, "
                  "SubAssembly, File, Project, Model, Iteration, IterationFolder, IterationModel, "
                  "AssemblyFolder, LoadCaseViewFolder, LoadCaseView, ViewItem, Tag, Study. See 'korvane-json "
                  "plot --help'",
                  2);
    ExpectRefused({"plot", "p", "--x", "Files"}, "--y is required. See 'korvane-json plot --help'", 2);
}

}  // namespace
