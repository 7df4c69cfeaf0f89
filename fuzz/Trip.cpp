#include "Trip.h"

#include <CAEFunctions.h>
#include <EmbeddedModel.h>
#include <korvaneexchange/Compare.h>
#include <korvaneexchange/Text.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "Expect.h"
#include "format/Kinds.h"
#include "format/MemberNames.h"
#include "host/document/DocumentNode.h"

namespace {

OuString NameOfKind(CAEObject& object) {
    return OuString(CAEObject::getTypeName(object.getType()), 0);
}

/// A project whose object has the kind of the other one; the object itself.
CAEObject& MakeTarget(CAEProject& project, CAEObject& other) {
    if (other.getType() == CAE_PROJECT) {
        return project;
    }
    CAEObject* const target = korvane::CreateObject(project, other.getType(), NameOfKind(other));
    return target != nullptr ? *target : project;
}

/// An object and its document.
struct Exported {
    JSONNode document;
    CAEObject& object;
};

/// Whether the document takes a project for an object of another kind, because its additional type is the
/// name of that kind.
bool IsTakenForAnother(const Exported& exported) {
    const format::Kind kind = format::KindOfType(host::MemberText(exported.document, format::member::kType));
    return exported.object.getType() == CAE_PROJECT && kind != format::Kind::kProject &&
           kind != format::Kind::kUnknown;
}

void ExpectNoDifference(const korvane::exchange::CompareReport& report, const char* expectation) {
    for (const korvane::exchange::Entry& entry : report.entries) {
        std::fprintf(stderr, "%s\n", entry.sentence.c_str());
    }
    Expect(report.IsSame(), expectation);
}

/// The objects are the same, so are their documents, and the first document and the second object.
void ExpectSame(const Exported& first, const Exported& second, const char* expectation) {
    using korvane::exchange::Compare;
    korvane::exchange::CompareOptions options;
    options.displayNameOf = [](CAEProject& project) {
        return korvane::exchange::ToUtf8(korvane::GetDisplayName(project));
    };
    const auto expect = [&](auto& left, auto& right) {
        ExpectNoDifference(Compare(left, right, options), expectation);
        ExpectNoDifference(Compare(right, left, options), expectation);
    };
    expect(first.object, second.object);
    if (IsTakenForAnother(first) || IsTakenForAnother(second)) {
        return;
    }
    expect(first.document, second.document);
    // The other document does not say what its projects are displayed as, which is what the first calls them.
    expect(first.document, second.object);
}

}  // namespace

std::unique_ptr<CAEProject> MakeProject() {
    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"project", L"/studies");
    project->setAdditionalType(L"Simulation");
    korvane::SetCreation(*project, L"2026-03-01T09:30:00Z", L"engineer");
    return project;
}

void AddTargets(CAEProject& project) {
    for (const _tagCAEObjectType kind :
         {CAE_PART, CAE_SUBASSEMBLY, CAE_ITERATION_MODEL, CAE_VIEW_ITEM, CAE_MODEL}) {
        korvane::CreateObject(project, kind, L"target");
    }
    korvane::CreateFile(project, L"/studies/deck.inp", CAE_FILE_DECK, CAE_FORMAT_ASCII);
}

std::optional<JSONNode> ReadBytes(std::string_view bytes) {
    try {
        return libjson::parse(json_string(bytes.data(), bytes.size()));
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

JSONNode ExportDocument(CAEObject& object) {
    JsonSerializer serializer(&object);
    JSONNode document = serializer.GetJson();
    OuString text = serializer.GetJsonString();
    Expect(document.write() == text.GetAnsiBuffer(), "text and node are one document");
    Expect(libjson::parse(text.GetAnsiBuffer()) == document, "the text of a document reads back");
    return document;
}

void ExpectTrip(CAEObject& object) {
    JSONNode first = ExportDocument(object);
    if (host::MemberText(first, format::member::kType).empty()) {
        // A project without an additional type: its document is no import's.
        return;
    }
    const JSONNode before = first.duplicate();
    const std::unique_ptr<CAEProject> rebuilt = MakeProject();
    CAEObject& target = MakeTarget(*rebuilt, object);
    caerest::json::DeserializeJsonToObject(first, &target);
    Expect(first == before, "an import leaves the document as it was");
    JSONNode second = ExportDocument(target);
    if (target.getType() != object.getType() || object.getProject() == nullptr) {
        return;
    }
    ExpectSame({first, object}, {second, target}, "a rebuilt object has the same document");

    const std::unique_ptr<CAEProject> again = MakeProject();
    CAEObject& third = MakeTarget(*again, object);
    caerest::json::DeserializeJsonToObject(second, &third);
    ExpectSame({second, target}, {ExportDocument(third), third}, "a second trip changes nothing more");
}
