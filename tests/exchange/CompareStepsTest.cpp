#include <new>
#include <numeric>

#include "CompareSupport.h"
#include "exchange/Alignment.h"
#include "exchange/IncreasingRun.h"
#include "exchange/Room.h"
#include "support/LongRun.h"
#include "support/SmallStack.h"

namespace korvane::exchange {
namespace {

/// Trees of tags, built without any text.
class Tags {
public:
    explicit Tags(DistinctTexts& texts) : texts_(texts) { Add(kNoNode, "P"); }

    NodeIndex Add(NodeIndex parent, const std::string& name, const std::string& key = "") {
        CarriedNode& node = tree.nodes.emplace_back();
        node.parent = parent;
        node.place = parent == kNoNode ? NodePlace::Root : NodePlace::Child;
        node.kind = format::Kind::kTag;
        node.name = texts_.IdOf(name);
        node.key = texts_.IdOf(key);
        return tree.size() - 1;
    }

    CarriedTree tree;

private:
    DistinctTexts& texts_;
};

enum class Shape { kNames, kEqualNames, kKeys, kOtherNames, kHalf, kChain };

std::string NameOf(Shape shape) {
    constexpr const char* kNamesOfShapes[] = {"Names",      "EqualNames",   "Keys",
                                              "OtherNames", "HalfTheNames", "Chain"};
    return kNamesOfShapes[static_cast<int>(shape)];
}

std::ostream& operator<<(std::ostream& stream, Shape shape) {
    return stream << NameOf(shape);
}

/// Two trees of the shape; in the second, siblings come in the opposite order.
std::size_t StepsOf(Shape shape, std::size_t count) {
    DistinctTexts texts;
    Tags first(texts);
    Tags second(texts);
    NodeIndex lastOfFirst = 0;
    NodeIndex lastOfSecond = 0;
    for (std::size_t number = 0; number < count; ++number) {
        const std::string forwards = std::to_string(number);
        const std::string backwards = std::to_string(count - 1 - number);
        switch (shape) {
            case Shape::kNames:
                first.Add(0, forwards);
                second.Add(0, backwards);
                break;
            case Shape::kEqualNames:
                first.Add(0, "a");
                second.Add(0, "a");
                break;
            case Shape::kKeys:
                first.Add(0, "a", forwards);
                second.Add(0, "a", backwards);
                break;
            case Shape::kOtherNames:
                first.Add(0, "a" + forwards);
                second.Add(0, "b" + backwards);
                break;
            case Shape::kHalf:
                first.Add(0, number % 2 == 0 ? "a" + forwards : forwards);
                second.Add(0, number % 2 == 1 ? "b" + backwards : backwards);
                break;
            case Shape::kChain:
                lastOfFirst = first.Add(lastOfFirst, "a" + forwards);
                lastOfSecond = second.Add(lastOfSecond, "a" + backwards);
                break;
        }
    }
    std::size_t nodes = 0;
    const Alignment alignment(first.tree, second.tree, [&] { ++nodes; });
    EXPECT_EQ(nodes, count + 1);
    return alignment.Steps();
}

class CompareSteps : public testing::TestWithParam<Shape> {};

/// A step is one look at a node or one comparison of two.
TEST_P(CompareSteps, GrowAsTheNumberOfObjectsDoes) {
    constexpr std::size_t kCount = 25000;
    const std::size_t steps = StepsOf(GetParam(), kCount);
    const std::size_t ofFourTimes = StepsOf(GetParam(), 4 * kCount);
    EXPECT_GT(steps, kCount);
    EXPECT_LT(static_cast<double>(ofFourTimes), 5.0 * static_cast<double>(steps));
    // The logarithm of 100,000 is 17.
    EXPECT_LT(ofFourTimes, 4 * kCount * 17 * 12);
}

INSTANTIATE_TEST_SUITE_P(Shapes, CompareSteps,
                         testing::Values(Shape::kNames, Shape::kEqualNames, Shape::kKeys, Shape::kOtherNames,
                                         Shape::kHalf, Shape::kChain),
                         [](const testing::TestParamInfo<Shape>& tested) { return NameOf(tested.param); });

TEST(CompareSteps, OfTheOrderGrowAsTheNumberOfSiblingsDoes) {
    const auto stepsOf = [](std::size_t count, std::size_t stride) {
        std::vector<std::uint32_t> numbers(count);
        for (std::size_t index = 0; index < count; ++index) {
            numbers[index] = static_cast<std::uint32_t>(index * stride % count);
        }
        std::size_t steps = 0;
        FindLongestIncreasing(numbers, steps);
        return static_cast<double>(steps);
    };
    EXPECT_LT(stepsOf(100003, 7919), 5 * stepsOf(25013, 7919));
    EXPECT_LT(stepsOf(100003, 100002), 5 * stepsOf(25013, 25012));
}

/// The length of the longest increasing subsequence, the slow way.
std::size_t LongestByTrial(const std::vector<std::uint32_t>& numbers) {
    std::vector<std::size_t> lengths(numbers.size(), 1);
    std::size_t longest = 0;
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        for (std::size_t before = 0; before < index; ++before) {
            if (numbers[before] < numbers[index]) {
                lengths[index] = std::max(lengths[index], lengths[before] + 1);
            }
        }
        longest = std::max(longest, lengths[index]);
    }
    return longest;
}

TEST(IncreasingRun, IsTheLongestOfEveryPermutation) {
    for (std::uint32_t count = 0; count <= 7; ++count) {
        std::vector<std::uint32_t> numbers(count);
        std::iota(numbers.begin(), numbers.end(), 10);
        do {
            std::size_t steps = 0;
            const std::vector<bool> stays = FindLongestIncreasing(numbers, steps);
            std::vector<std::uint32_t> kept;
            for (std::size_t index = 0; index < count; ++index) {
                if (stays[index]) {
                    kept.push_back(numbers[index]);
                }
            }
            ASSERT_TRUE(std::ranges::is_sorted(kept));
            ASSERT_EQ(kept.size(), LongestByTrial(numbers));
        } while (std::ranges::next_permutation(numbers).found);
    }
}

TEST(DistinctTexts, EqualTextsHaveEqualNumbers) {
    DistinctTexts texts;
    EXPECT_EQ(texts.IdOf(""), kEmptyText);
    std::vector<TextId> numbers;
    const auto textOf = [](int number) {
        return std::string(static_cast<std::size_t>(number % 97), 'x') + std::to_string(number);
    };
    for (int number = 0; number < 20000; ++number) {
        numbers.push_back(texts.IdOf(textOf(number)));
    }
    const std::string large(1U << 20U, 'y');
    const TextId ofLarge = texts.IdOf(large);
    EXPECT_EQ(texts.size(), 20002U);
    for (int number = 0; number < 20000; ++number) {
        ASSERT_EQ(texts.IdOf(textOf(number)), numbers[static_cast<std::size_t>(number)]);
        ASSERT_EQ(texts.TextOf(numbers[static_cast<std::size_t>(number)]), textOf(number));
    }
    EXPECT_EQ(texts.TextOf(ofLarge), large);
    EXPECT_EQ(texts.size(), 20002U);
}

TEST(DistinctTexts, AreAsManyAsThereAreNumbers) {
    EXPECT_NO_THROW(ThrowIfFull(kNoNode - 1, kNoNode));
    EXPECT_THROW(ThrowIfFull(kNoNode, kNoNode), std::bad_alloc);
}

std::string Chain(int depth, const std::string& name, const std::string& innermost) {
    std::string text = R"({"type":"X","name":"P")";
    for (int level = 0; level < depth; ++level) {
        text += R"(,"children":[{"type":"CAEMODEL","name":")" + (level + 1 < depth ? name : innermost) + "\"";
    }
    for (int level = 0; level < depth; ++level) {
        text += "}]";
    }
    return text + "}";
}

