#include "Material.h"

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

std::string Repeat(std::string_view text, int count) {
    std::string repeated;
    repeated.reserve(text.size() * static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        repeated += text;
    }
    return repeated;
}

/// The sections in which the levels of a shape lie, from level to level in turn.
struct Sections {
    std::string_view opening[4];
    std::string_view closing[4];
    int count;
};

Sections SectionsOf(Shape shape) {
    switch (shape) {
        case Shape::kArrays:
            return {{"["}, {"]"}, 1};
        case Shape::kMetadata:
            return {{R"({"type":"x","a":)"}, {"}"}, 1};
        case Shape::kMixed:
            return {{R"({"type":"CAEMODEL","id":"2","dbkey":"K","children":[)", R"({"type":"P","files":[)",
                     R"({"type":"P","metaData":{"a":)", "[[true,"},
                    {"]}", R"(],"name":"f"})", "}}", "],2]"},
                    4};
        default:
            return {{R"({"type":"CAEMODEL","id":"2","dbkey":"K","children":[)"}, {R"(],"name":"b"})"}, 1};
    }
}

std::string NestedText(Shape shape, int levels) {
    const Sections sections = SectionsOf(shape);
    std::string text;
    for (int level = 0; level < levels; ++level) {
        text += sections.opening[level % sections.count];
    }
    text += R"({"type":"CAEPART"})";
    for (int level = levels; level-- > 0;) {
        text += sections.closing[level % sections.count];
    }
    return text;
}

/// A document with the nested text in one section, or, where the shape has no section of its own, in all.
std::string DeepDocument(Shape shape, int levels, const std::string& head) {
    const std::string nested = NestedText(shape, levels);
    if (shape == Shape::kMetadata) {
        return head + R"("metaData":)" + nested + "}";
    }
    std::string text = head + R"("children":[)" + nested + "]";
    if (shape != Shape::kChildren) {
        text += R"(,"files":[)" + nested + R"(],"metaData":{"a":)" + nested + R"(},"unknown":)" + nested;
    }
    return text + "}";
}

/// An answer for as many objects of their own, from identifier 2 on.
std::string DeepAnswer(Shape shape, int levels) {
    std::string text;
    for (int level = 0; level < levels; ++level) {
        const bool isFile = shape == Shape::kArrays || (shape == Shape::kMixed && level % 2 == 1);
        const std::string id = std::to_string(level + 2);
        text.append(R"({"id":")").append(id).append(R"(","dbkey":"K)").append(id);
        text.append(isFile ? R"(","files":[)" : R"(","children":[)");
    }
    return text + Repeat("]}", levels);
}

void FillDeep(TestProject& project, Shape shape, int levels) {
    CAEObject* object = &project.Add(CAE_MODEL, L"a");
    for (int level = 1; level < levels; ++level) {
        if (shape == Shape::kMetadata) {
            SetMetadata(*object, OuString(std::to_string(level).c_str(), 0), L"v");
            continue;
        }
        const bool isFile = shape == Shape::kArrays || (shape == Shape::kMixed && level % 2 == 1);
        object =
            isFile ? &project.AddFile(*object, L"a", CAE_FILE_DECK) : &project.Add(*object, CAE_MODEL, L"a");
        if (shape == Shape::kMixed) {
            SetMetadata(*object, L"m", L"v");
        }
    }
}

}  // namespace

Material MiddleSized() {
    TestProject project;
    FillMiddleSized(project);
    const std::string document = JsonSerializer(&*project).GetJson().write().c_str();
    const std::string child = JsonSerializer(project->getCAEObject(2)).GetJson().write().c_str();
    std::string answer = R"({"id":"1","dbkey":"PROJECT","name":"Answered","children":[)";
    korvane::VisitTree(*project, [&](CAEObject& object, int) {
        answer += R"({"id":")" + std::to_string(object.getID()) + R"(","dbkey":")" +
                  std::string(kLongText, 'K') + R"(","files":[{"id":"9999","dbkey":"nobody's"}]},)";
    });
    answer += R"({"id":"x"}]})";
    const std::string versions = "[" + child.substr(0, child.size() - 1) +
                                 R"(,"version":"1.0"},{"type":"CAEPART"},)" +
                                 child.substr(0, child.size() - 1) + R"(,"version":"2.1"}])";
    return {FillMiddleSized, document, answer, versions};
}

Material Deep(Shape shape, int levels) {
    return {[shape, levels](TestProject& project) { FillDeep(project, shape, levels); },
            DeepDocument(shape, levels, R"({"type":"P",)"), DeepAnswer(shape, levels),
            "[" + DeepDocument(shape, levels, R"({"type":"CAEMODEL","version":"1.0",)") + "]"};
}
