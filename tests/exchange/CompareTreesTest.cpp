#include <EmbeddedRecording.h>
#include <korvaneexchange/Text.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <algorithm>
#include <stdexcept>

#include "CompareSupport.h"
#include "RandomTree.h"
#include "support/LongRun.h"

namespace korvane::exchange {
namespace {

JSONNode Export(CAEObject& object) {
    return JsonSerializer(&object).GetJson();
}

CompareOptions WithDisplayNames() {
    CompareOptions options;
    options.displayNameOf = [](CAEProject& project) { return ToUtf8(GetDisplayName(project)); };
    return options;
}

/// A second project, made from the document of the first.
struct Rebuilt {
    explicit Rebuilt(CAEProject& project) {
        JSONNode document = Export(project);
        caerest::json::DeserializeJsonToObject(document, &*copy);
    }

    TestProject copy{L"Rebuilt"};
};

TEST(CompareTrees, ARebuiltTreeIsTheSame) {
    const unsigned trees = kIsSanitized && !IsLongRun() ? 500 : 3000;
    for (unsigned seed = 1; seed <= trees; ++seed) {
        const RandomTree tree(seed);
        const Rebuilt rebuilt(*tree);
        const CompareReport report = CompareBothWays(*tree, *rebuilt.copy, WithDisplayNames());
        ASSERT_EQ(Lines(report), "") << seed;
        ASSERT_TRUE(report.IsSame());
    }
}

TEST(CompareTrees, EveryPairIsTold) {
    const TestProject first(L"P");
    const TestProject second(L"P");
    CreateObject(*first, CAE_PART, L"A");
    CreateObject(*first, CAE_PART, L"removed");
    // The same part has another identifier there.
    CreateObject(*second, CAE_PART, L"added");
    CreateObject(*second, CAE_PART, L"A");
    std::vector<std::pair<int, int>> pairs;
    CompareOptions options;
    options.pairs = [&pairs](int left, int right) { pairs.emplace_back(left, right); };
    const CompareReport report = Compare(*first, *second, options);
    using Pairs = std::vector<std::pair<int, int>>;
    EXPECT_EQ(pairs, (Pairs{{1, 1}, {2, 3}}));
    EXPECT_EQ(report.Count(Reason::kAdded), 1U);
    pairs.clear();
    Compare(Export(*first), *second, options);
    EXPECT_EQ(pairs, (Pairs{{0, 1}, {0, 3}}));
}

TEST(CompareTrees, ValuesWithUnitsAreShownAsTheHostWantsThem) {
    const TestProject first(L"P");
    const TestProject second(L"P");
    for (const TestProject* const project : {&first, &second}) {
        CreateObject(**project, CAE_PART, L"A");
    }
    const auto set = [](const TestProject& project, int id, const OuString& name, const OuString& value,
                        const OuString& unit, const OuString& type = L"") {
        CAEObject* const object = project->getCAEObject(id);
        SetMetadata(object != nullptr ? *object : *project, name, value, unit, type);
    };
    set(first, 1, L"Root", L"1", L"kg");
    set(second, 1, L"Root", L"2", L"kg");
    set(first, 2, L"Changed", L"1", L"m");
    set(second, 2, L"Changed", L"2", L"m");
    // The host shows both of them as "1 kB".
    set(first, 2, L"Alike", L"1000", L"B");
    set(second, 2, L"Alike", L"1001", L"B");
    // An import puts the unit there.
    set(first, 2, L"Type", L"1", L"", L"N");
    set(second, 2, L"Type", L"2", L"", L"N");
    set(first, 2, L"UnitInTheFirst", L"1", L"s");
    set(second, 2, L"UnitInTheFirst", L"2", L"");
    set(first, 2, L"WithoutUnit", L"1", L"");
    set(second, 2, L"WithoutUnit", L"2", L"");
    set(first, 2, L"Removed", L"3", L"K");
    set(second, 2, L"Added", L"4", L"K");
    CompareOptions options;
    options.shownValue = [](std::string_view value, std::string_view unit) {
        return unit == "B" ? "1 kB" : "<" + std::string(value) + "|" + std::string(unit) + ">";
    };
    const std::string lines = Lines(CompareBothWays(*first, *second, options));
    const auto expect = [&](const std::string& name, const std::string& what,
                            const std::string& place = "/children/0") {
        const std::string line = "~ [" + place + "/metaData/" + name + "] ";
        const std::size_t begin = lines.find(line);
        ASSERT_NE(begin, std::string::npos) << name << "\n" << lines;
        const std::string found = lines.substr(begin, lines.find('\n', begin) - begin);
        EXPECT_TRUE(found.ends_with(": metadata '" + name + "' " + what)) << found;
    };
    expect("Root", "changed from <1|kg> to <2|kg>", "");
    expect("Changed", "changed from <1|m> to <2|m>");
    expect("Alike", "changed from '1000' B to '1001' B");
    expect("Type", "changed from <1|N> to <2|N>");
    expect("UnitInTheFirst", "changed from <1|s> to <2|s>");
    expect("WithoutUnit", "changed from '1' to '2'");
    expect("Removed", "removed <3|K>");
    expect("Added", "added <4|K>");
    // A document has no units.
    EXPECT_NE(
        Lines(Compare(Export(*first), Export(*second), options)).find("'Changed' changed from '1' to '2'"),
        std::string::npos);
}

TEST(CompareTrees, TreesAndTheirDocumentsHaveTheSameReport) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        const RandomTree first(seed, 40);
        const RandomTree second(seed, 45);
        const JSONNode firstDocument = Export(*first);
        const JSONNode secondDocument = Export(*second);
        const std::string expected = Lines(CompareBothWays(*first, *second));
        ASSERT_EQ(Lines(Compare(*first, secondDocument)), expected) << seed;
        ASSERT_EQ(Lines(Compare(firstDocument, *second)), expected) << seed;
        ASSERT_EQ(Lines(Compare(firstDocument, secondDocument)), expected) << seed;
    }
}

