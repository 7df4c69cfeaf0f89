#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include "host/plot/PlotData.h"

namespace host {
namespace {

class PlotDataTest : public testing::Test {
protected:
    static void SetEntry(CAEObject& object, const OuString& name, const OuString& value,
                         const OuString& unit = L"") {
        object.setMetadataValue(name, value);
        korvane::SetMetadataUnit(object, name, unit);
    }
    CAEObject& AddPart(CAEObject& parent, const OuString& name, const OuString& mass, const OuString& unit) {
        CAEObject& part = *korvane::CreateObject(parent, CAE_PART, name);
        SetEntry(part, L"Mass", mass, unit);
        SetEntry(part, L"Stress", L"5", L"MPa");
        return part;
    }
    PlotData Read(std::optional<Field> by = {}) const {
        return ReadPlotData(*project, {FieldOf("mass"), FieldOf("stress"), std::move(by), {}, "T"});
    }

    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"Demo", L"/nowhere");
};

TEST_F(PlotDataTest, AnAxisHasTheUnitOfMostNumbers) {
    AddPart(*project, L"a", L"2", L"kg");
    AddPart(*project, L"b", L"300", L"g");
    AddPart(*project, L"c", L"4", L"kg");
    AddPart(*project, L"d", L"5", L"things");
    const PlotData data = Read();
    EXPECT_EQ(data.plot.x.unit, "kg");
    EXPECT_EQ(data.plot.y.unit, "MPa");
#if defined(_WIN32)
    ASSERT_EQ(data.plot.points.size(), 2U);
    EXPECT_EQ(data.notes.CountOf("values of 'mass' left out, because their unit cannot be converted to 'kg'"),
              2U);
#else
    ASSERT_EQ(data.plot.points.size(), 3U);
    EXPECT_DOUBLE_EQ(data.plot.points[1].x, 0.3);
    EXPECT_EQ(data.plot.points[1].label, "b\nmass: 300 g\nstress: 5 MPa");
    EXPECT_EQ(data.notes.CountOf("values of 'mass' left out, because their unit cannot be converted to 'kg'"),
              1U);
#endif
    EXPECT_TRUE(data.plot.groups.empty());
}

TEST_F(PlotDataTest, WhatAnObjectLacksIsThatOfTheObjectAbove) {
    CAEObject& study = *korvane::CreateObject(*project, CAE_MODEL, L"s");
    SetEntry(study, L"Solver", L"CalculiX");
    SetEntry(study, L"Mass", L"7", L"kg");
    CAEObject& iteration = *korvane::CreateObject(study, CAE_ITERATION, L"i");
    SetEntry(iteration, L"Stress", L"3", L"MPa");
    korvane::CreateObject(iteration, CAE_TAG, L"has neither itself");
    AddPart(*project, L"alone", L"1", L"kg");
    const PlotData data = Read(FieldOf("Solver"));
    ASSERT_EQ(data.plot.points.size(), 2U);
    EXPECT_EQ(data.plot.points[0].x, 7);
    EXPECT_EQ(data.plot.points[0].label, "s/i\nmass: 7 kg\nstress: 3 MPa\nSolver: CalculiX");
    EXPECT_EQ(data.plot.groups, (std::vector<std::string>{"CalculiX", "without Solver"}));
    EXPECT_EQ(data.plot.points[1].group, 1U);
    EXPECT_EQ(data.withX, 2U);
    EXPECT_EQ(data.withY, 2U);
}

TEST_F(PlotDataTest, NamesWhatIsTooLargeOrHasNoUnit) {
    AddPart(*project, L"a", L"1e200", L"kg");
    AddPart(*project, L"b", L"2", L"kg");
    AddPart(*project, L"c", L"2", L"");
    AddPart(*project, L"d", L"steel", L"");
    const PlotData data = Read();
    EXPECT_EQ(data.plot.points.size(), 1U);
    EXPECT_EQ(data.notes.CountOf("values of 'mass' left out, because they are too large"), 1U);
    EXPECT_EQ(data.notes.CountOf("values of 'mass' left out, because their unit cannot be converted to 'kg'"),
              1U);
    EXPECT_EQ(data.withX, 3U);
    EXPECT_EQ(NamesOfNumbers(*project), (std::vector<std::string>{"Mass", "Stress"}));
}

}  // namespace
}  // namespace host
