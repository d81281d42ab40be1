#include "adapters/sqlite/SmallBlocks.hpp"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

namespace hearthmake::sqlite {
namespace {

const sqlite3_mem_methods& Memory() { return small_blocks::Methods(); }

// A block that is filled to its last byte.
char* Filled(int size, char with) {
  auto* block = static_cast<char*>(Memory().xMalloc(size));
  std::memset(block, with, static_cast<std::size_t>(size));
  return block;
}

bool Holds(const char* block, int size, char what) {
  return std::all_of(block, block + size, [&](char c) { return c == what; });
}

TEST(SmallBlocks, AreAlignedAndAsLargeAsTheyTell) {
  for (const int size : {1, 8, 31, 32, 33, 511, 512, 513, 4096, 100'001}) {
    char* block = Filled(size, 'x');
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 8, 0U) << size;
    EXPECT_GE(Memory().xSize(block), size);
    EXPECT_EQ(Memory().xSize(block), Memory().xRoundup(size));
    Memory().xFree(block);
  }
}

TEST(SmallBlocks, OverlapNoneThatIsInUse) {
  std::vector<char*> blocks;
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < 200; ++i) blocks.push_back(Filled(20 + i % 3 * 40, static_cast<char>(i)));
    for (int i = 0; i < 200; ++i) {
      EXPECT_TRUE(Holds(blocks[static_cast<std::size_t>(i)], 20 + i % 3 * 40, static_cast<char>(i))) << i;
    }
    for (char* block : blocks) Memory().xFree(block);
    blocks.clear();
  }
}

TEST(SmallBlocks, AreHadAgain) {
  char* block = Filled(100, 'x');
  Memory().xFree(block);
  EXPECT_EQ(Filled(97, 'y'), block);
  Memory().xFree(block);
}

TEST(SmallBlocks, KeepWhatTheyHoldWhenTheyGrowAndShrink) {
  char* block = Filled(10, 'x');
  int held = 10;
  for (const int size : {32, 40, 400, 512, 513, 5000, 9000, 600, 30}) {
    block = static_cast<char*>(Memory().xRealloc(block, size));
    held = std::min(held, size);
    EXPECT_TRUE(Holds(block, held, 'x')) << size;
    EXPECT_GE(Memory().xSize(block), size);
  }
  Memory().xFree(block);
}

TEST(SmallBlocks, MayBeGivenBackByAnotherThread) {
  std::vector<char*> blocks;
  std::thread([&] {
    for (int i = 0; i < 100; ++i) blocks.push_back(Filled(64, 'x'));
    Memory().xFree(blocks.back());
    blocks.pop_back();
  }).join();
  for (char* block : blocks) {
    EXPECT_TRUE(Holds(block, 64, 'x'));
    Memory().xFree(block);
  }
}

TEST(SmallBlocks, OfNothingIsFreed) { Memory().xFree(nullptr); }

}  // namespace
}  // namespace hearthmake::sqlite
