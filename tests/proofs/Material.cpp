#include "Material.h"

#include <korvaneexchange/Compare.h>
#include <korvaneexchange/ParseDocument.h>
#include <korvanejson/JsonSerializer.h>

#include <string_view>

namespace {

constexpr int kStudies = 6;
/// More than the largest cell of libjson's pool.
constexpr std::size_t kLongText = 1100;

OuString Long(const std::string& text) {
    return OuString((text + std::string(kLongText, '.')).c_str(), 0);
}

void AddMetadata(CAEObject& object, const std::string& value) {
    SetMetadata(object, L"Mass", Long(value), L"kg", L"number");
    SetMetadata(object, Long("Thickness"), Long(value), L"mm", L"number");
}

/// Parts, assemblies and iterations with files in all their roles, and what shows them.
void FillStudy(TestProject& project, CAEObject& folder, const std::string& name) {
    CAEObject& part = project.Add(folder, CAE_PART, Long("part " + name));
    AddMetadata(part, name);
    project.AddFile(part, Long("mesh"), CAE_FILE_MESH, CAE_FORMAT_BINARY);
    project.AddFile(part, Long("cad"), CAE_FILE_CAD);
    project.AddFile(part, Long("picture"), CAE_FILE_GRAPHIC);
    CAEObject& assembly = project.Add(folder, CAE_SUBASSEMBLY, Long("assembly " + name));
    assembly.setDBKey(Long("KEY-" + name));
    project.AddFile(assembly, Long("mesh"), CAE_FILE_MESH);
    CAEObject& run = project.Add(folder, CAE_ITERATION_MODEL, Long("run " + name));
    project.AddFile(run, Long("deck"), CAE_FILE_DECK);
    CAEObject& item = project.Add(run, CAE_VIEW_ITEM, Long("item " + name));
    item.setLinkDBKey(Long("KEY-" + name));
}

void FillMiddleSized(TestProject& project) {
    for (int study = 0; study < kStudies; ++study) {
        const std::string name = std::to_string(study);
        CAEObject& folder = project.Add(CAE_ASSEMBLY_FOLDER, Long("study " + name));
        AddMetadata(folder, name);
        FillStudy(project, folder, name);
        project.AddFile(folder, Long("report"), CAE_FILE_DECK);
    }
    project.AddFile(*project, Long("description"), CAE_FILE_DECK);
    CAEObject& inner = project.Add(CAE_PROJECT, Long("project within"));
    FillStudy(project, inner, "within");
}

/// A name, a place, values of metadata, a missing object, and a new one with a file.
void ChangeMiddleSized(TestProject& project) {
    CAEObject& folder = *project->getCAEObject(2);
    folder.setName(Long("renamed study"));
    CAEObject* item = nullptr;
    CAEObject* part = nullptr;
    CAEObject* moved = nullptr;
    korvane::VisitTree(folder, [&](CAEObject& object, int) {
        item = object.getType() == CAE_VIEW_ITEM ? &object : item;
        part = object.getType() == CAE_PART ? &object : part;
        moved = object.getType() == CAE_SUBASSEMBLY ? &object : moved;
    });
    AddMetadata(*part, "changed");
    SetMetadata(*part, Long("new entry"), Long("value"), L"kg");
    CAEObject* detached = moved;
    folder.detachChild(detached, false);
    project->addChild(moved);
    item->getParent()->detachChild(item, true);
    CAEObject& assembly = project.Add(folder, CAE_SUBASSEMBLY, Long("new assembly"));
    project.AddFile(assembly, Long("mesh"), CAE_FILE_MESH);
}

std::string DocumentOf(CAEObject& object) {
    return JsonSerializer(&object).GetJson().write().c_str();
}

korvane::exchange::Report ReportOfDifferences(const std::string& document, const std::string& otherDocument) {
    const korvane::exchange::CompareReport found = korvane::exchange::Compare(
        korvane::exchange::ParseDocument(document), korvane::exchange::ParseDocument(otherDocument));
    const korvane::exchange::Report& report = found;
    return report;
}

std::string Repeat(std::string_view text, int count) {
    std::string repeated;
    repeated.reserve(text.size() * static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        repeated += text;
    }
    return repeated;
}

/// The sections in which the levels of a shape lie, from level to level in turn. Every closing has the name
/// of a level: what reads it has come back from the levels within.
struct Sections {
    std::string_view opening[4];
    std::string_view closing[4];
    int count;
};

constexpr Sections kChildren = {
    {R"({"type":"CAEMODEL","id":"2","dbkey":"K","children":[)"}, {R"(],"name":"level"})"}, 1};
constexpr Sections kArrays = {{"["}, {R"(,"level"])"}, 1};
constexpr Sections kMetadata = {{R"({"metaDataType":"kg","a":)"}, {R"(,"value":"level"})"}, 1};
constexpr Sections kInTurn = {
    {R"({"type":"CAEMODEL","id":"2","dbkey":"K","children":[)", R"({"type":"P","files":[)",
     R"({"type":"P","metaData":{"a":)", "[[true,"},
    {R"(],"name":"level"})", R"(],"name":"level"})", R"(},"name":"level"})", R"(],"level"])"},
    4};
/// Only children make an import go deeper. They may be in an object instead of an array.
constexpr Sections kChildrenWithAll = {
    {R"({"type":"CAEMODEL","metaData":{"m":{"value":"1"}},"files":[{"name":"f"}],"children":[)",
     R"({"type":"CAEMODEL","metaData":{"m":{"value":"1"}},"files":{"f":{"name":"f"}},"children":{"m":)"},
    {R"(],"name":"level"})", R"(},"name":"level"})"},
    2};

constexpr std::string_view kKeyOfLevel = R"("dbkey":"K)";

