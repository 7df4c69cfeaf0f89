#include <gtest/gtest.h>
#if defined(_WIN32)
#include <windows.h>
#endif

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Texts.h"

namespace {

std::string Document(int number) {
    std::string text = "{\"number\":" + std::to_string(number) + ",\"elements\":[";
    for (int index = 0; index < 200; ++index) {
        text += (index > 0 ? ",{\"name " : "{\"name ") + std::to_string(index + number) + "\":\"value " +
                std::to_string(index) + "\",\"list\":[1,2,3]}";
    }
    return text + "]}";
}

/// A queue of trees from one thread to another.
class Handover {
public:
    void Give(std::optional<JSONNode> tree) {
        const std::lock_guard lock(guard_);
        trees_.push_back(std::move(tree));
        ready_.notify_one();
    }
    std::optional<JSONNode> Take() {
        std::unique_lock lock(guard_);
        ready_.wait(lock, [this] { return !trees_.empty(); });
        std::optional<JSONNode> tree = std::move(trees_.front());
        trees_.pop_front();
        return tree;
    }

private:
    std::mutex guard_;
    std::condition_variable ready_;
    std::deque<std::optional<JSONNode>> trees_;
};

TEST(Threads, WorkOnDifferentTreesAtTheSameTime) {
    std::vector<std::thread> threads;
    std::vector<int> right(8, 0);
    for (int number = 0; number < 8; ++number) {
        threads.emplace_back([number, &right] {
            for (int round = 0; round < 40; ++round) {
                const std::string text = Document(number * 50 + round);
                JSONNode node = Parse(text);
                const JSONNode copy = node;
                node.at(Text("elements")).push_back(JSONNode(Text(""), round));
                node.at(Text("elements")).pop_back(200);
                right[static_cast<std::size_t>(number)] += Write(node) == text && node == copy ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(right, std::vector<int>(8, 40));
}

TEST(Threads, HandWholeTreesOver) {
    Handover handover;
    std::thread maker([&handover] {
        for (int number = 0; number < 300; ++number) {
            handover.Give(Parse(Document(number)));
        }
        handover.Give(std::nullopt);
    });
    int number = 0;
    while (std::optional<JSONNode> tree = handover.Take()) {
        ASSERT_EQ(Write(*tree), Document(number));
        ++number;
    }
    maker.join();
    EXPECT_EQ(number, 300);
}

TEST(Threads, LeaveTheirTreesBehind) {
    std::vector<JSONNode> trees(20);
    for (int number = 0; number < 20; ++number) {
        std::thread([&trees, number] {
            trees[static_cast<std::size_t>(number)] = Parse(Document(number));
        }).join();
    }
    for (int number = 0; number < 20; ++number) {
        ASSERT_EQ(Write(trees[static_cast<std::size_t>(number)]), Document(number));
    }
}

TEST(Threads, MayReadDuplicatesOfOneTree) {
    JSONNode original = Parse(Document(1));
    original.set_name(Text(std::string(300, 'n')));
    std::vector<JSONNode> copies;
    for (int number = 0; number < 4; ++number) {
        copies.push_back(original.duplicate());
    }
    std::vector<std::thread> threads;
    for (JSONNode& copy : copies) {
        threads.emplace_back([&copy] {
            for (int round = 0; round < 200; ++round) {
                JSONNode changed = copy;
                changed.set_name(Text("changed"));
                changed.push_back(copy);
                copy = JSONNode(changed).pop_back(2);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const JSONNode& copy : copies) {
        ASSERT_EQ(copy, original);
    }
}

/// Makes the calling thread hold the tree until everything else of the thread is gone.
#if defined(_WIN32)
void HoldToTheEnd(JSONNode tree) {
    // A slot is emptied at the end of the thread, in the order in which slots were made.
    static const DWORD slot =
        FlsAlloc([](void* held) { std::unique_ptr<JSONNode>(static_cast<JSONNode*>(held)); });
    auto held = std::make_unique<JSONNode>(std::move(tree));
    if (FlsSetValue(slot, held.get()) != 0) {
        static_cast<void>(held.release());
    }
}
#else
thread_local JSONNode lastOfThread;

void HoldToTheEnd(JSONNode tree) {
    lastOfThread = std::move(tree);
}
#endif

TEST(Threads, ReleaseTreesAtTheirVeryEnd) {
    for (int round = 0; round < 20; ++round) {
        std::thread([] {
            HoldToTheEnd(JSONNode());
            HoldToTheEnd(Parse(Document(3)));
        }).join();
    }
}

/// Released when the process ends.
JSONNode& LastOfProcess() {
    static JSONNode node = Parse(Document(5));
    return node;
}

TEST(Threads, LetStaticTreesLiveToTheEndOfTheProcess) {
    EXPECT_EQ(Write(LastOfProcess()), Document(5));
}

}  // namespace
