#include <gtest/gtest.h>

#include "host/directory/DescriptionFile.h"

namespace host {
namespace {

/// Everything that was read, a line each.
std::string TextOf(std::string_view toml) {
    const DescriptionFile file = ReadDescriptionFile(toml);
    std::string text;
    const auto add = [&](const std::string& what, const DescribedObject& object) {
        if (!object.name.empty()) {
            text += what + " name " + object.name + '\n';
        }
        if (!object.description.empty()) {
            text += what + " description " + object.description + '\n';
        }
        for (const DescribedEntry& entry : object.metadata) {
            text += what + ' ' + entry.name + ": " + entry.value + (entry.unit.empty() ? "" : " ") +
                    entry.unit + '\n';
        }
    };
    add("study", file.study);
    for (const DescribedObject& object : file.iterations) {
        add("iteration " + object.key, object);
    }
    for (const DescribedObject& object : file.parts) {
        add("part " + object.key, object);
    }
    for (const DescriptionProblem& problem : file.problems) {
        text += std::to_string(problem.place.line) + ':' + std::to_string(problem.place.column) + ' ' +
                problem.text + '\n';
    }
    return text;
}

TEST(DescriptionFile, HasStudyIterationsAndPartsInTheirOrder) {
    EXPECT_EQ(TextOf("name = \"Bracket\"\ndescription = '''Two\nlines'''\n"
                     "[metadata]\nMass = { value = 2.4, unit = \"kg\" }\nCustomer = \"ACME\"\n"
                     "[iteration.\"load-2\"]\nname = \"Second\"\nmetadata.Reviewer = \"Ada\"\n"
                     "[part.arm.metadata]\nSupplier = \"Castings\"\n[iteration.load-1.metadata]\nA = 1\n"),
              "study name Bracket\nstudy description Two\nlines\nstudy Mass: 2.4 kg\nstudy Customer: ACME\n"
              "iteration load-2 name Second\niteration load-2 Reviewer: Ada\niteration load-1 A: 1\n"
              "part arm Supplier: Castings\n");
    EXPECT_EQ(TextOf(""), "");
}

TEST(DescriptionFile, WritesEveryKindOfValueBriefly) {
    EXPECT_EQ(TextOf("[metadata]\na = 0xFF\nb = 1e3\nc = 0.1\nd = true\ne = 2026-11-22\nf = 10:30:00\n"
                     "g = 2026-11-22T10:30:00Z\nh = \"\"\ni = -7\nj = 1_000\n"),
              "study a: 255\nstudy b: 1000\nstudy c: 0.1\nstudy d: true\nstudy e: 2026-11-22\n"
              "study f: 10:30:00\nstudy g: 2026-11-22T10:30:00Z\nstudy h: \nstudy i: -7\nstudy j: 1000\n");
}

TEST(DescriptionFile, LeavesOutWhatItCannotUseAndSaysWhere) {
    const std::string give =
        "give a text, a number, a date, true, false, or { value = 2.4, unit = \"kg\" } with these\n";
    EXPECT_EQ(
        TextOf("name = 5\n  nmae = \"x\"\n[metadata]\nok = 1\nlist = [1]\nnone = { unit = \"kg\" }\n"
               "more = { value = 1, unti = \"kg\" }\nOK = 2\nbig = inf\n\"\" = 1\nnul = \"a\\u0000\"\n"),
        "study ok: 1\n1:1 'name' is left out: give a text in quotes\n"
        "2:3 'nmae' is left out: it is not known here; known are name, description, metadata, iteration "
        "and part\n"
        "5:1 'list' is left out: " +
            give + "6:1 'none' is left out: " + give + "7:1 'more' is left out: " + give +
            "8:1 'OK' is left out: the metadata have it already, and letter case does not count\n"
            "9:1 'big' is left out: " +
            give + "10:1 '' is left out: an entry needs a name\n11:1 'nul' is left out: " + give);
    EXPECT_EQ(TextOf("metadata = 1\niteration = 2\n[part]\narm = 1\n[part.leg]\nunit = \"mm\"\n"),
              "1:1 'metadata' is left out: write [metadata], and below it lines like Mass = 2.4\n"
              "2:1 'iteration' is left out: write [iteration.NAME], with the name of an object of the study\n"
              "4:1 'arm' is left out: write [part.NAME], with the name of an object of the study\n"
              "6:1 'unit' is left out: it is not known here; known are name, description and metadata\n");
}

TEST(DescriptionFile, IsLeftOutIfItIsNotToml) {
    const DescriptionFile file = ReadDescriptionFile("name = \"a\"\nx = = 1\n");
    EXPECT_TRUE(file.study.name.empty());
    ASSERT_EQ(file.problems.size(), 1U);
    EXPECT_EQ(file.problems[0].place.line, 2U);
    EXPECT_EQ(file.problems[0].place.column, 5U);
    EXPECT_TRUE(file.problems[0].text.starts_with("the file is left out, because it is not TOML: "))
        << file.problems[0].text;
}

TEST(DescriptionFile, IsLeftOutWithSignsThatTheParserDoesNotExpect) {
    using namespace std::string_view_literals;
    for (const std::string_view text : {"[\t\0tadata]\n"sv, "[ $]\n"sv, "[[ \x01]]\n"sv}) {
        EXPECT_EQ(ReadDescriptionFile(text).problems.size(), 1U);
    }
}

TEST(DescriptionFile, ReadsAnyCharacterBehindALineThatIsContinued) {
    EXPECT_EQ(TextOf("name = \"\"\"a\\\n\xE3\x80\x81 \xC3\xBC\"\"\""), "study name a\xE3\x80\x81 \xC3\xBC\n");
}

TEST(DescriptionFile, HasLimits) {
    EXPECT_EQ(TextOf(std::string((std::size_t{1} << 20U) + 1, '\n')),
              "1:1 the file is left out: it is longer than a megabyte\n");
    std::string dots = "\n\"a.b\"";
    for (int dot = 0; dot < 300000; ++dot) {
        dots += ".a";
    }
    EXPECT_EQ(TextOf(dots + " = 1"), "2:1 the file is left out: a name has too many dots\n");
    // In texts dots are only dots.
    EXPECT_EQ(TextOf("description = \"" + std::string(100, '.') + "\"\n# " + std::string(100, '.')),
              "study description " + std::string(100, '.') + "\n");
    const DescriptionFile nested = ReadDescriptionFile("a = " + std::string(500000, '['));
    EXPECT_EQ(nested.problems.size(), 1U);
}

}  // namespace
}  // namespace host