TEST(CompareTrees, RandomTreesAreComparedAlikeInBothDirections) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        const RandomTree first(seed);
        const RandomTree second(seed + 1000);
        ASSERT_FALSE(CompareBothWays(*first, *second).IsSame()) << seed;
    }
}

TEST(CompareTrees, EntriesHaveTheIdentifiersOfObjects) {
    TestProject first;
    TestProject second;
    first.Add(CAE_TAG, L"a");
    second.Add(CAE_PART, L"p");
    second.Add(CAE_TAG, L"a").setName(L"b");
    const auto identifiers = [](const CompareReport& report) {
        std::string text;
        for (const Entry& entry : report.entries) {
            text += std::to_string(entry.identifier) + " ";
        }
        return text;
    };
    EXPECT_EQ(Lines(Compare(*first, *second)),
              "+ [/children/0] Project/p: added\n"
              "~ [/children/1/name] Project/b: name changed from 'a' to 'b'\n");
    EXPECT_EQ(identifiers(Compare(*first, *second)), "2 3 ");
    EXPECT_EQ(identifiers(Compare(*second, *first)), "2 2 ");
    EXPECT_EQ(identifiers(Compare(*first, Export(*second))), "0 2 ");
    EXPECT_EQ(identifiers(Compare(Export(*first), *second)), "2 3 ");
    EXPECT_EQ(identifiers(Compare(Export(*first), Export(*second))), "0 0 ");
}

TEST(CompareTrees, AProjectsNameMayBeTheDisplayNameOfTheOther) {
    const auto named = [](const wchar_t* name, const wchar_t* displayName) {
        TestProject project(name);
        project->SetDisplayName(displayName);
        return project;
    };
    const TestProject a = named(L"A", L"");
    const TestProject b = named(L"B", L"A");
    const TestProject c = named(L"B", L"C");
    const JSONNode document = Export(*a);
    EXPECT_EQ(Lines(CompareBothWays(*a, *b, WithDisplayNames())), "");
    EXPECT_EQ(Lines(CompareBothWays(document, *b, WithDisplayNames())), "");
    EXPECT_EQ(Lines(CompareBothWays(document, *c, WithDisplayNames())),
              "~ [/name] B: name changed from 'A' to 'B'\n");
    EXPECT_EQ(Lines(CompareBothWays(*a, *c, WithDisplayNames())),
              "~ [/name] B: name changed from 'A' to 'B'\n");
    // Where nobody can tell.
    EXPECT_EQ(Lines(CompareBothWays(*a, *c)), "");
    EXPECT_EQ(Lines(CompareBothWays(document, Export(*c), WithDisplayNames())), "");
}

