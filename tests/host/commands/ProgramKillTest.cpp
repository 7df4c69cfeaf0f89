#include "ProgramSupport.h"
#include "support/LongRun.h"

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>
#include <set>
#include <thread>

/// The program is killed at random moments while it writes a document.
namespace {

using std::chrono::microseconds;
using std::chrono::steady_clock;

class ProgramKillTest : public ProgramInFolder {
protected:
    void SetUp() override {
        for (int number = 0; number < 300; ++number) {
            folder.Write("root/s" + std::to_string(number) + "/job.inp", "*STEP\n*STATIC\n*END STEP\n");
        }
        folder.Write("out/document.json", kOld);
        const auto start = steady_clock::now();
        wanted = OutputOf({"export", "root"});
        usual = std::chrono::duration_cast<microseconds>(steady_clock::now() - start);
    }

    static int Rounds() { return IsLongRun() ? 200 : 20; }

    /// Starts the program and sends it the signal after the time. Gives its status, or the signal below zero.
    int Interrupt(microseconds after, int signal) const {
        const std::string program = ProgramPath("korvane-json");
        const pid_t child = ::fork();
        if (child == 0) {
            if (::chdir(folder.Path().c_str()) == 0) {
                ::execl(program.c_str(), program.c_str(), "export", "root", "-o", "out/document.json",
                        nullptr);
            }
            ::_exit(126);
        }
        std::this_thread::sleep_for(after);
        ::kill(child, signal);
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    /// The names in the folder that is written to, without that of the document.
    std::set<std::string> Others() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "out")) {
            names.insert(entry.path().filename());
        }
        names.erase("document.json");
        return names;
    }

    /// Interrupts the program once at a random moment, and expects the old or the new document.
    void TryOnce(int signal) {
        folder.Write("out/document.json", kOld);
        const microseconds after(std::uniform_int_distribution<long>(0, usual.count() * 3 / 2)(random));
        const int status = Interrupt(after, signal);
        SCOPED_TRACE("status " + std::to_string(status) + " after " + std::to_string(after.count()) + " us");
        EXPECT_TRUE(status == 0 || status == -signal);
        const std::string document = Read("out/document.json");
        EXPECT_TRUE(document == wanted || (status != 0 && document == kOld));
    }

    static constexpr const char* kOld = "{\"type\":\"OLD\"}\n";
    std::string wanted;
    microseconds usual{0};
    std::mt19937 random{std::random_device{}()};
};

TEST_F(ProgramKillTest, AKillLeavesTheOldOrTheNewDocumentAndTheNextRunRemovesTheRest) {
    for (int round = 0; round < Rounds(); ++round) {
        TryOnce(SIGKILL);
        EXPECT_LE(Others().size(), 1U);
    }
    Do({"export", "root", "-o", "out/document.json"});
    EXPECT_EQ(Others(), std::set<std::string>());
    EXPECT_EQ(Read("out/document.json"), wanted);
}

TEST_F(ProgramKillTest, ASignalLeavesTheOldOrTheNewDocumentAndNothingElse) {
    for (int round = 0; round < Rounds(); ++round) {
        TryOnce(round % 2 == 0 ? SIGINT : SIGTERM);
        EXPECT_EQ(Others(), std::set<std::string>());
    }
}

}  // namespace

#endif
