// JSONNode beside RapidJSON and nlohmann-json. All of them work on the same document, which is shaped like
// those of objects: a header, metadata, children and files in every object.

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>

#include "libjson.h"

namespace {

/// How a document is made, read, written and copied with libjson. The other libraries below mirror it.
struct Libjson {
    using Text = json_string;
    using Document = JSONNode;
    using Value = JSONNode;

    class Maker {
    public:
        Value Object(const char* name) { return Named(JSON_NODE, name); }
        Value Array(const char* name) { return Named(JSON_ARRAY, name); }
        void AddText(Value& object, const char* name, const std::string& text) {
            object.push_back(JSONNode(name, text.c_str()));
        }
        void AddMember(Value& object, const char*, Value&& member) { object.push_back(member); }
        void AddElement(Value& array, Value&& element) { array.push_back(element); }
        Document Finish(Value&& root) { return std::move(root); }

    private:
        static Value Named(char type, const char* name) {
            Value value(type);
            value.set_name(name);
            return value;
        }
    };

    static Document Parse(const Text& text) { return libjson::parse(text); }
    static std::size_t Write(const Document& document) { return document.write().size(); }
    static Document Duplicate(const Document& document) { return document.duplicate(); }
    /// A copy with one more member.
    static Document CopyAndAdd(const Document& document) {
        Document copy(document);
        copy.push_back(JSONNode("subType", "SDM"));
        return copy;
    }
    static std::size_t Size(const Document& document) { return document.size(); }
};

struct Rapid {
    using Text = std::string;
    using Document = rapidjson::Document;
    using Value = rapidjson::Value;

    class Maker {
    public:
        Value Object(const char*) { return Value(rapidjson::kObjectType); }
        Value Array(const char*) { return Value(rapidjson::kArrayType); }
        void AddText(Value& object, const char* name, const std::string& text) {
            AddMember(object, name,
                      Value(text.c_str(), static_cast<rapidjson::SizeType>(text.size()), allocator()));
        }
        void AddMember(Value& object, const char* name, Value&& member) {
            object.AddMember(Value(name, allocator()), member, allocator());
        }
        void AddElement(Value& array, Value&& element) { array.PushBack(element, allocator()); }
        Document Finish(Value&& root) {
            static_cast<Value&>(document_) = std::move(root);
            return std::move(document_);
        }

    private:
        Document::AllocatorType& allocator() { return document_.GetAllocator(); }
        Document document_;
    };

    static Document Parse(const Text& text) {
        Document document;
        document.Parse(text.data(), text.size());
        return document;
    }
    static std::size_t Write(const Document& document) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        return std::string(buffer.GetString(), buffer.GetSize()).size();
    }
    static Document Duplicate(const Document& document) {
        Document copy;
        copy.CopyFrom(document, copy.GetAllocator());
        return copy;
    }
    static Document CopyAndAdd(const Document& document) {
        Document copy = Duplicate(document);
        copy.AddMember("subType", "SDM", copy.GetAllocator());
        return copy;
    }
    static std::size_t Size(const Document& document) { return document.MemberCount(); }
};

struct Nlohmann {
    using Text = std::string;
    using Document = nlohmann::ordered_json;
    using Value = nlohmann::ordered_json;

    class Maker {
    public:
        Value Object(const char*) { return Value::object(); }
        Value Array(const char*) { return Value::array(); }
        void AddText(Value& object, const char* name, const std::string& text) { object[name] = text; }
        void AddMember(Value& object, const char* name, Value&& member) { object[name] = std::move(member); }
        void AddElement(Value& array, Value&& element) { array.push_back(std::move(element)); }
        Document Finish(Value&& root) { return std::move(root); }
    };

    static Document Parse(const Text& text) { return Document::parse(text); }
    static std::size_t Write(const Document& document) { return document.dump().size(); }
    static Document Duplicate(const Document& document) { return document; }
    static Document CopyAndAdd(const Document& document) {
        Document copy = document;
        copy["subType"] = "SDM";
        return copy;
    }
    static std::size_t Size(const Document& document) { return document.size(); }
};

/// An object with a number of children at each level beneath it, all of them with metadata, some with a file.
template <class Library>
class ObjectDocument {
public:
    explicit ObjectDocument(int childrenPerObject) : childrenPerObject_(childrenPerObject) {}

    typename Library::Document Make(int levels) { return maker_.Finish(MakeObject(levels)); }
    int Objects() const { return lastIdentifier_; }

private:
    using Value = typename Library::Value;

