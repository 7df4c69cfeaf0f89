#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>
#include <korvanejson/Module.h>

#include <functional>
#include <latch>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "support/ModelBuilders.h"

// What hosts may do on many threads at once, each on a tree of its own. Under the thread sanitizer these
// tests also see what gives the right result by luck.

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 15;

/// The mode of the whole module, set by one export before threads start, and empty again after them.
class ModuleMode {
public:
    explicit ModuleMode(const OuString& mode) { Set(mode); }
    ~ModuleMode() { Set(OuString()); }
    ModuleMode(const ModuleMode&) = delete;
    ModuleMode& operator=(const ModuleMode&) = delete;

private:
    static void Set(const OuString& mode) {
        JsonSerializer serializer(nullptr);
        serializer.SetExportMode(mode);
        serializer.GetJson();
    }
};

JSONNode Document(CAEObject& object, const OuString& mode) {
    JsonSerializer serializer(&object);
    serializer.SetExportMode(mode);
    return serializer.GetJson();
}

std::string DocumentText(CAEObject& object, const OuString& mode) {
    JsonSerializer serializer(&object);
    serializer.SetExportMode(mode);
    return serializer.GetJsonString().GetAnsiBuffer();
}

/// A project that differs from those of the other numbers in every text and in its size.
void Fill(TestProject& project, int number) {
    const std::string tag = " of " + std::to_string(number) + " \"\xC3\xA4/\\";
    const auto text = [&tag](const char* begin) { return OuString((begin + tag).c_str(), 0); };
    project->setName(text("project"));
    SetMetadata(*project, L"Description", text("about"));
    project.Add(CAE_FILE, text("file child"));
    CAEObject& study = project.Add(CAE_MODEL, text("study"));
    CAEObject& folder = project.Add(study, CAE_ITERATION_FOLDER, L"Iterations");
    for (int run = 0; run <= number; ++run) {
        CAEObject& iteration = project.Add(folder, CAE_ITERATION, text("run"));
        CAEObject& model = project.Add(iteration, CAE_ITERATION_MODEL, text("model"));
        project.AddFile(model, text("deck"), CAE_FILE_DECK);
        CAEObject& part = project.Add(study, CAE_PART, text("part"));
        SetMetadata(part, L"Mass", text("value"), L"kg", L"double");
        SetMetadata(part, text("entry"), L"4");
        project.AddFile(part, text("part.step"), CAE_FILE_CAD);
        project.AddFile(part, text("part.msh"), CAE_FILE_MESH, CAE_FORMAT_BINARY);
    }
}

/// A server's answer with a key for every object of the project.
std::string Answer(CAEProject& project, int number) {
    std::string answer = R"({"name":"shown as )" + std::to_string(number) + R"(","children":[)";
    for (int id = 1; project.getCAEObject(id) != nullptr; ++id) {
        const std::string text = std::to_string(id);
        answer += std::string(id > 1 ? "," : "") + R"({"id":")" + text + R"(","dbkey":"K)" +
                  std::to_string(number) + "-" + text + R"("})";
    }
    return answer + "]}";
}

std::string Flattened(const JSONNode& answer) {
    std::map<std::string, std::string> keys;
    caerest::json::util::ParseNode(answer, keys);
    std::string text;
    for (const auto& [id, key] : keys) {
        text += id + "=" + key + "\n";
    }
    return text;
}

std::string ModuleInformation() {
    KorvaneJsonInitialize();
    __localFnToKeepKorvaneJsonDllLoaded();
    std::string text;
    for (const int selector :
         {KORVANEJSON_MODULE_KIND, KORVANEJSON_MODULE_VERSION, KORVANEJSON_MODULE_BANNER}) {
        text += std::string(KorvaneJson_get_module_info(selector)) + "\n";
    }
    KorvaneJsonTerminate();
    return text;
}

std::string DisplayName(const CAEProject& project) {
    return korvane::GetDisplayName(project).GetAnsiBuffer();
}

/// Does everything that the library can do, on trees that no other thread uses; returns the results as a
/// text.
std::string Trip(int number, const OuString& mode) {
    TestProject project;
    Fill(project, number);
    std::string text = DocumentText(*project, mode) + "\n";

    const JSONNode answer = libjson::parse(Answer(*project, number).c_str());
    text += Flattened(answer);
    caerest::json::ApplyJsonResponseOnObject(answer, &*project);
    const std::string sent = DocumentText(*project, mode);
    text += DisplayName(*project) + "\n" + sent + "\n";

    TestProject rebuilt(L"rebuilt");
    JSONNode fetched = libjson::parse(sent.c_str());
    caerest::json::DeserializeJsonToObject(fetched, &*rebuilt);
    return text + DisplayName(*rebuilt) + "\n" + DocumentText(*rebuilt, mode) + "\n" + ModuleInformation();
}

