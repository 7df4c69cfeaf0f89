#pragma once

#include <EmbeddedOddAnswers.h>

#include <string>
#include <vector>

#include "Round.h"

/// What a round speaks of by numbers, found in a model.

/// What an action is done to.
struct Subject {
    CAEObject* object = nullptr;
    CAEObject* otherObject = nullptr;
    CAEFile* file = nullptr;
    CAEObject* viewItem = nullptr;
};
Subject FindSubject(const Action& action, const RandomModel& model);

/// An odd answer before it is given.
struct PlannedAnswer {
    std::string call;
    korvane::Answer answer;
    korvane::OddAnswer::Times times = korvane::OddAnswer::kOnce;
};
/// The answers of the round; in the action that throws, the exception as well.
std::vector<PlannedAnswer> PlanAnswers(const Round& round, bool throws, const RandomModel& model);
