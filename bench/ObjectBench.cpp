// The three services of the library beside what a host would write by hand for this one tree: the export
// beside a writer that streams the same text, the import beside calls that make the same objects without any
// document, the answer beside a key set on every object.

#include <CAEFunctions.h>
#include <EmbeddedModel.h>
#include <OuStringFileName.h>
#include <benchmark/benchmark.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <string>

namespace {

using Project = std::unique_ptr<CAEProject>;
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

constexpr const wchar_t* kDirectory = L"/studies/";

Project EmptyProject() {
    Project project = korvane::CreateProject(L"plant", kDirectory);
    korvane::SetCreation(*project, L"2026-03-01T09:30:00Z", L"engineer");
    project->setCreatedDate(L"2026-03-01T09:30:00Z");
    korvane::SetCreatedUserName(*project, L"engineer");
    project->setAdditionalType(L"Simulation");
    return project;
}

/// What both kinds of import make of one part.
void FillPart(CAEProject& project, CAEObject& part, const OuString& name) {
    part.setName(name);
    part.setMetadataType(L"Mass", L"kg");
    part.setMetadataValue(L"Mass", L"1250.5");
    OuString path(kDirectory);
    path.Append(name.GetBuffer(), 0);
    auto file = std::make_unique<CAEFile>(nullptr, CAE_FILE_CAD, CAE_FORMAT_ASCII, false);
    file->setName(name);
    file->setFullPathName(path);
    const int fileId = project.assignID(file.get());
    project.addFile(file.release());
    dynamic_cast<CAEPart&>(part).setCADFile(fileId);
}

OuString PartName(int number) {
    OuString name;
    name.Format(L"part %d", number);
    return name;
}

/// Parts below a project, each with an entry of metadata and a CAD file.
void MakeParts(CAEProject& project, int count) {
    for (int number = 0; number < count; ++number) {
        int partId = 0;
        createCAEObject(&project, project.getID(), CAE_PART, partId);
        FillPart(project, *project.getCAEObject(partId), PartName(number));
    }
}

Project FullProject(const benchmark::State& state) {
    Project project = EmptyProject();
    MakeParts(*project, static_cast<int>(state.range()));
    return project;
}

std::string Narrow(const OuString& text) {
    return text.GetAnsiBuffer();
}

/// The document of such a project, streamed by hand.
class HandWriter {
public:
    explicit HandWriter(CAEProject& project) : project_(project) {}

    OuString Write() {
        WriteObject(project_, "Simulation", [this] {
            OuList children;
            project_.getChildrenList(children);
            for (OuListPosition* position = children.GetHeadPosition(); position != nullptr;) {
                WriteObject(*static_cast<CAEObject*>(children.GetNext(position)), "CAEPart", [] {});
            }
        });
        Text("subType", "SDM");
        writer_.EndObject();
        return OuString(buffer_.GetString(), 0);
    }

private:
    void Text(const char* name, const std::string& value) {
        writer_.Key(name);
        writer_.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }

    void WriteHeader(const CAEObject& object, const std::string& name, std::string type) {
        writer_.StartObject();
        Text("id", std::to_string(object.getID()));
        Text("name", name);
        OuString text;
        object.getCreatedDate(text);
        Text("createdDate", Narrow(text));
        object.getCreatedUserName(text);
        Text("createdBy", Narrow(text));
        std::ranges::transform(type, type.begin(), [](unsigned char c) { return std::toupper(c); });
        Text("type", type);
    }

    void WriteMetadata(const CAEObject& object) {
        writer_.Key("metaData");
        writer_.StartObject();
        OuTemplateArray<OuString, OuCRTAllocator> names;
        OuTemplateArray<OuString, OuCRTAllocator> values;
        object.getAllMetadata(names, values);
        for (int index = 0; index < names.GetSize(); ++index) {
            writer_.Key(names[index].GetAnsiBuffer());
            writer_.StartObject();
            OuString unit;
            object.getMetadataUnitString(names[index], unit);
            Text("value", Narrow(values[index]));
            Text("metaDataType", Narrow(unit));
            writer_.EndObject();
        }
        writer_.EndObject();
    }

    /// All but the last brace of a project.
    template <typename WriteChildren>
    void WriteObject(CAEObject& object, const char* type, const WriteChildren& writeChildren) {
        OuString name;
        object.getName(name);
        WriteHeader(object, Narrow(name), type);
        WriteMetadata(object);
        writer_.Key("children");
        writer_.StartArray();
        writeChildren();
        writer_.EndArray();
        writer_.Key("files");
        writer_.StartArray();
        const OuList files = object.GetFiles();
        for (OuListPosition* position = files.GetHeadPosition(); position != nullptr;) {
            WriteFile(*project_.getFile(files.GetNextID(position)));
        }
        writer_.EndArray();
        if (&object != &project_) {
            writer_.EndObject();
        }
    }

