#include "adapters/sqlite/SmallBlocks.hpp"

#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace hearthmake::sqlite::small_blocks {

namespace {

constexpr std::size_t kStep = 32;
constexpr std::size_t kSizes = kLargest / kStep;

// What stands before each block that SQLite has, and in one that is kept also behind it: the next kept one.
struct Block {
  std::uint64_t size;  // without this number; 8 bytes keep what follows aligned as SQLite needs it
  Block* next;

  void* Payload() { return &next; }
  static Block* Of(void* payload) {
    return reinterpret_cast<Block*>(static_cast<char*>(payload) - offsetof(Block, next));
  }
};

struct KeptBlocks {
  Block* first = nullptr;
  std::size_t count = 0;
};

// Without a destructor, so that it can be used as long as there is memory: a database may be closed by the
// last objects of a process to go.
struct ThreadBlocks {
  std::array<KeptBlocks, kSizes> bySize;
  bool isThreadEnding = false;
};

constinit thread_local ThreadBlocks t_blocks;

// Gives a thread's kept blocks back when it ends.
struct AtThreadEnd {
  ~AtThreadEnd() {
    t_blocks.isThreadEnding = true;
    for (KeptBlocks& kept : t_blocks.bySize) {
      while (kept.first != nullptr) {
        Block* block = kept.first;
        kept.first = block->next;
        std::free(block);
      }
      kept.count = 0;
    }
  }
};

KeptBlocks& KeptOf(std::size_t size) { return t_blocks.bySize[size / kStep - 1]; }

std::size_t Rounded(std::size_t size) {
  const std::size_t step = size <= kLargest ? kStep : 8;
  return (size + step - 1) / step * step;
}

// --- what SQLite calls; sizes are those that RoundUp gives ---

int RoundUp(int size) { return static_cast<int>(Rounded(static_cast<std::size_t>(size))); }

int SizeOf(void* payload) { return static_cast<int>(Block::Of(payload)->size); }

void* AllocateFresh(std::size_t size) {
  auto* block = static_cast<Block*>(std::malloc(offsetof(Block, next) + size));
  if (block == nullptr) return nullptr;
  block->size = size;
  return block->Payload();
}

void* Allocate(int bytes) {
  const std::size_t size = Rounded(static_cast<std::size_t>(bytes));
  if (size > kLargest) return AllocateFresh(size);
  KeptBlocks& kept = KeptOf(size);
  Block* block = kept.first;
  if (block == nullptr) return AllocateFresh(size);
  kept.first = block->next;
  --kept.count;
  return block->Payload();
}

void Free(void* payload) {
  if (payload == nullptr) return;
  Block* block = Block::Of(payload);
  if (block->size > kLargest || t_blocks.isThreadEnding) return std::free(block);
  KeptBlocks& kept = KeptOf(block->size);
  if (kept.count >= kKept) return std::free(block);
  if (kept.count == 0) {
    // The first use in a thread sets it up.
    thread_local const AtThreadEnd atThreadEnd;
    static_cast<void>(&atThreadEnd);
  }
  block->next = kept.first;
  kept.first = block;
  ++kept.count;
}

void* Reallocate(void* payload, int bytes) {
  const std::size_t size = Rounded(static_cast<std::size_t>(bytes));
  Block* block = Block::Of(payload);
  if (block->size > kLargest && size > kLargest) {
    block = static_cast<Block*>(std::realloc(block, offsetof(Block, next) + size));
    if (block == nullptr) return nullptr;
    block->size = size;
    return block->Payload();
  }
  void* moved = Allocate(bytes);
  if (moved == nullptr) return nullptr;
  std::memcpy(moved, payload, block->size < size ? block->size : size);
  Free(payload);
  return moved;
}

int Start(void*) { return SQLITE_OK; }
void End(void*) {}

}  // namespace

const sqlite3_mem_methods& Methods() {
  static const sqlite3_mem_methods methods = {Allocate, Free,  Reallocate, SizeOf,
                                              RoundUp,  Start, End,        nullptr};
  return methods;
}

}  // namespace hearthmake::sqlite::small_blocks