std::string NestedText(const Sections& sections, int levels, std::string_view innermost) {
    std::string text;
    for (int level = 0; level < levels; ++level) {
        const std::string_view opening = sections.opening[level % sections.count];
        const std::size_t key = opening.find(kKeyOfLevel);
        text += opening.substr(0, key);
        if (key != std::string_view::npos) {
            // Each has its own: an update does nothing for several objects with one key.
            text.append(kKeyOfLevel).append(std::to_string(level));
            text += opening.substr(key + kKeyOfLevel.size());
        }
    }
    text += innermost;
    for (int level = levels; level-- > 0;) {
        text += sections.closing[level % sections.count];
    }
    return text;
}

/// The nested text in every section but the children.
std::string InOtherSections(const std::string& nested) {
    return R"("files":[)" + nested + R"(],"metaData":{"a":)" + nested + R"(},"unknown":)" + nested;
}

/// A document with the levels in the section of the shape, or, where it has no section of its own, in all.
std::string DeepDocument(Shape shape, int levels, std::string_view type, std::string_view innermost) {
    const std::string head(type);
    switch (shape) {
        case Shape::kArrays: {
            const std::string nested = NestedText(kArrays, levels, innermost);
            return head + R"("children":[)" + nested + "]," + InOtherSections(nested) + "}";
        }
        case Shape::kMetadata:
            return head + R"("metaData":{"a":)" + NestedText(kMetadata, levels, innermost) + "}}";
        case Shape::kMixed:
            return head + R"("children":[)" + NestedText(kChildrenWithAll, levels, innermost) + "]," +
                   InOtherSections(NestedText(kInTurn, levels, innermost)) + "}";
        default:
            return head + R"("children":[)" + NestedText(kChildren, levels, innermost) + "]}";
    }
}

/// The section of an answer in which the next level lies.
std::string_view AnsweredSection(Shape shape, int level) {
    if (shape == Shape::kMetadata) {
        return R"(,"metaData":[)";
    }
    const bool isFile = shape == Shape::kArrays || (shape == Shape::kMixed && level % 2 == 1);
    return isFile ? R"(,"files":[)" : R"(,"children":[)";
}

/// An answer for as many objects of their own, from identifier 2 on.
std::string DeepAnswer(Shape shape, int levels) {
    std::string text;
    for (int level = 0; level < levels; ++level) {
        const std::string id = std::to_string(level + 2);
        text.append(R"({"id":")").append(id).append(R"(","dbkey":"level)").append(id).append("\"");
        text.append(AnsweredSection(shape, level));
    }
    return text + Repeat("]}", levels);
}

