#include "controls/KeyTable.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <random>
#include <string>

namespace mkl {

namespace {

struct KeyOf {
    std::string_view operator()(const std::string& key) const { return key; }
};
using Table = KeyTable<std::string, KeyOf>;

} // namespace

TEST(KeyTable, AKeyStandsThereOnce) {
    Table table;
    std::string one = "A1", same = "A1", other = "A2";
    EXPECT_EQ(table.find("A1"), nullptr);
    EXPECT_TRUE(table.insert(&one));
    EXPECT_FALSE(table.insert(&same));
    EXPECT_EQ(table.find("A1"), &one);
    EXPECT_TRUE(table.insert(&other));
    table.erase("A1");
    table.erase("A3");
    EXPECT_EQ(table.find("A1"), nullptr);
    EXPECT_EQ(table.find("A2"), &other);
    EXPECT_TRUE(table.insert(&same));
    EXPECT_EQ(table.find("A1"), &same);
    table.clear();
    EXPECT_EQ(table.find("A1"), nullptr);
    table.erase("A1");
}

TEST(KeyTable, KeysOfTheSameHashAreToldApart) {
    Table table;
    std::string one = "Aa", other = "BB", third = "Ab";
    for (std::string* key : {&one, &other, &third})
        EXPECT_TRUE(table.insert(key));
    table.erase("Aa");
    EXPECT_EQ(table.find("BB"), &other) << "behind one that was taken out";
    EXPECT_EQ(table.find("Aa"), nullptr);
}

TEST(KeyTable, AsAMapOverManyTurns) {
    Table table;
    std::map<std::string, std::string*> model;
    std::deque<std::string> keys;
    std::mt19937 random(7);
    for (int turn = 0; turn < 20000; ++turn) {
        const std::string key = (random() % 2 ? "A" : "A-") + std::to_string(random() % 1500);
        if (random() % 3 == 0) {
            table.erase(key);
            model.erase(key);
        } else {
            keys.push_back(key);
            const bool isNew = model.emplace(key, &keys.back()).second;
            ASSERT_EQ(table.insert(&keys.back()), isNew);
        }
        const auto found = model.find(key);
        ASSERT_EQ(table.find(key), found == model.end() ? nullptr : found->second);
    }
    for (const auto& [key, item] : model)
        ASSERT_EQ(table.find(key), item);
}

} // namespace mkl
