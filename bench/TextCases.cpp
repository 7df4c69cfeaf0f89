// The document as text: ours, with and without the wide form, beside the same with RapidJSON's Writer, and
// beside the asking alone.

#include <korvanejson/JsonSerializer.h>

#include <optional>
#include <stdexcept>

#include "Case.h"
#include "HandExport.h"
#include "NarrowExport.h"
#include "RapidJson.h"

namespace {

/// Takes the answers and writes nothing.
class NoTarget {
public:
    void OpenObject() {}
    void OpenObject(std::string_view) { ++texts_; }
    void OpenArray(std::string_view) {}
    void Text(std::string_view, const char*) { ++texts_; }
    void EndObject() {}
    void EndArray() {}

    long Texts() const { return texts_; }

private:
    long texts_ = 0;
};

class WriterTarget {
public:
    void OpenObject() { writer_.StartObject(); }
    void OpenObject(std::string_view name) {
        Key(name);
        writer_.StartObject();
    }
    void OpenArray(std::string_view name) {
        Key(name);
        writer_.StartArray();
    }
    void Text(std::string_view name, const char* value) {
        Key(name);
        writer_.String(value, RapidLength(value));
    }
    void EndObject() { writer_.EndObject(); }
    void EndArray() { writer_.EndArray(); }

    const rapidjson::StringBuffer& Buffer() const { return buffer_; }

private:
    void Key(std::string_view name) { writer_.Key(name.data(), RapidLength(name)); }

    rapidjson::StringBuffer buffer_;
    RapidWriter writer_{buffer_};
};

class Ask : public Case {
public:
    explicit Ask(Subject& subject) : subject_(subject) {}

    void Run() override {
        NoTarget target;
        HandExport(subject_.Project(), target).Write();
        texts_ = target.Texts();
    }
    /// The document, when as many texts were asked for as it has.
    std::string Result() override {
        WriterTarget target;
        CountingTarget counting{target};
        HandExport(subject_.Project(), counting).Write();
        if (counting.texts != texts_) {
            throw std::logic_error("asking alone asks for something else than writing");
        }
        return {target.Buffer().GetString(), target.Buffer().GetSize()};
    }

private:
    struct CountingTarget {
        void OpenObject() { target.OpenObject(); }
        void OpenObject(std::string_view name) {
            ++texts;
            target.OpenObject(name);
        }
        void OpenArray(std::string_view name) { target.OpenArray(name); }
        void Text(std::string_view name, const char* value) {
            ++texts;
            target.Text(name, value);
        }
        void EndObject() { target.EndObject(); }
        void EndArray() { target.EndArray(); }

        WriterTarget& target;
        long texts = 0;
    };

    Subject& subject_;
    long texts_ = 0;
};

class Writer : public Case {
public:
    explicit Writer(Subject& subject) : subject_(subject) {}

    void Run() override { HandExport(subject_.Project(), target_.emplace()).Write(); }
    std::string Result() override { return {target_->Buffer().GetString(), target_->Buffer().GetSize()}; }
    void Clear() override { target_.reset(); }

private:
    Subject& subject_;
    std::optional<WriterTarget> target_;
};

/// A text as wide characters, which are ASCII.
std::string Narrow(const OuString& text) {
    return {text.GetBuffer(), text.GetBuffer() + text.GetLength()};
}

class WideWriter : public Case {
public:
    explicit WideWriter(Subject& subject) : subject_(subject) {}

    void Run() override {
        WriterTarget target;
        HandExport(subject_.Project(), target).Write();
        text_ = OuString(target.Buffer().GetString(), 0);
    }
    std::string Result() override { return Narrow(text_); }
    void Clear() override { text_ = OuString(); }

private:
    Subject& subject_;
    OuString text_;
};

class Text : public Case {
public:
    explicit Text(Subject& subject) : subject_(subject) {}

    void Run() override { text_ = JsonSerializer(&subject_.Project()).GetJsonString(); }
    std::string Result() override { return Narrow(text_); }
    void Clear() override { text_ = OuString(); }

private:
    Subject& subject_;
    OuString text_;
};

/// Forgets the pages but their length.
class DroppingTaker final : public PageTaker {
public:
    void Take(const char*, std::size_t length) override { taken_ += length; }
    std::size_t Taken() const { return taken_; }

private:
    std::size_t taken_ = 0;
};

class CollectingTaker final : public PageTaker {
public:
    void Take(const char* text, std::size_t length) override { collected_.append(text, length); }
    const std::string& Collected() const { return collected_; }

private:
    std::string collected_;
};

class NarrowText : public Case {
public:
    explicit NarrowText(Subject& subject) : subject_(subject) {}

    void Run() override {
        DroppingTaker taker;
        WriteNarrow(subject_.Project(), taker);
        written_ = taker.Taken();
    }
    std::string Result() override {
        CollectingTaker taker;
        WriteNarrow(subject_.Project(), taker);
        if (taker.Collected().size() != written_) {
            throw std::logic_error("the dropped text has another length");
        }
        return taker.Collected();
    }

private:
    Subject& subject_;
    std::size_t written_ = 0;
};

}  // namespace

std::vector<NamedCase> TextCases() {
    std::vector<NamedCase> cases = {
        {"ask", kSameDocument, MakeCase<Ask>},
        {"writer-by-hand", kSameDocument, MakeCase<Writer>},
        {"writer-by-hand-wide", kSameDocument, MakeCase<WideWriter>},
        {"text", kSameDocument, MakeCase<Text>},
    };
    if (CanWriteNarrow()) {
        cases.push_back({"text-narrow", kSameDocument, MakeCase<NarrowText>});
    }
    return cases;
}
