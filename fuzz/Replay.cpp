// Runs one fuzz target without a fuzzer: over every seed of its corpus and a fixed number of damaged copies
// of each, the same ones in every run. A file given by name is run as it is, to look at one find.
//   replay_FuzzX FOLDER|FILE...
// An input that ends the program is kept in the current folder as crash-<program>.

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
// Of the sanitizers, where the build has them: they end the program without a signal.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

constexpr int kMutationsPerSeed = 300;
constexpr std::size_t kLongestInput = 64 * 1024;

// What is being run, for the report of a crash.
struct Current {
  std::string keptAs;
  std::string description;
  std::string bytes;
};
Current g_current;

void KeepInput() {
  std::FILE* file = std::fopen(g_current.keptAs.c_str(), "wb");
  if (file != nullptr) {
    std::fwrite(g_current.bytes.data(), 1, g_current.bytes.size(), file);
    std::fclose(file);
  }
  std::fprintf(stderr, "The program ended in %s, kept as %s\n", g_current.description.c_str(),
               g_current.keptAs.c_str());
}

void OnSignal(int signal) {
  std::signal(signal, SIG_DFL);
  KeepInput();
  std::raise(signal);
}

void WatchForCrashes() {
  if (__sanitizer_set_death_callback != nullptr) {
    __sanitizer_set_death_callback(&KeepInput);
  } else {
    std::signal(SIGSEGV, &OnSignal);
    std::signal(SIGFPE, &OnSignal);
  }
  std::signal(SIGABRT, &OnSignal);
}

// Marsaglia's xorshift, so that every machine damages the seeds alike.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed * 0x9E3779B97F4A7C15 + 1) {}
  std::size_t Below(std::size_t limit) {
    m_state ^= m_state << 13;
    m_state ^= m_state >> 7;
    m_state ^= m_state << 17;
    return limit == 0 ? 0 : static_cast<std::size_t>(m_state >> 11) % limit;
  }

 private:
  std::uint64_t m_state;
};

void Truncate(std::string& bytes, Random& random) { bytes.resize(random.Below(bytes.size() + 1)); }

void FlipBit(std::string& bytes, Random& random) {
  if (bytes.empty()) return;
  char& byte = bytes[random.Below(bytes.size())];
  byte = static_cast<char>(byte ^ (1 << random.Below(8)));
}

void DuplicatePiece(std::string& bytes, Random& random) {
  const std::size_t start = random.Below(bytes.size());
  const std::string piece = bytes.substr(start, 1 + random.Below(64));
  bytes.insert(random.Below(bytes.size() + 1), piece);
}

// Bytes that mean something to one of the formats, or end a range of numbers.
void InsertBytes(std::string& bytes, Random& random) {
  static constexpr std::array<std::string_view, 14> kPieces = {
      "\"", "\\", "=", "#", ";", "[", "]", "'", "{", "\r\n", "\xFF\xFF\xFF\xFF", "\x80", "0", "\x7F"};
  const std::size_t choice = random.Below(kPieces.size() + 1);
  const std::string piece = choice < kPieces.size() ? std::string(kPieces[choice]) : std::string(4, '\0');
  bytes.insert(random.Below(bytes.size() + 1), piece);
}

// Over a number rather than between two: what follows keeps its place.
void Overwrite(std::string& bytes, Random& random) {
  static constexpr std::array<unsigned char, 5> kValues = {0x00, 0x01, 0x7F, 0x80, 0xFF};
  if (bytes.empty()) return;
  const std::size_t start = random.Below(bytes.size());
  const std::size_t count = std::min(bytes.size() - start, std::size_t{1} << random.Below(3));
  bytes.replace(start, count, count, static_cast<char>(kValues[random.Below(kValues.size())]));
}

std::string Damage(std::string bytes, Random& random) {
  static constexpr std::array kWays = {&FlipBit, &InsertBytes, &Overwrite, &DuplicatePiece, &Truncate};
  // Truncating is the rarer end of a mutation: it would hide what the others did behind its cut.
  for (std::size_t changes = 1 + random.Below(4); changes > 0; --changes) {
    kWays[random.Below(kWays.size() - 1)](bytes, random);
  }
  if (random.Below(8) == 0) kWays.back()(bytes, random);
  return bytes;
}

void Run(std::string bytes, std::string description) {
  g_current.bytes = std::move(bytes);
  g_current.description = std::move(description);
  // A copy of its own on the heap, so that a read past its end is seen.
  const std::vector<std::uint8_t> input(g_current.bytes.begin(), g_current.bytes.end());
  LLVMFuzzerTestOneInput(input.data(), input.size());
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file.good() && !file.eof()) {
    std::cerr << "Can't read " << path << "\n";
    std::exit(2);
  }
  return bytes;
}

// Returns how many inputs were run.
std::size_t ReplaySeed(const std::filesystem::path& seed) {
  const std::string bytes = ReadFile(seed).substr(0, kLongestInput);
  Run(bytes, seed.filename().string());
  Random random(bytes.size() + 1);
  for (int mutation = 1; mutation <= kMutationsPerSeed; ++mutation) {
    Run(Damage(bytes, random), seed.filename().string() + ", mutation " + std::to_string(mutation));
  }
  return 1 + kMutationsPerSeed;
}

std::vector<std::filesystem::path> SeedsIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> seeds;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.is_regular_file()) seeds.push_back(entry.path());
  }
  std::sort(seeds.begin(), seeds.end());
  return seeds;
}

}  // namespace

int main(int argc, char** argv) {
  g_current.keptAs = "crash-" + std::filesystem::path(argv[0]).filename().string();
  WatchForCrashes();
  std::size_t inputs = 0;
  for (const std::filesystem::path place : std::vector<std::string>(argv + 1, argv + argc)) {
    if (!std::filesystem::is_directory(place)) {
      Run(ReadFile(place), place.string());
      ++inputs;
      continue;
    }
    for (const auto& seed : SeedsIn(place)) inputs += ReplaySeed(seed);
  }
  std::cout << inputs << " inputs\n";
  if (inputs == 0) std::cerr << "There is nothing to run\n";
  return inputs == 0 ? 1 : 0;
}
