#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support/Process.h"
#include "support/TemporaryDirectory.h"

/// A deck in as few words as its solver's syntax allows.
inline constexpr std::string_view kDeck = "*STEP\n*STATIC\n*END STEP\n";

/// Tests that run the program in a directory of their own, with names relative to it.
class ProgramInFolder : public testing::Test {
protected:
    /// Runs the program. `input` is the name of a file that is its standard input.
    ProcessResult Run(std::vector<std::string> arguments, std::string_view input = {}) const {
        ProcessOptions options{std::move(arguments), {{"LC_ALL", "C"}}, folder.Path(), {}, {}};
        if (!input.empty()) {
            options.input = folder / input;
        }
        return RunProgram(ProgramPath("korvane-json"), options);
    }
    /// Runs it, expects that it succeeds, and gives what it said.
    std::string Do(const std::vector<std::string>& arguments) const {
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_EQ(result.output, "");
        return result.error;
    }
    /// Runs it, expects that it succeeds without a word, and gives its output.
    std::string OutputOf(const std::vector<std::string>& arguments) const {
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_EQ(result.error, "");
        return result.output;
    }
    /// Runs it and expects that it does nothing: the status, the only message, and every file as it was.
    void ExpectRefused(const std::vector<std::string>& arguments, const std::string& message,
                       int status = 1) const {
        const Content before = ContentOf(folder.Path());
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.error, "korvane-json: " + message + "\n");
        EXPECT_TRUE(ContentOf(folder.Path()) == before) << "files were changed";
    }
    /// Runs it with --dry-run and expects what the run without it says, with one line more, and every file
    /// as it was; then runs it without.
    std::string DoAfterDryRun(std::vector<std::string> arguments) const {
        const Content before = ContentOf(folder.Path());
        std::vector<std::string> dry = arguments;
        dry.emplace_back("--dry-run");
        const std::string said = Do(dry);
        EXPECT_TRUE(ContentOf(folder.Path()) == before) << "files were changed";
        std::string done = Do(arguments);
        EXPECT_EQ(said, done + "korvane-json: nothing was changed, because of --dry-run\n");
        EXPECT_TRUE(ContentOf(folder.Path()) != before);
        return done;
    }

    std::string Read(std::string_view name) const { return ReadWholeFile(folder / name); }

    TemporaryDirectory folder;
};
