#include "services/BubbleSort.h"

#include "FailureOf.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

struct Numbered {
    std::int32_t Key;
    int Origin;
    bool operator==(const Numbered&) const = default;
};

void PrintTo(const Numbered& value, std::ostream* out) {
    *out << value.Key << '#' << value.Origin;
}

/// The sort as it is described, pass by pass.
void SortByPasses(std::vector<Numbered>& list, bool descending, int upper) {
    int limit = upper - 1;
    for (;;) {
        int lastSwap = -1;
        for (int j = 0; j <= limit; ++j) {
            auto& left = list[static_cast<std::size_t>(j)];
            auto& right = list[static_cast<std::size_t>(j) + 1];
            const bool greater = left.Key > right.Key;
            if (greater != descending) {
                std::swap(left, right);
                lastSwap = j;
            }
        }
        if (lastSwap <= 0)
            return;
        limit = lastSwap - 1;
    }
}

std::vector<Numbered> RandomList(std::mt19937& random) {
    std::vector<Numbered> list(random() % 40);
    const int keys = 1 + static_cast<int>(random() % 60);
    for (std::size_t i = 0; i < list.size(); ++i)
        list[i] = {static_cast<std::int32_t>(random()) % keys, static_cast<int>(i)};
    return list;
}

TEST(BubbleSort, GivesTheOrderOfThePassesEqualsIncluded) {
    std::mt19937 random(1);
    for (int round = 0; round < 4000; ++round) {
        const bool descending = round % 2 == 1;
        auto list = RandomList(random);
        auto expected = list;
        const std::size_t upper = list.empty() || round < 3000 ? list.size() - 1 : random() % list.size();
        SortByPasses(expected, descending, static_cast<int>(upper));
        if (round < 3000)
            BubbleSortBy(list, &Numbered::Key, descending);
        else if (!list.empty())
            BubbleSortBy(list, &Numbered::Key, descending, upper);
        ASSERT_EQ(list, expected) << "round " << round;
    }
}

TEST(BubbleSort, ComparesTextsWithoutRegardToCaseAndNumbersByValue) {
    std::vector<std::string> texts{"Same", "b", "same", "SAME"};
    BubbleSort(texts);
    EXPECT_EQ(texts, (std::vector<std::string>{"b", "Same", "same", "SAME"}));
    texts = {"B", "c", "a"};
    BubbleSort(texts, true);
    EXPECT_EQ(texts, (std::vector<std::string>{"c", "B", "a"}));
    std::vector<std::int32_t> numbers{10, -2147483647 - 1, 9, 2147483647, -1};
    BubbleSort(numbers);
    EXPECT_EQ(numbers, (std::vector<std::int32_t>{-2147483647 - 1, -1, 9, 10, 2147483647}));
}

TEST(BubbleSort, FailsBeyondTheList) {
    std::vector<std::int32_t> list{2, 1};
    EXPECT_EQ(FailureOf([&] { BubbleSort(list, false, 2); }).Number, FailureSubscript);
    EXPECT_EQ(list, (std::vector<std::int32_t>{2, 1}));
}

} // namespace
} // namespace velmora
