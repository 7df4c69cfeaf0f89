#pragma once

#include <string_view>

#include "FileKind.h"

namespace host {

/// One row of the tables: what a name says.
struct FileKindRule {
    /// The extension without its dot, or the whole name, in lower case.
    std::string_view name;
    FileKind kind;
};

constexpr FileKindRule Is(std::string_view name, _tagFileType type, Solver solver = Solver::None) {
    return {name, {type, type, solver, Look::None}};
}
/// Input of one solver: a deck, unless the text shows that it is a part of one.
constexpr FileKindRule InputOf(Solver solver, std::string_view name) {
    return {name, {CAE_FILE_DECK, CAE_FILE_OTHER, solver, Look::Input}};
}
/// Input of some solver if the text says so, otherwise a file of the types given.
constexpr FileKindRule MaybeInput(std::string_view name, _tagFileType type,
                                  _tagFileType binaryType = CAE_FILE_OTHER, Solver solver = Solver::None) {
    return {name, {type, binaryType, solver, Look::PossibleInput}};
}
/// A part of the input of a solver, never a deck.
constexpr FileKindRule PartOfInput(std::string_view name, Solver solver = Solver::None) {
    return {name, {CAE_FILE_INCLUDE, CAE_FILE_OTHER, solver, Look::Part}};
}
constexpr FileKindRule TextOrBinary(std::string_view name, _tagFileType type, _tagFileType binaryType,
                                    Solver solver = Solver::None) {
    return {name, {type, binaryType, solver, Look::None}};
}

/// What each extension says. Each is listed once. Where several programs share one, the most likely program
/// in the folder of an engineer decides, or the text of the file (InputOf, MaybeInput).
inline constexpr FileKindRule kFileExtensions[] = {
    // Solver input
    InputOf(Solver::AbaqusOrCalculix, "inp"),
    InputOf(Solver::Nastran, "bdf"),
    InputOf(Solver::Nastran, "nas"),
    InputOf(Solver::Nastran, "nastran"),
    InputOf(Solver::OptiStruct, "fem"),
    InputOf(Solver::LsDyna, "k"),
    InputOf(Solver::LsDyna, "dyn"),
    InputOf(Solver::LsDyna, "dyna"),
    MaybeInput("key", CAE_FILE_OTHER),
    MaybeInput("rad", CAE_FILE_INCLUDE),
    MaybeInput("pc", CAE_FILE_OTHER),
    InputOf(Solver::Permas, "uci"),
    MaybeInput("dat", CAE_FILE_TABLE),
    MaybeInput("ans", CAE_FILE_SCRIPT),
    MaybeInput("mac", CAE_FILE_SCRIPT),
    MaybeInput("cdb", CAE_FILE_MESH, CAE_FILE_MESH, Solver::Ansys),

    // Parts of solver input
    PartOfInput("inc"),
    PartOfInput("include"),
    PartOfInput("blk", Solver::Nastran),
    PartOfInput("bulk", Solver::Nastran),
    PartOfInput("dato", Solver::Permas),
    PartOfInput("nam", Solver::Calculix),
    PartOfInput("sur", Solver::Calculix),
    PartOfInput("bou", Solver::Calculix),
    PartOfInput("dlo", Solver::Calculix),
    PartOfInput("equ", Solver::Calculix),
    PartOfInput("mpc"),
    PartOfInput("frc", Solver::Calculix),
    PartOfInput("flm", Solver::Calculix),
    PartOfInput("mat"),
    PartOfInput("set"),
    PartOfInput("spc"),

    // Meshes
    Is("msh", CAE_FILE_MESH),
    Is("mesh", CAE_FILE_MESH),
    Is("meshb", CAE_FILE_MESH),
    Is("unv", CAE_FILE_MESH),
    Is("med", CAE_FILE_MESH),
    Is("neu", CAE_FILE_MESH),
    Is("hm", CAE_FILE_MESH),
    Is("ansa", CAE_FILE_MESH),
    Is("cgns", CAE_FILE_MESH),
    Is("su2", CAE_FILE_MESH),
    Is("vol", CAE_FILE_MESH),
    Is("ele", CAE_FILE_MESH),
    Is("off", CAE_FILE_MESH),
    Is("grd", CAE_FILE_MESH),
    Is("gid", CAE_FILE_MESH),

    // Geometry
    Is("step", CAE_FILE_CAD),
    Is("stp", CAE_FILE_CAD),
    Is("stpz", CAE_FILE_CAD),
    Is("iges", CAE_FILE_CAD),
    Is("igs", CAE_FILE_CAD),
    Is("x_t", CAE_FILE_CAD),
    Is("x_b", CAE_FILE_CAD),
    Is("xmt_txt", CAE_FILE_CAD),
    Is("xmt_bin", CAE_FILE_CAD),
    Is("sat", CAE_FILE_CAD),
    Is("sab", CAE_FILE_CAD),
    Is("brep", CAE_FILE_CAD),
    Is("brp", CAE_FILE_CAD),
    Is("stl", CAE_FILE_CAD),
    Is("3mf", CAE_FILE_CAD),
    Is("jt", CAE_FILE_CAD),
    Is("geo", CAE_FILE_CAD),
    Is("geo_unrolled", CAE_FILE_CAD),
    Is("fcstd", CAE_FILE_CAD),
    Is("scad", CAE_FILE_CAD),
    Is("dxf", CAE_FILE_CAD),
    Is("dwg", CAE_FILE_CAD),
    Is("3dm", CAE_FILE_CAD),
    Is("3dxml", CAE_FILE_CAD),
    Is("catpart", CAE_FILE_CAD),
    Is("catproduct", CAE_FILE_CAD),
    Is("cgr", CAE_FILE_CAD),
    Is("sldprt", CAE_FILE_CAD),
    Is("sldasm", CAE_FILE_CAD),
    Is("prt", CAE_FILE_CAD),
    Is("asm", CAE_FILE_CAD),
    Is("ipt", CAE_FILE_CAD),
    Is("iam", CAE_FILE_CAD),
    Is("par", CAE_FILE_CAD),
    Is("psm", CAE_FILE_CAD),
    Is("scdoc", CAE_FILE_CAD),
    Is("agdb", CAE_FILE_CAD),
    Is("anf", CAE_FILE_CAD, Solver::Ansys),

    // Results
    Is("frd", CAE_FILE_RESULT, Solver::Calculix),
    Is("odb", CAE_FILE_RESULT, Solver::Abaqus),
    Is("fil", CAE_FILE_RESULT, Solver::Abaqus),
    Is("sim", CAE_FILE_RESULT, Solver::Abaqus),
    Is("op2", CAE_FILE_RESULT, Solver::Nastran),
    Is("f06", CAE_FILE_RESULT, Solver::Nastran),
    Is("xdb", CAE_FILE_RESULT, Solver::Nastran),
    Is("pch", CAE_FILE_RESULT),
    Is("h3d", CAE_FILE_RESULT),
    Is("res", CAE_FILE_RESULT),
    Is("rth", CAE_FILE_RESULT, Solver::Ansys),
    Is("rfl", CAE_FILE_RESULT, Solver::Ansys),
    TextOrBinary("rst", CAE_FILE_REPORT, CAE_FILE_RESULT),
    Is("d3plot", CAE_FILE_RESULT, Solver::LsDyna),
    Is("binout", CAE_FILE_RESULT, Solver::LsDyna),
    Is("erfh5", CAE_FILE_RESULT, Solver::PamCrash),
    Is("dsy", CAE_FILE_RESULT, Solver::PamCrash),
    Is("thp", CAE_FILE_RESULT, Solver::PamCrash),
    Is("h5", CAE_FILE_RESULT),
    Is("hdf", CAE_FILE_RESULT),
    Is("hdf5", CAE_FILE_RESULT),
    Is("vtk", CAE_FILE_RESULT),
    Is("vtu", CAE_FILE_RESULT),
    Is("vtp", CAE_FILE_RESULT),
    Is("vtm", CAE_FILE_RESULT),
    Is("pvd", CAE_FILE_RESULT),
    Is("pvtu", CAE_FILE_RESULT),
    Is("exo", CAE_FILE_RESULT),
    Is("e", CAE_FILE_RESULT),
    Is("case", CAE_FILE_RESULT),
    Is("ensi", CAE_FILE_RESULT),
    Is("pos", CAE_FILE_RESULT),
    Is("rmed", CAE_FILE_RESULT),
    Is("eig", CAE_FILE_RESULT, Solver::Calculix),

    // Pictures and films
    Is("png", CAE_FILE_PICTURE),
    Is("jpg", CAE_FILE_PICTURE),
    Is("jpeg", CAE_FILE_PICTURE),
    Is("gif", CAE_FILE_PICTURE),
    Is("bmp", CAE_FILE_PICTURE),
    Is("tif", CAE_FILE_PICTURE),
    Is("tiff", CAE_FILE_PICTURE),
    Is("svg", CAE_FILE_PICTURE),
    Is("svgz", CAE_FILE_PICTURE),
    Is("webp", CAE_FILE_PICTURE),
    Is("ppm", CAE_FILE_PICTURE),
    Is("pgm", CAE_FILE_PICTURE),
    Is("xpm", CAE_FILE_PICTURE),
    Is("tga", CAE_FILE_PICTURE),
    Is("eps", CAE_FILE_PICTURE),
    Is("emf", CAE_FILE_PICTURE),
    Is("wmf", CAE_FILE_PICTURE),
    Is("wrl", CAE_FILE_PICTURE),
    Is("gltf", CAE_FILE_PICTURE),
    Is("glb", CAE_FILE_PICTURE),
    Is("mp4", CAE_FILE_PICTURE),
    Is("avi", CAE_FILE_PICTURE),
    Is("mpg", CAE_FILE_PICTURE),
    Is("mpeg", CAE_FILE_PICTURE),
    Is("mov", CAE_FILE_PICTURE),
    Is("wmv", CAE_FILE_PICTURE),
    Is("webm", CAE_FILE_PICTURE),

    // Reports and notes
    Is("md", CAE_FILE_REPORT),
    Is("markdown", CAE_FILE_REPORT),
    Is("txt", CAE_FILE_REPORT),
    Is("text", CAE_FILE_REPORT),
    Is("adoc", CAE_FILE_REPORT),
    Is("pdf", CAE_FILE_REPORT),
    Is("ps", CAE_FILE_REPORT),
    Is("doc", CAE_FILE_REPORT),
    Is("docx", CAE_FILE_REPORT),
    Is("odt", CAE_FILE_REPORT),
    Is("rtf", CAE_FILE_REPORT),
    Is("ppt", CAE_FILE_REPORT),
    Is("pptx", CAE_FILE_REPORT),
    Is("odp", CAE_FILE_REPORT),
    Is("html", CAE_FILE_REPORT),
    Is("htm", CAE_FILE_REPORT),
    Is("tex", CAE_FILE_REPORT),
    Is("bib", CAE_FILE_REPORT),
    Is("ipynb", CAE_FILE_REPORT),

    // Scripts, for solvers, pre- and post-processors and the shell
    Is("fbd", CAE_FILE_SCRIPT, Solver::Calculix),
    Is("fbl", CAE_FILE_SCRIPT, Solver::Calculix),
    Is("py", CAE_FILE_SCRIPT),
    Is("sh", CAE_FILE_SCRIPT),
    Is("bash", CAE_FILE_SCRIPT),
    Is("csh", CAE_FILE_SCRIPT),
    Is("bat", CAE_FILE_SCRIPT),
    Is("cmd", CAE_FILE_SCRIPT),
    Is("ps1", CAE_FILE_SCRIPT),
    Is("tcl", CAE_FILE_SCRIPT),
    Is("m", CAE_FILE_SCRIPT),
    Is("pl", CAE_FILE_SCRIPT),
    Is("rb", CAE_FILE_SCRIPT),
    Is("lua", CAE_FILE_SCRIPT),
    Is("js", CAE_FILE_SCRIPT),
    Is("f", CAE_FILE_SCRIPT),
    Is("for", CAE_FILE_SCRIPT),
    Is("f90", CAE_FILE_SCRIPT),
    Is("jnl", CAE_FILE_SCRIPT),
    Is("jou", CAE_FILE_SCRIPT),
    Is("ses", CAE_FILE_SCRIPT),
    Is("cfile", CAE_FILE_SCRIPT, Solver::LsDyna),
    Is("lcf", CAE_FILE_SCRIPT, Solver::LsDyna),
    Is("mvw", CAE_FILE_SCRIPT),
    Is("pvsm", CAE_FILE_SCRIPT),
    Is("gnu", CAE_FILE_SCRIPT),
    Is("plt", CAE_FILE_SCRIPT),
    Is("gp", CAE_FILE_SCRIPT),

    // What solvers report about a run
    TextOrBinary("out", CAE_FILE_LOG, CAE_FILE_OTHER),
    Is("log", CAE_FILE_LOG),
    Is("sta", CAE_FILE_LOG),
    Is("cvg", CAE_FILE_LOG, Solver::Calculix),
    TextOrBinary("msg", CAE_FILE_LOG, CAE_FILE_OTHER),
    Is("f04", CAE_FILE_LOG, Solver::Nastran),
    Is("err", CAE_FILE_LOG),
    Is("mntr", CAE_FILE_LOG, Solver::Ansys),
    Is("stat", CAE_FILE_LOG),
    Is("12d", CAE_FILE_LOG, Solver::Calculix),

    // Tables
    Is("csv", CAE_FILE_TABLE),
    Is("tsv", CAE_FILE_TABLE),
    Is("tab", CAE_FILE_TABLE),
    Is("xls", CAE_FILE_TABLE),
    Is("xlsx", CAE_FILE_TABLE),
    Is("ods", CAE_FILE_TABLE),
    Is("xy", CAE_FILE_TABLE),
    Is("crv", CAE_FILE_TABLE),
    Is("asc", CAE_FILE_TABLE),

    // Archives
    Is("zip", CAE_FILE_ARCHIVE),
    Is("gz", CAE_FILE_ARCHIVE),
    Is("tgz", CAE_FILE_ARCHIVE),
    Is("bz2", CAE_FILE_ARCHIVE),
    Is("xz", CAE_FILE_ARCHIVE),
    Is("zst", CAE_FILE_ARCHIVE),
    Is("tar", CAE_FILE_ARCHIVE),
    Is("7z", CAE_FILE_ARCHIVE),
    Is("rar", CAE_FILE_ARCHIVE),
};

}  // namespace host