TEST(CompareTrees, AProjectIsOneWhateverItsAdditionalTypeSays) {
    for (const wchar_t* const type : {L"CAEPart", L"CAEFile", L"CAEIterationModel", L"CAESessionObject"}) {
        const auto make = [&](const wchar_t* name, const wchar_t* displayName) {
            TestProject project(name);
            project->SetDisplayName(displayName);
            project->setAdditionalType(type);
            return project;
        };
        const TestProject first = make(L"A", L"B");
        const TestProject second = make(L"B", L"C");
        EXPECT_EQ(Lines(CompareBothWays(*first, *second, WithDisplayNames())), "") << type;
        // The document of a file is of the same project, as long as its type says the same.
        EXPECT_EQ(Lines(CompareBothWays(*first, Export(*second), WithDisplayNames())), "") << type;
        EXPECT_NE(Lines(CompareBothWays(*first, *make(L"C", L"C"), WithDisplayNames())), "") << type;
    }
    TestProject project(L"A");
    project->setAdditionalType(L"CAEPart");
    CAEObject& part = project.Add(CAE_PART, L"A");
    EXPECT_EQ(Lines(CompareBothWays(*project, part)),
              "~ [/type] A: kind changed from 'a project' to 'an object'\n"
              "- [/children/0] A/A: removed\n");
}

TEST(CompareTrees, ASessionObjectIsNoProject) {
    TestProject project;
    CAEObject& session = project.Add(CAE_SESSION_OBJECT, L"a");
    const JSONNode first = Export(session);
    session.setName(L"b");
    EXPECT_EQ(Lines(CompareBothWays(first, session)), "~ [/name] b: name changed from 'a' to 'b'\n");
    EXPECT_EQ(Lines(CompareBothWays(first, Export(session))), "~ [/name] b: name changed from 'a' to 'b'\n");
}

TEST(CompareTrees, ChangesNothing) {
    const RandomTree first(1);
    const RandomTree second(2);
    StartRecording();
    Compare(*first, *second);
    const std::vector<std::string> calls = TakeRecording();
    EXPECT_GT(calls.size(), 100U);
    for (const std::string& call : calls) {
        EXPECT_EQ(call.find("::set"), std::string::npos) << call;
        EXPECT_EQ(call.find("::Set"), std::string::npos) << call;
        EXPECT_EQ(call.find("create"), std::string::npos) << call;
    }
}

std::string DocumentOfTags(std::size_t count) {
    std::string text = R"({"type":"X","children":[)";
    for (std::size_t number = 0; number < count; ++number) {
        text += std::string(number == 0 ? "" : ",") + R"({"type":"CAETAG"})";
    }
    return text + "]}";
}

TEST(CompareTrees, SaysWhereItIsAndCanBeStopped) {
    const JSONNode first = Parse(DocumentOfTags(5000));
    const JSONNode second = Parse(DocumentOfTags(6000));
    std::vector<Progress> calls;
    CompareOptions options;
    options.progress = [&](const Progress& progress) {
        calls.push_back(progress);
        return true;
    };
    const CompareReport report = Compare(first, second, options);
    EXPECT_FALSE(report.isStopped);
    EXPECT_EQ(report.Count(Reason::kAdded), 1000U);
    ASSERT_GT(calls.size(), 20U);
    EXPECT_EQ(calls.front().objects, 0U);
    EXPECT_EQ(calls.front().total, 0U);
    EXPECT_TRUE(std::ranges::is_sorted(calls, {}, &Progress::objects));
    EXPECT_EQ(calls.back().total, 2 * 11002U);
    // What there is altogether is known as soon as both are read.
    EXPECT_TRUE(std::ranges::any_of(
        calls, [](const Progress& call) { return call.objects == 11002 && call.total == 2 * call.objects; }));
    EXPECT_TRUE(std::ranges::all_of(
        calls, [](const Progress& call) { return call.total > 0 || call.objects < 11002; }));
    EXPECT_GT(calls.back().objects, 21000U);
    EXPECT_LE(calls.back().objects, calls.back().total);

    for (std::size_t last = 1; last <= calls.size(); ++last) {
        std::size_t count = 0;
        options.progress = [&](const Progress&) { return ++count < last; };
        const CompareReport stopped = Compare(first, second, options);
        EXPECT_TRUE(stopped.isStopped);
        EXPECT_EQ(count, last);
        EXPECT_LT(stopped.Count(Reason::kAdded), report.Count(Reason::kAdded));
    }
    options.progress = [](const Progress&) -> bool { throw std::out_of_range("mine"); };
    EXPECT_THROW(Compare(first, second, options), std::out_of_range);
}

}  // namespace
}  // namespace korvane::exchange