TEST(CompareDepth, NeedsNoStack) {
    const int depth = DeepLevels();
    const JSONNode first = Parse(Chain(depth, "m", "innermost"));
    const JSONNode second = Parse(Chain(depth, "m", "otherwise"));
    CompareReport report;
    OnSmallStack([&] { report = Compare(first, second); });
    EXPECT_EQ(report.objects, static_cast<std::size_t>(depth) + 1);
    ASSERT_EQ(report.entries.size(), 1U);
    const Entry& entry = report.entries.front();
    EXPECT_EQ(entry.pointer.size(), static_cast<std::size_t>(depth) * std::string("/children/0").size() +
                                        std::string("/name").size());
    std::string middle = "/...";
    for (int level = 0; level < 19; ++level) {
        middle = "/m" + middle + "/m";
    }
    EXPECT_EQ(entry.sentence, "P" + middle + "/otherwise: name changed from 'innermost' to 'otherwise'");
}

TEST(CompareDepth, ListsWhatFitsAndCountsAll) {
    constexpr int kDepth = 20000;
    const CompareReport report = Compare(Parse(Chain(kDepth, "a", "a")), Parse(Chain(kDepth, "b", "b")));
    EXPECT_EQ(report.Count(Reason::kChanged), static_cast<std::size_t>(kDepth));
    EXPECT_EQ(report.entries.size() + report.unlisted, static_cast<std::size_t>(kDepth));
    EXPECT_GT(report.unlisted, 0U);
    std::size_t bytes = 0;
    for (const Entry& entry : report.entries) {
        bytes += entry.pointer.size() + entry.subject.size() + entry.sentence.size();
    }
    EXPECT_GT(bytes, 200U << 20U);
    EXPECT_LT(bytes, 257U << 20U);
}

}  // namespace
}  // namespace korvane::exchange