    void WriteFile(CAEFile& file) {
        OuStringFileName path;
        file.getFullPathName(path);
        WriteHeader(file, Narrow(path.GetFileName()), "CAEFile");
        WriteMetadata(file);
        for (const char* section : {"children", "files"}) {
            writer_.Key(section);
            writer_.StartArray();
            writer_.EndArray();
        }
        Text("fileType", CAEGetFileTypeName(file.getFileType()));
        Text("fileFormat", file.getFileFormat() == CAE_FORMAT_ASCII ? "ASCII" : "Binary");
        Text("locationType", Narrow(file.m_locationType));
        Text("filePath", "");
        writer_.EndObject();
    }

    CAEProject& project_;
    rapidjson::StringBuffer buffer_;
    Writer writer_{buffer_};
};

void CountObjects(benchmark::State& state) {
    state.counters["objects/s"] =
        benchmark::Counter(static_cast<double>(state.range()), benchmark::Counter::kIsIterationInvariantRate);
}

void Check(benchmark::State& state, bool holds) {
    if (!holds) {
        state.SkipWithError("the work was not done");
    }
}

void ExportNode(benchmark::State& state) {
    const Project project = FullProject(state);
    JSONNode document;
    for (auto _ : state) {
        document = JsonSerializer(project.get()).GetJson();
    }
    Check(state, document.at("children").size() == static_cast<json_index_t>(state.range()));
    CountObjects(state);
}

void ExportText(benchmark::State& state) {
    const Project project = FullProject(state);
    OuString text;
    for (auto _ : state) {
        text = JsonSerializer(project.get()).GetJsonString();
    }
    Check(state, text.Compare(HandWriter(*project).Write()) == 0);
    CountObjects(state);
}

void ExportTextByHand(benchmark::State& state) {
    const Project project = FullProject(state);
    OuString text;
    for (auto _ : state) {
        text = HandWriter(*project).Write();
    }
    Check(state, text.Compare(JsonSerializer(project.get()).GetJsonString()) == 0);
    CountObjects(state);
}

bool IsFull(const benchmark::State& state, CAEProject& project) {
    OuList list;
    project.getChildrenList(list);
    const auto count = static_cast<std::size_t>(state.range());
    return list.GetCount() == count && korvane::GetProjectFiles(project).size() == count;
}

/// Makes the parts in a new project again and again; only the making is timed.
template <typename Make>
void MakeInNewProject(benchmark::State& state, const Make& make) {
    Project project;
    for (auto _ : state) {
        state.PauseTiming();
        project = EmptyProject();
        state.ResumeTiming();
        make(*project);
    }
    Check(state, IsFull(state, *project));
    CountObjects(state);
}

void Import(benchmark::State& state) {
    JSONNode document = JsonSerializer(FullProject(state).get()).GetJson();
    MakeInNewProject(
        state, [&](CAEProject& project) { caerest::json::DeserializeJsonToObject(document, &project); });
}

void ImportByHand(benchmark::State& state) {
    MakeInNewProject(state,
                     [&](CAEProject& project) { MakeParts(project, static_cast<int>(state.range())); });
}

/// An answer with a key for every object and file of the document.
JSONNode Answer(const JSONNode& document) {
    JSONNode node(JSON_NODE);
    node.push_back(*document.find("id"));
    node.push_back(
        JSONNode("dbkey", ("KEY-" + Narrow(OuString(document.find("id")->as_string().c_str(), 0))).c_str()));
    for (const char* section : {"children", "files"}) {
        JSONNode array(JSON_ARRAY);
        array.set_name(section);
        for (const JSONNode& element : document.at(section)) {
            array.push_back(Answer(element));
        }
        node.push_back(array);
    }
    return node;
}

void ApplyAnswer(benchmark::State& state) {
    const Project project = FullProject(state);
    const JSONNode answer = Answer(JsonSerializer(project.get()).GetJson());
    for (auto _ : state) {
        caerest::json::ApplyJsonResponseOnObject(answer, project.get());
    }
    Check(state, Narrow(project->getCAEObject(2)->getDBKey()) == "KEY-2");
    CountObjects(state);
}

void ApplyAnswerByHand(benchmark::State& state) {
    const Project project = FullProject(state);
    std::map<std::string, std::string> keys;
    caerest::json::util::ParseNode(Answer(JsonSerializer(project.get()).GetJson()), keys);
    for (auto _ : state) {
        for (const auto& [id, key] : keys) {
            project->getCAEObject(std::atoi(id.c_str()))->setDBKey(OuString(key.c_str(), 0));
        }
    }
    Check(state, Narrow(project->getCAEObject(2)->getDBKey()) == "KEY-2");
    CountObjects(state);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("parts")->Arg(1000)->Arg(100'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(ExportNode)->Apply(Sizes);
BENCHMARK(ExportText)->Apply(Sizes);
BENCHMARK(ExportTextByHand)->Apply(Sizes);
BENCHMARK(Import)->Apply(Sizes);
BENCHMARK(ImportByHand)->Apply(Sizes);
BENCHMARK(ApplyAnswer)->Apply(Sizes);
BENCHMARK(ApplyAnswerByHand)->Apply(Sizes);

}  // namespace
