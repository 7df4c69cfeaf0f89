#pragma once

#include <gtest/gtest.h>
#include <korvaneexchange/ImportDocument.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "objectjson/RecordingSupport.h"
#include "support/ModelBuilders.h"

/// What the tests of KorvaneExchange's imports and answers have in common.

/// The calls of a recording that change the object model.
inline Notes AllChangingCalls(const Notes& recording) {
    Notes changes;
    for (const std::string& call : recording) {
        const std::size_t open = call.find('(');
        const std::size_t scope = call.find("::");
        const std::string name = call.substr(scope < open ? scope + 2 : 0);
        if (!name.starts_with("get") && !name.starts_with("Get") && !name.starts_with("CAE")) {
            changes.push_back(call);
        }
    }
    return changes;
}

/// The same without those on objects that have no identifier: new files that are read and thrown away.
inline Notes ChangingCalls(const Notes& recording) {
    Notes changes = AllChangingCalls(recording);
    std::erase_if(changes, [](const std::string& call) { return call.find("(#0") != std::string::npos; });
    return changes;
}

/// The calls of the body that change the object model, one a line.
inline std::string ChangesBy(const std::function<void()>& body) {
    korvane::StartRecording();
    body();
    return Lines(ChangingCalls(korvane::TakeRecording()));
}

using ReasonFilter = std::function<bool(korvane::exchange::Reason)>;

/// The entries whose reasons pass, one a line: pointer, reason, identifier.
inline std::string Listed(const korvane::exchange::Report& report, const ReasonFilter& passes) {
    std::string text;
    for (const korvane::exchange::Entry& entry : report.entries) {
        if (passes(entry.reason)) {
            text += entry.pointer + " " + std::string(NameOf(entry.reason)) + " #" +
                    std::to_string(entry.identifier) + "\n";
        }
    }
    return text;
}

/// All entries but those about what every document has and no import uses.
inline std::string Listed(const korvane::exchange::Report& report) {
    return Listed(report, [](auto reason) { return reason != korvane::exchange::Reason::kFixed; });
}

inline std::string ListedChanges(const korvane::exchange::Report& report) {
    return Listed(report, korvane::exchange::IsChange);
}

/// Every entry with all that it says, one a line.
inline std::string Whole(const korvane::exchange::Report& report) {
    std::string text;
    for (const korvane::exchange::Entry& entry : report.entries) {
        text += entry.pointer + " " + std::string(NameOf(entry.reason)) + " #" +
                std::to_string(entry.identifier) + " " + entry.subject + ": " + entry.sentence + "\n";
    }
    return text;
}

/// The text without the identifiers of objects, which a dry run does not have for what it would make.
inline std::string Unnumbered(const std::string& text) {
    std::string left;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const std::string_view rest = std::string_view(text).substr(place);
        if (rest.starts_with(" (id ")) {
            place += rest.find(')');
        } else if (rest.starts_with(" #")) {
            place += rest.find(' ', 1) - 1;
        } else {
            left += text[place];
        }
    }
    return left;
}

inline std::vector<std::size_t> Numbers(const korvane::exchange::ImportReport& report) {
    std::vector<std::size_t> numbers(report.counts.begin(), report.counts.end());
    numbers.insert(numbers.end(),
                   {report.membersTaken, report.objectsAdded, report.objectsMatched, report.objectsMoved,
                    report.objectsRemoved, report.filesAdded, report.filesMatched, report.filesAttached,
                    report.filesAsChildren, report.keys, report.viewItems, report.viewItemsLinked,
                    static_cast<std::size_t>(report.root), report.hasRoot ? 1U : 0U, report.unlisted,
                    report.elements, report.elementsTaken});
    return numbers;
}

/// The project, an object a line, indented by its depth: `#2 bracket K-1 {Mass=3} [#3 mesh.inp F-1]`; the
/// numbers of kinds, dates and what is empty left out.
inline std::string Outline(CAEProject& project) {
    using korvane::exchange::ToUtf8;
    const auto said = [](const OuString& text) { return text.IsEmpty() ? "" : " " + ToUtf8(text); };
    const auto nameOf = [&said](const CAEObject& object) {
        OuString name;
        object.getName(name);
        return said(name);
    };
    std::string text;
    korvane::VisitTree(project, [&](CAEObject& object, int depth) {
        text += std::string(static_cast<std::size_t>(depth) * 2, ' ') + "#" + std::to_string(object.getID()) +
                nameOf(object) + said(object.getDBKey());
        if (!object.getLinkDBKey().IsEmpty()) {
            text += " ->" + ToUtf8(object.getLinkDBKey());
        }
        if (const auto* item = dynamic_cast<CAEViewItem*>(&object)) {
            const int shown = korvane::GetReferencedObject(*item);
            text += shown != 0 ? " shows #" + std::to_string(shown) : "";
        }
        for (const korvane::MetadataValues& entry : korvane::GetMetadata(object)) {
            text += " {" + ToUtf8(entry.name) + "=" + ToUtf8(entry.value) + said(entry.unit) + "}";
        }
        for (const int id : korvane::GetFileRoles(object).files) {
            if (CAEFile* const file = project.getFile(id)) {
                text += " [#" + std::to_string(id) + nameOf(*file) + said(file->getDBKey()) + "]";
            }
        }
        text += "\n";
    });
    return text;
}

/// A project and imports onto it.
class ExchangeImportTest : public testing::Test {
protected:
    using Reason = korvane::exchange::Reason;
    using Match = korvane::exchange::Match;
    using ImportOptions = korvane::exchange::ImportOptions;
    using ImportReport = korvane::exchange::ImportReport;

    ImportReport Import(const std::string& text, CAEObject& target, const ImportOptions& options = {}) {
        const JSONNode document = libjson::parse(text.c_str());
        const json_string before = document.write();
        ImportReport report = korvane::exchange::ImportDocument(document, target, options);
        EXPECT_EQ(document.write(), before);
        return report;
    }
    ImportReport Import(const std::string& text, const ImportOptions& options = {}) {
        return Import(text, *project_, options);
    }

    /// Updates after a dry run that says the same and changes nothing, and then once more, when nothing is
    /// left to do.
    ImportReport Update(const std::string& text, CAEObject& target,
                        ImportOptions options = {.match = Match::kByKey}) {
        options.match = Match::kByKey;
        const std::string before = Outline(*project_);
        options.dryRun = true;
        ImportReport said;
        EXPECT_EQ(ChangesBy([&] { said = Import(text, target, options); }), "") << "in a dry run";
        EXPECT_EQ(Outline(*project_), before);
        options.dryRun = false;
        ImportReport done = Import(text, target, options);
        EXPECT_EQ(Unnumbered(Whole(said)), Unnumbered(Whole(done)));
        EXPECT_EQ(Numbers(said), Numbers(done));
        const std::string after = Outline(*project_);
        ImportReport second;
        EXPECT_EQ(ChangesBy([&] { second = Import(text, target, options); }), "") << "the second time";
        EXPECT_EQ(ListedChanges(second), "");
        EXPECT_FALSE(second.HasChanged());
        EXPECT_EQ(second.membersTaken, done.membersTaken);
        EXPECT_EQ(Outline(*project_), after);
        return done;
    }
    ImportReport Update(const std::string& text, const ImportOptions& options = {.match = Match::kByKey}) {
        return Update(text, *project_, options);
    }

    TestProject project_;
};
