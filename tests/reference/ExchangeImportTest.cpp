#include <EmbeddedRecording.h>
#include <gtest/gtest.h>
#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/ImportDocument.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "RandomDocuments.h"
#include "RandomModel.h"
#include "Show.h"
#include "exchange/ImportSupport.h"
#include "exchange/MemberCount.h"

// KorvaneExchange's import of random documents onto random models, beside the library's own and beside
// itself.

namespace {

using korvane::exchange::AnswerReport;
using korvane::exchange::ApplyAnswer;
using korvane::exchange::ImportDocument;
using korvane::exchange::ImportOptions;
using korvane::exchange::ImportReport;
using korvane::exchange::Match;
using korvane::exchange::Reason;

/// A round counts if both sides did all of their work.
constexpr int kLeastRounds = 20;
constexpr double kSeconds = KORVANEJSON_COMPARISON_SECONDS / 2;

/// A model and an object of it that documents are imported onto. The same seed makes the same.
class Subject {
public:
    explicit Subject(std::uint64_t seed) : random_(seed), model_(RandomSteps(random_)) {
        std::vector<CAEObject*> objects = model_.Objects();
        std::erase_if(objects, [](const CAEObject* object) { return object->getProject() == nullptr; });
        object_ = random_.OneIn(3) || objects.empty()
                      ? &model_.Project()
                      : objects[static_cast<std::size_t>(random_.Below(objects.size()))];
    }

    /// Whether every object is found by its identifier. Where one is not, what is made may hang below
    /// another.
    bool IsSound() const {
        const std::vector<CAEObject*> objects = model_.Objects();
        return std::ranges::all_of(objects, [](CAEObject* object) {
            CAEProject* const project = object->getProject();
            return project == nullptr || project->getCAEObject(object->getID()) == object;
        });
    }
    Random& Source() { return random_; }
    CAEObject& Object() { return *object_; }
    const RandomModel& Model() const { return model_; }

private:
    Random random_;
    RandomModel model_;
    CAEObject* object_ = nullptr;
};

/// Runs the body with seeds for some seconds, and returns how often.
template <typename Body>
int RunForSeconds(const Body& body) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    int rounds = 0;
    for (std::uint64_t seed = 1;
         rounds < kLeastRounds || std::chrono::duration<double>(Clock::now() - start).count() < kSeconds;
         ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        rounds += body(seed) ? 1 : 0;
        if (testing::Test::HasFailure()) {
            break;
        }
    }
    return rounds;
}

std::vector<std::string> RecordedChanges() {
    return AllChangingCalls(korvane::TakeRecording());
}

}  // namespace

TEST(ExchangeImport, AddsAsTheLibraryDoes) {
    EXPECT_GE(RunForSeconds([](std::uint64_t seed) {
                  Subject first(seed);
                  Subject second(seed);
                  JSONNode document = RandomDocument(first.Source());
                  const std::string before = ShowNode(document);
                  korvane::StartRecording();
                  const ImportReport report =
                      ImportDocument(document, first.Object(), {.allowStrayFiles = true});
                  const std::vector<std::string> changes = RecordedChanges();
                  EXPECT_EQ(ShowNode(document), before);
                  if (!report.hasRoot || report.Count(Reason::kNullKey) != 0) {
                      return false;
                  }
                  korvane::StartRecording();
                  caerest::json::DeserializeJsonToObject(document, &second.Object());
                  EXPECT_EQ(Lines(changes), Lines(RecordedChanges())) << document.write_formatted();
                  EXPECT_EQ(Lines(StateOf(first.Model())), Lines(StateOf(second.Model())));
                  return true;
              }),
              kLeastRounds);
}

TEST(ExchangeImport, TakesWhatItDoesNotReport) {
    EXPECT_GE(RunForSeconds([](std::uint64_t seed) {
                  Subject subject(seed);
                  const JSONNode document = RandomDocument(subject.Source());
                  const bool isUpdate = subject.Source().OneIn(2);
                  const ImportReport report =
                      ImportDocument(document, subject.Object(),
                                     {.match = isUpdate ? Match::kByKey : Match::kNever,
                                      .remove = true,
                                      .sameRoot = subject.Source().OneIn(2)});
                  const MemberCount count(document, report);
                  if (count.IsAmbiguous()) {
                      return false;
                  }
                  EXPECT_EQ(report.membersTaken, count.Taken()) << document.write_formatted();
                  EXPECT_EQ(count.Lost(), "") << document.write_formatted();
                  return report.hasRoot;
              }),
              kLeastRounds);
}