/// Runs the body with the numbers from 0 on, each on a thread of its own that begins together with the
/// others.
void RunTogether(const std::function<void(int)>& body) {
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&start, &body, number] {
            start.arrive_and_wait();
            body(number);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// What each thread alone gives, in the same mode.
std::vector<std::string> TripsOneByOne(const OuString& mode) {
    std::vector<std::string> trips;
    trips.reserve(kThreads);
    for (int number = 0; number < kThreads; ++number) {
        trips.push_back(Trip(number, mode));
    }
    return trips;
}

/// Threads make their trips together; every one must be what it is alone. The module's mode must be the given
/// one already.
void ExpectTripsTogether(const OuString& mode) {
    std::vector<std::vector<std::string>> trips(kThreads);
    RunTogether([&trips, &mode](int number) {
        for (int round = 0; round < kRounds; ++round) {
            trips[static_cast<std::size_t>(number)].push_back(Trip(number, mode));
        }
    });
    const std::vector<std::string> expected = TripsOneByOne(mode);
    for (std::size_t number = 0; number < kThreads; ++number) {
        for (const std::string& trip : trips[number]) {
            ASSERT_EQ(trip, expected[number]) << "thread " << number;
        }
    }
}

std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != std::string::npos;
         place = text.find(part, place + 1)) {
        ++count;
    }
    return count;
}

}  // namespace

TEST(HostThreads, MakeRoundTripsWithTheModeThatTheModuleStartsWith) {
    ExpectTripsTogether(OuString());
    // The first document, the one with keys and the rebuilt project's, with two models.
    EXPECT_EQ(Count(Trip(1, OuString()), "CAEITERATIONMODEL"), 3U * 2U);
}

TEST(HostThreads, MakeRoundTripsWithAModeSetBeforeTheyStart) {
    for (const wchar_t* text : {L"STUDY", L"PROJECT", L"any other"}) {
        const OuString mode(text);
        const ModuleMode module(mode);
        ExpectTripsTogether(mode);
        const std::string trip = Trip(1, mode);
        EXPECT_EQ(Count(trip, "CAEITERATIONMODEL"), mode == L"any other" ? 3U * 2U : 0U);
        EXPECT_EQ(Count(trip, "CAEITERATIONFOLDER"), mode == L"PROJECT" ? 0U : 3U);
    }
}

TEST(HostThreads, ImportAndTakeAnswersWhileOthersExport) {
    const OuString mode(L"STUDY");
    const ModuleMode module(mode);
    std::vector<std::string> documents;
    for (int number = 0; number < kThreads; ++number) {
        TestProject project;
        Fill(project, number);
        documents.push_back(DocumentText(*project, mode));
    }
    // Half of the threads only export; the others import again and again and never touch the mode.
    std::vector<int> right(kThreads, 0);
    RunTogether([&documents, &right, &mode](int number) {
        const auto index = static_cast<std::size_t>(number);
        TestProject project;
        Fill(project, number);
        for (int round = 0; round < kRounds; ++round) {
            if (number % 2 == 0) {
                right[index] += DocumentText(*project, mode) == documents[index] ? 1 : 0;
                continue;
            }
            TestProject target(L"target");
            JSONNode document = libjson::parse(documents[index].c_str());
            caerest::json::DeserializeJsonToObject(document, &*target);
            const JSONNode answer = libjson::parse(Answer(*target, number).c_str());
            caerest::json::ApplyJsonResponseOnObject(answer, &*target);
            int objects = 0;
            int keys = 0;
            for (int id = 1; const CAEObject* object = target->getCAEObject(id); ++id) {
                ++objects;
                const std::string key = "K" + std::to_string(number) + "-" + std::to_string(id);
                keys += object->getDBKey().GetAnsiBuffer() == key ? 1 : 0;
            }
            // All but the models with their files, which the mode leaves out.
            right[index] += objects == 4 + 4 * (number + 1) && keys == objects &&
                                    DisplayName(*target) == "shown as " + std::to_string(number)
                                ? 1
                                : 0;
        }
    });
    EXPECT_EQ(right, std::vector<int>(kThreads, kRounds));
}

TEST(HostThreads, HandTheirDocumentsToTheThreadThatWaitsForThem) {
    std::vector<JSONNode> documents(kThreads);
    RunTogether([&documents](int number) {
        TestProject project;
        Fill(project, number);
        documents[static_cast<std::size_t>(number)] = Document(*project, OuString());
    });
    for (int number = 0; number < kThreads; ++number) {
        TestProject project;
        Fill(project, number);
        JSONNode& document = documents[static_cast<std::size_t>(number)];
        EXPECT_EQ(document.write(), Document(*project, OuString()).write());
        TestProject rebuilt;
        caerest::json::DeserializeJsonToObject(document, &*rebuilt);
        EXPECT_EQ(Count(DocumentText(*rebuilt, OuString()), "CAEITERATIONMODEL"),
                  static_cast<std::size_t>(number) + 1);
    }
}
