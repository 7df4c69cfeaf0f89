#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "host/model/ModelReader.h"
#include "support/TemporaryDirectory.h"

namespace host {

/// A brick with the edges of 1, and behind its corners the tip of a pyramid on top of it.
inline const std::vector<Position> kBrickUnderPyramid = {
    {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}, {0.5, 0.5, 2}};

/// Writes down what it gets, one thing on a line.
class WritingSink : public SolverModelSink {
public:
    void AddNode(std::int64_t id, const Position& position) override {
        text += "node " + std::to_string(id);
        for (const double coordinate : position) {
            // Enough digits for the tests, without what rounding leaves.
            std::string number = std::to_string(coordinate == 0 ? 0.0 : coordinate);
            number.erase(number.find_last_not_of('0') + 1);
            text += ' ' + number;
        }
        text += '\n';
    }
    void AddElement(const ModelElement& element) override {
        text += std::string(element.type) + ' ' + std::to_string(element.id) + ": " +
                std::to_string(static_cast<int>(element.shape)) + '/' + std::to_string(element.order);
        for (const std::int64_t node : element.nodes) {
            text += ' ' + std::to_string(node);
        }
        text += '\n';
    }
    void BeginPart(std::string_view name) override { text += "part " + std::string(name) + '\n'; }
    void EndPart() override { text += "end part\n"; }
    void BeginInstance(std::string_view part, const Placement& placement) override {
        text += "instance of " + std::string(part) + " at " +
                std::to_string(static_cast<int>(placement.shift[0])) + " turned by " +
                std::to_string(static_cast<int>(placement.degrees)) + '\n';
    }
    void EndInstance() override { text += "end instance\n"; }

    std::string text;
};

/// A project in `root`, and what is beside it.
class ModelTest : public testing::Test {
protected:
    void SetUp() override {
        folder.MakeDirectory("root");
        limits.root = folder / "root";
        // However slow the machine is.
        limits.now = [] { return ModelLimits::Clock::time_point(); };
    }
    void Write(std::string_view name, std::string_view content) {
        folder.Write("root/" + std::string(name), content);
    }
    SolverModel Read(ModelSyntax syntax, std::string_view name = "model") {
        SolverModel model;
        const std::error_code error =
            ReadModel(folder / ("root/" + std::string(name)), syntax, limits, &sink, model);
        EXPECT_FALSE(error) << error.message();
        return model;
    }
    SolverModel ReadText(ModelSyntax syntax, std::string_view text) {
        Write("model", text);
        return Read(syntax);
    }

    TemporaryDirectory folder;
    ModelLimits limits;
    WritingSink sink;
};

/// The counts in a few words: nodes, elements, steps.
inline std::string CountsOf(const SolverModel& model) {
    const auto text = [](const std::optional<std::uint64_t>& count) {
        return count ? std::to_string(*count) : std::string("-");
    };
    return text(model.nodes) + ' ' + text(model.elements) + ' ' + text(model.steps);
}

}  // namespace host