OuString NumberedLevel(int level) {
    return OuString((kNameOfLevel + std::to_string(level)).c_str(), 0);
}

/// The value that the metadata entries have, or, for a shape without, the innermost object alone.
void ChangeDeep(TestProject& project, Shape shape, int levels) {
    const OuString value(L"changed");
    if (shape != Shape::kMetadata) {
        SetMetadata(*project->getCAEObject(levels + 1), L"m", value);
        return;
    }
    for (int level = 1; level < levels; ++level) {
        SetMetadata(*project->getCAEObject(2), NumberedLevel(level), value);
    }
}

korvane::exchange::Report LongReport(int levels) {
    using korvane::exchange::Reason;
    korvane::exchange::Report report;
    for (int level = 0; level < levels; ++level) {
        report.entries.push_back({"/children/0", level + 2, Reason::kAdded, kNameOfLevel,
                                  kNameOfLevel + std::string(" was added")});
    }
    report.counts[static_cast<std::size_t>(Reason::kAdded)] = static_cast<std::size_t>(levels);
    return report;
}

void FillDeep(TestProject& project, Shape shape, int levels) {
    const OuString name(kNameOfLevel, 0);
    CAEObject* object = &project.Add(CAE_MODEL, name);
    for (int level = 1; level < levels; ++level) {
        if (shape == Shape::kMetadata) {
            SetMetadata(*object, NumberedLevel(level), L"v");
            continue;
        }
        const bool isFile = shape == Shape::kArrays || (shape == Shape::kMixed && level % 2 == 1);
        object =
            isFile ? &project.AddFile(*object, name, CAE_FILE_DECK) : &project.Add(*object, CAE_MODEL, name);
        if (shape == Shape::kMixed) {
            SetMetadata(*object, L"m", L"v");
        }
    }
}

}  // namespace

const std::string& Innermost() {
    static const std::string text =
        R"({"type":"CAEPART","createdBy":")" + std::string(kLongText, '.') + "\"}";
    return text;
}

Material MiddleSized() {
    TestProject project;
    FillMiddleSized(project);
    const std::string document = DocumentOf(*project);
    const std::string child = DocumentOf(*project->getCAEObject(2));
    std::string answer = R"({"id":"1","dbkey":"PROJECT","name":"Answered","children":[)";
    korvane::VisitTree(*project, [&](CAEObject& object, int) {
        answer += R"({"id":")" + std::to_string(object.getID()) + R"(","dbkey":")" +
                  std::string(kLongText, 'K') + R"(","files":[{"id":"9999","dbkey":"nobody's"}]},)";
    });
    answer += R"({"id":"x"}]})";
    const std::string versions = "[" + child.substr(0, child.size() - 1) +
                                 R"(,"version":"1.0"},{"type":"CAEPART"},)" +
                                 child.substr(0, child.size() - 1) + R"(,"version":"2.1"}])";
    ChangeMiddleSized(project);
    const std::string otherDocument = DocumentOf(*project);
    return {FillMiddleSized,
            document,
            answer,
            versions,
            ChangeMiddleSized,
            [=] { return std::string(otherDocument); },
            [=] { return ReportOfDifferences(document, otherDocument); }};
}

Material Deep(Shape shape, int levels) {
    constexpr std::string_view kHead = R"({"type":"P",)";
    return {[=](TestProject& project) { FillDeep(project, shape, levels); },
            DeepDocument(shape, levels, kHead, Innermost()),
            DeepAnswer(shape, levels),
            "[" + DeepDocument(shape, levels, R"({"type":"CAEMODEL","version":"1.0",)", Innermost()) + "]",
            [=](TestProject& project) { ChangeDeep(project, shape, levels); },
            [=] { return DeepDocument(shape, levels, kHead, kOtherInnermost); },
            [=] { return LongReport(levels); }};
}

const Material& TheMaterial() {
    static const Material material = MiddleSized();
    return material;
}
