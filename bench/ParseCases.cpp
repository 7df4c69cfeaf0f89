// Text to tree and back: ours beside RapidJSON, and the reading alone beside two others. RapidJSON reads
// numbers as texts, because that is what a document of libjson keeps of them.

#include <libjson.h>
#include <simdjson.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

#include "Case.h"
#include "RapidJson.h"

namespace {

void ReadWithRapid(rapidjson::Document& document, const std::string& text) {
    document.Parse<rapidjson::kParseNumbersAsStringsFlag>(text.data(), text.size());
    if (document.HasParseError()) {
        throw std::logic_error("RapidJSON refuses the document");
    }
}

/// A document with the escapes of libjson, for those that write other ones.
std::string WrittenAlike(const std::string& text) {
    rapidjson::Document document;
    ReadWithRapid(document, text);
    return RapidText(document);
}

/// Reads a text into a tree; the tree is freed outside the measurement.
template <typename Library>
class Parse : public Case {
public:
    explicit Parse(Subject& subject) : text_(subject.Text()) { subject.DropProject(); }

    void Run() override { Library::Read(document_.emplace(), text_); }
    std::string Result() override { return Library::Write(*document_); }
    void Clear() override { document_.reset(); }

private:
    typename Library::Text text_;
    std::optional<typename Library::Document> document_;
};

/// Writes a tree as text.
template <typename Library>
class Write : public Case {
public:
    explicit Write(Subject& subject) {
        Library::Read(document_, typename Library::Text(subject.Text()));
        subject.DropProject();
    }

    void Run() override { text_ = Library::Write(document_); }
    std::string Result() override { return text_; }
    void Clear() override { text_ = std::string(); }

private:
    typename Library::Document document_;
    std::string text_;
};

struct Libjson {
    using Text = json_string;
    using Document = JSONNode;
    static void Read(Document& document, const Text& text) { document = libjson::parse(text); }
    static std::string Write(const Document& document) { return document.write(); }
};

struct Rapid {
    using Text = std::string;
    using Document = rapidjson::Document;
    static void Read(Document& document, const Text& text) { ReadWithRapid(document, text); }
    static std::string Write(const Document& document) { return RapidText(document); }
};

struct Nlohmann {
    using Text = std::string;
    using Document = nlohmann::ordered_json;
    static void Read(Document& document, const Text& text) { document = Document::parse(text); }
    static std::string Write(const Document& document) { return WrittenAlike(document.dump()); }
};

struct Simd {
    using Text = simdjson::padded_string;
    struct Document {
        simdjson::dom::parser parser;
        simdjson::dom::element root;
    };
    static void Read(Document& document, const Text& text) { document.root = document.parser.parse(text); }
    static std::string Write(const Document& document) {
        return WrittenAlike(simdjson::minify(document.root));
    }
};

}  // namespace

std::vector<NamedCase> ParseCases() {
    return {
        {"parse", kSameDocument, MakeCase<Parse<Libjson>>},
        {"parse-rapidjson", kSameDocument, MakeCase<Parse<Rapid>>},
        {"parse-simdjson", kSameDocument, MakeCase<Parse<Simd>>},
        {"parse-nlohmann", kSameDocument, MakeCase<Parse<Nlohmann>>},
        {"write", kSameDocument, MakeCase<Write<Libjson>>},
        {"write-rapidjson", kSameDocument, MakeCase<Write<Rapid>>},
    };
}
