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

/// What is read of a file with this line between two good ones, and the end of the sentence about it.
std::string AroundLine(const std::string& line, const std::string& ending) {
    const DescriptionFile file = ReadDescriptionFile("[metadata]\nA = 1\n" + line + "\nB = 2\n");
    std::string names;
    for (const DescribedEntry& entry : file.study.metadata) {
        names += entry.name;
    }
    if (file.problems.size() != 1 || file.problems[0].place.line != 3) {
        return "not one problem in line 3";
    }
    const std::string& text = file.problems[0].text;
    return names +
           (text.starts_with("the line is left out, because it is not TOML: ") && text.ends_with(ending)
                ? ""
                : ": " + text);
}

TEST(DescriptionFile, LeavesOutALineThatIsNotTomlAndSaysWhatMayBeMeant) {
    EXPECT_EQ(AroundLine("Mass = 2,4", "; the decimal sign is a point"), "AB");
    EXPECT_EQ(AroundLine("Mass = -12.75 kg/m^2", "; write { value = -12.75, unit = \"kg/m^2\" }"), "AB");
    EXPECT_EQ(AroundLine("Mass = 2.4kg", "; write { value = 2.4, unit = \"kg\" }"), "AB");
    EXPECT_EQ(AroundLine("Gap = 0 mm", "; write { value = 0, unit = \"mm\" }"), "AB");
    for (const char* const noUnit :
         {"Day = 2026-13-01", "Time = 10:99:00", "Count = 1 000", "Code = 0xG", "A.B = 1 # x"}) {
        const DescriptionFile file = ReadDescriptionFile("A = 1\n" + std::string(noUnit));
        ASSERT_EQ(file.problems.size(), 2U) << noUnit;
        EXPECT_EQ(file.problems[1].text.find("unit ="), std::string::npos) << file.problems[1].text;
    }
    EXPECT_EQ(AroundLine("Mass = { value = 2, unit = kg }", "could not determine value type"), "AB");
    EXPECT_EQ(AroundLine("Largest Displacement = 2", "; a name with blanks stands in quotes"), "AB");
    EXPECT_EQ(AroundLine("Customer = ACME # ours", "; a text stands in quotes"), "AB");
    EXPECT_EQ(AroundLine("Customer \"ACME\"", "; an entry is NAME = VALUE"), "AB");
    EXPECT_EQ(AroundLine("Mass =\r", "expected value, saw '\\r'"), "AB");
    EXPECT_EQ(AroundLine("A = 3", "cannot redefine existing integer 'A'"), "AB");
    EXPECT_EQ(AroundLine("Mass = 010", "leading zeroes are prohibited"), "AB");
    EXPECT_EQ(AroundLine("Mass = + ", "saw '+'"),
              "AB: " + ReadDescriptionFile("Mass = + ").problems.at(0).text);
}

TEST(DescriptionFile, SaysAllProblemsInTheOrderOfTheLines) {
    EXPECT_EQ(
        TextOf("nmae = \"x\"\nMass = 2,4\nname = 5"),
        "1:1 'nmae' is left out: it is not known here; known are name, description, metadata, iteration and "
        "part\n"
        "2:9 the line is left out, because it is not TOML: Error while parsing key-value pair: expected a "
        "comment or whitespace, saw ','; the decimal sign is a point\n"
        "3:1 'name' is left out: give a text in quotes\n");
}

TEST(DescriptionFile, IsLeftOutIfALineThatIsNotTomlChangesWhatFollows) {
    // Without the line, what stands below it would belong to another table, or be no text any more.
    for (const char* const bad :
         {"[meta data]\nA = 1\n", "[[iteration\n", "name = 1 \"\"\"\nMass = 5\n\"\"\"\n",
          "name = 1 '''\nMass = 5\n'''\n", "list = [1,\n2\nMass = 5\n]\n",
          "name = \"\"\"x\n\\q\nMass = 5\n\"\"\"\n", "[metadata]\n"}) {
        const DescriptionFile file =
            ReadDescriptionFile("[metadata]\nB = 2\n" + std::string(bad) + "C = 3\n");
        EXPECT_TRUE(file.study.metadata.empty()) << bad;
        ASSERT_EQ(file.problems.size(), 1U) << bad;
        EXPECT_TRUE(file.problems[0].text.starts_with("the file is left out, because it is not TOML: "))
            << file.problems[0].text;
    }
}

TEST(DescriptionFile, IsLeftOutIfManyLinesAreNotToml) {
    const std::string good = "name = \"a\"\n";
    std::string text = good;
    for (int line = 0; line < 10; ++line) {
        text += "x = = 1\n";
    }
    EXPECT_EQ(ReadDescriptionFile(text).study.name, "a");
    EXPECT_EQ(ReadDescriptionFile(text).problems.size(), 10U);
    const DescriptionFile file = ReadDescriptionFile(text + "x = = 1\n");
    EXPECT_EQ(file.study.name, "");
    ASSERT_EQ(file.problems.size(), 1U);
    EXPECT_TRUE(file.problems[0].text.starts_with("the file is left out, because it is not TOML: "));
    EXPECT_EQ(file.problems[0].place.line, 12U);
    EXPECT_EQ(file.problems[0].place.column, 5U);
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