    Value MakeObject(int levels) {
        const std::string identifier = std::to_string(++lastIdentifier_);
        Value object = maker_.Object("");
        maker_.AddText(object, "id", identifier);
        maker_.AddText(object, "name", "Front longitudinal member " + identifier);
        maker_.AddText(object, "createdDate", "2026-03-17T09:41:27Z");
        maker_.AddText(object, "createdBy", "engineer");
        maker_.AddText(object, "type", levels > 0 ? "SubAssembly" : "Part");
        maker_.AddText(object, "dbkey", "DB/" + std::to_string(lastIdentifier_ * 7919LL));
        maker_.AddMember(object, "metaData", MakeMetadata(identifier));
        Value children = maker_.Array("children");
        for (int child = 0; levels > 0 && child < childrenPerObject_; ++child) {
            maker_.AddElement(children, MakeObject(levels - 1));
        }
        maker_.AddMember(object, "children", std::move(children));
        Value files = maker_.Array("files");
        if (levels == 0) {
            maker_.AddElement(files, MakeFile(identifier));
        }
        maker_.AddMember(object, "files", std::move(files));
        return object;
    }

    Value MakeMetadata(const std::string& identifier) {
        Value metadata = maker_.Object("metaData");
        for (const char* name : {"Mass", "Material", "Thickness"}) {
            Value entry = maker_.Object(name);
            maker_.AddText(entry, "value", "1." + identifier);
            maker_.AddText(entry, "metaDataType", "Double");
            maker_.AddMember(metadata, name, std::move(entry));
        }
        return metadata;
    }

    Value MakeFile(const std::string& identifier) {
        Value file = maker_.Object("");
        maker_.AddText(file, "id", "9" + identifier);
        maker_.AddText(file, "name", "part_" + identifier + ".nas");
        maker_.AddText(file, "fileType", "Mesh");
        maker_.AddText(file, "fileFormat", "Nastran");
        maker_.AddText(file, "locationType", "Vault");
        maker_.AddText(file, "filePath", "");
        return file;
    }

    const int childrenPerObject_;
    int lastIdentifier_ = 0;
    typename Library::Maker maker_;
};

constexpr int kChildrenPerObject = 10;

/// The levels beneath the root: 1,111 objects with 3 of them, 111,111 with 5.
int Levels(const benchmark::State& state) {
    return static_cast<int>(state.range(0));
}

template <class Library>
typename Library::Document MakeDocument(int levels) {
    return ObjectDocument<Library>(kChildrenPerObject).Make(levels);
}

json_string WrittenText(int levels) {
    return MakeDocument<Libjson>(levels).write();
}

void CountBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
}

void Check(benchmark::State& state, bool right) {
    if (!right) {
        state.SkipWithError("the document is not what it should be");
    }
}

template <class Library>
void Parse(benchmark::State& state) {
    const json_string written = WrittenText(Levels(state));
    const typename Library::Text text(written.c_str(), written.size());
    for (auto _ : state) {
        benchmark::DoNotOptimize(Library::Parse(text));
    }
    Check(state, Library::Size(Library::Parse(text)) == 9);
    CountBytes(state, text.size());
}

template <class Library>
void Write(benchmark::State& state) {
    const typename Library::Document document = MakeDocument<Library>(Levels(state));
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = Library::Write(document);
    }
    // The other libraries leave slashes unescaped.
    const std::size_t expected = WrittenText(Levels(state)).size();
    Check(state, bytes <= expected && bytes > expected * 95 / 100);
    CountBytes(state, bytes);
}

template <class Library>
void Build(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(MakeDocument<Library>(Levels(state)));
    }
    Check(state, Library::Size(MakeDocument<Library>(Levels(state))) == 9);
    CountBytes(state, WrittenText(Levels(state)).size());
}

template <class Library>
void Duplicate(benchmark::State& state) {
    const typename Library::Document document = MakeDocument<Library>(Levels(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(Library::Duplicate(document));
    }
    Check(state, Library::Size(Library::Duplicate(document)) == 9);
    CountBytes(state, WrittenText(Levels(state)).size());
}

template <class Library>
void CopyAndAdd(benchmark::State& state) {
    const typename Library::Document document = MakeDocument<Library>(Levels(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(Library::CopyAndAdd(document));
    }
    Check(state, Library::Size(Library::CopyAndAdd(document)) == 10);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("levels")->Arg(3)->Arg(5)->Unit(benchmark::kMillisecond);
}

BENCHMARK(Parse<Libjson>)->Apply(Sizes);
BENCHMARK(Parse<Rapid>)->Apply(Sizes);
BENCHMARK(Parse<Nlohmann>)->Apply(Sizes);
BENCHMARK(Write<Libjson>)->Apply(Sizes);
BENCHMARK(Write<Rapid>)->Apply(Sizes);
BENCHMARK(Write<Nlohmann>)->Apply(Sizes);
BENCHMARK(Build<Libjson>)->Apply(Sizes);
BENCHMARK(Build<Rapid>)->Apply(Sizes);
BENCHMARK(Build<Nlohmann>)->Apply(Sizes);
BENCHMARK(Duplicate<Libjson>)->Apply(Sizes);
BENCHMARK(Duplicate<Rapid>)->Apply(Sizes);
BENCHMARK(Duplicate<Nlohmann>)->Apply(Sizes);
BENCHMARK(CopyAndAdd<Libjson>)->Apply(Sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(CopyAndAdd<Rapid>)->Apply(Sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(CopyAndAdd<Nlohmann>)->Apply(Sizes)->Unit(benchmark::kMicrosecond);

}  // namespace