TEST(ExchangeImport, SecondUpdateChangesNothing) {
    EXPECT_GE(RunForSeconds([](std::uint64_t seed) {
                  Subject subject(seed);
                  const JSONNode document = RandomDocument(subject.Source());
                  const bool removes = subject.Source().OneIn(2);
                  const ImportOptions options = {
                      .match = Match::kByKey, .remove = removes, .sameRoot = subject.Source().OneIn(2)};
                  const ImportReport first = ImportDocument(document, subject.Object(), options);
                  korvane::StartRecording();
                  const ImportReport second = ImportDocument(document, subject.Object(), options);
                  if (!subject.IsSound() || second.Count(Reason::kRefused) != 0) {
                      // What the object model refuses is asked for again: it might make it today.
                      korvane::TakeRecording();
                      return false;
                  }
                  EXPECT_EQ(Lines(RecordedChanges()), "") << document.write_formatted();
                  std::string changes;
                  for (const auto& entry : second.entries) {
                      changes += IsChange(entry.reason) ? entry.pointer + ": " + entry.sentence + "\n" : "";
                  }
                  EXPECT_EQ(changes, "");
                  EXPECT_FALSE(second.HasChanged());
                  return first.hasRoot;
              }),
              kLeastRounds);
}

TEST(ExchangeImport, DryRunChangesNothingAndSaysTheSame) {
    EXPECT_GE(RunForSeconds([](std::uint64_t seed) {
                  Subject dry(seed);
                  Subject real(seed);
                  const JSONNode document = RandomDocument(dry.Source());
                  static_cast<void>(RandomDocument(real.Source()));
                  ImportOptions options = {
                      .remove = dry.Source().OneIn(2), .sameRoot = dry.Source().OneIn(2), .dryRun = true};
                  options.match = dry.Source().OneIn(2) ? Match::kByKey : Match::kNever;
                  const std::string before = Lines(StateOf(dry.Model()));
                  korvane::StartRecording();
                  const ImportReport said = ImportDocument(document, dry.Object(), options);
                  std::vector<std::string> changes = RecordedChanges();
                  // New files are read and thrown away.
                  std::erase_if(
                      changes, [](const std::string& call) { return call.find("(#0") != std::string::npos; });
                  EXPECT_EQ(Lines(changes), "");
                  EXPECT_EQ(Lines(StateOf(dry.Model())), before);
                  options.dryRun = false;
                  const ImportReport done = ImportDocument(document, real.Object(), options);
                  if (done.Count(Reason::kRefused) != 0) {
                      return false;
                  }
                  EXPECT_EQ(Unnumbered(Whole(said)), Unnumbered(Whole(done))) << document.write_formatted();
                  EXPECT_EQ(Numbers(said), Numbers(done)) << document.write_formatted();
                  return said.hasRoot;
              }),
              kLeastRounds);
}

TEST(ExchangeImport, UpdateWithTheOwnDocumentChangesNothing) {
    EXPECT_GE(RunForSeconds([](std::uint64_t seed) {
                  Subject subject(seed);
                  const JSONNode document = JsonSerializer(&subject.Object()).GetJson();
                  if (!subject.IsSound()) {
                      return false;
                  }
                  korvane::StartRecording();
                  const ImportReport report =
                      ImportDocument(document, subject.Object(), {.match = Match::kByKey, .remove = true});
                  if (report.Count(Reason::kMerged) != 0) {
                      // The names of entries differ behind a NUL character, which no document has.
                      korvane::TakeRecording();
                      return false;
                  }
                  EXPECT_EQ(Lines(RecordedChanges()), "") << document.write_formatted();
                  EXPECT_EQ(ListedChanges(report), "") << Whole(report) << document.write_formatted();
                  return report.hasRoot;
              }),
              kLeastRounds);
}

TEST(ExchangeAnswer, SetsWhatTheLibrarySets) {
    EXPECT_GE(RunForSeconds([](std::uint64_t seed) {
                  Subject dry(seed);
                  Subject first(seed);
                  Subject second(seed);
                  const JSONNode answer = RandomAnswer(first.Source());
                  const std::string before = ShowNode(answer);
                  const std::string untouched = Lines(StateOf(dry.Model()));
                  const AnswerReport said = ApplyAnswer(answer, dry.Object(), {.dryRun = true});
                  EXPECT_EQ(Lines(StateOf(dry.Model())), untouched);
                  korvane::StartRecording();
                  const AnswerReport done = ApplyAnswer(answer, first.Object());
                  const std::vector<std::string> changes = RecordedChanges();
                  EXPECT_EQ(ShowNode(answer), before);
                  EXPECT_EQ(Whole(said), Whole(done)) << answer.write_formatted();
                  EXPECT_EQ(said.keysSet, done.keysSet);
                  EXPECT_EQ(said.keysKept, done.keysKept);
                  EXPECT_EQ(done.keysSet, done.Count(Reason::kChanged));
                  if (!done.hasFitted || done.Count(Reason::kNullKey) != 0) {
                      EXPECT_TRUE(done.hasFitted || changes.empty()) << Lines(changes);
                      return false;
                  }
                  korvane::StartRecording();
                  caerest::json::ApplyJsonResponseOnObject(answer, &second.Object());
                  EXPECT_EQ(Lines(changes), Lines(RecordedChanges())) << answer.write_formatted();
                  EXPECT_EQ(Lines(StateOf(first.Model())), Lines(StateOf(second.Model())));
                  return true;
              }),
              kLeastRounds);
}
