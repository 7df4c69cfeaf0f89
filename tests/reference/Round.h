#pragma once

#include <OuString.h>
#include <libjson.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "RandomModel.h"
#include "Reading.h"

/// One thing that is asked of a reading.
struct Action {
    enum class Kind {
        kDocument,
        kDocumentText,
        kImport,
        kImportOfExport,
        kApplyAnswer,
        kFlatten,
        kObjectNodeOver,
        kFileRecord,
        kSections,
        kVersions,
        kFullVersions,
        kImportMembers,
        kImportMetadata,
        kImportChildren,
        kImportFiles,
        kImportVersions,
        kImportLooseMetadata,
        kImportFileRecord,
        kResolveReference,
        kSmallThings,
    };

    /// The object is the next one that has versions or is of the class, if there is one.
    enum class Preference { kNone, kPart, kSubAssembly, kRunAssembly, kVersions };

    Kind kind = Kind::kDocument;
    /// Which of the model's objects it is done to, counted around; none if negative. With a version, which of
    /// the object's.
    int object = -1;
    Preference preference = Preference::kNone;
    int version = -1;
    int otherObject = 0;
    JSONNode node{JSON_NODE};
    OuString mode;
    std::uint64_t choice = 0;
};

/// An odd answer of the object model.
struct Oddity {
    std::string operation;
    /// The object that is asked; every one if negative.
    int asked = -1;
    bool always = false;
    int status = 0;
    std::optional<int> identifier;
    int type = 0;
    /// Objects that are answered with; null if negative.
    int answer = -1;
    std::vector<int> children;
    const char* text = nullptr;
};

/// A model and what is done to it, one action after the other.
struct Round {
    libjson::text_units units = libjson::text_units::bytes;
    RandomModel::Steps steps;
    std::vector<Oddity> oddities;
    std::vector<Action> actions;
    /// The action in which the object model throws, and how many of its operations do their work before.
    int throwingAction = -1;
    int throwsAfter = 0;
};

Round RandomRound(std::uint64_t seed);

/// Does the round through the reading, on a model of its own, and tells everything that came of it: the calls
/// into the object model, what was returned or thrown, and the state of the model at the end.
std::vector<std::string> Run(const Round& round, Reading& reading);

/// The round for people.
std::string Describe(const Round& round);

/// The smallest round found that still makes a difference between the two readings, as the given one does.
Round Shrink(const Round& round, Reading& first, Reading& second);
