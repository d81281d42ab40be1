#pragma once

#include <cstddef>

struct sqlite3_mem_methods;

namespace hearthmake::sqlite {

// The memory that SQLite works with. It takes a block for each text of a row, fifty side by side, and gives
// them all back with the statement; the C library's allocator has seven of a size at hand and goes a long way
// for the others. Here each thread keeps the small blocks that it has given back; large ones are the C
// library's.
namespace small_blocks {

// The largest block that is kept, and how many of each size at most, in bytes and blocks.
inline constexpr std::size_t kLargest = 512;
inline constexpr std::size_t kKept = 64;

// As SQLite asks for it: for sqlite3_config, before SQLite is in use.
const sqlite3_mem_methods& Methods();

}  // namespace small_blocks

}  // namespace hearthmake::sqlite
