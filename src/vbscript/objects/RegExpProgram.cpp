#include "vbscript/objects/RegExpProgram.hpp"

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

#include <algorithm>
#include <chrono>
#include <new>

#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {

namespace {

using Clock = std::chrono::steady_clock;

// PCRE2's limit of backtracks is one for each starting place, and what a single backtrack walks over is not
// counted. So the longer a subject is, the fewer of both does one call get: even where every backtrack walks
// to the end of the subject, a call ends in time. In a subject up to kShortSubject it takes no millisecond.
constexpr std::size_t kShortSubject = 512;
constexpr std::size_t kShortMatchSteps = 64;
constexpr std::size_t kBacktrackedUnits = std::size_t{1} << 23;
constexpr std::size_t kFewestBacktracks = 32;
constexpr std::size_t kMostBacktracks = 1'000;
constexpr std::size_t kStartedUnits = std::size_t{1} << 25;
constexpr std::size_t kMostStarts = 128;
constexpr std::size_t kMostStartsWithoutLoops = 65'536;
constexpr std::int64_t kStepsPerCallout = 4;
constexpr std::size_t kUnitsPerStep = 64;

constexpr std::size_t kSmallestStack = 32 * 1024;
constexpr std::size_t kLargestStack = 64 * 1024 * 1024;
constexpr std::uint32_t kHeapKibibytes = 256 * 1024;

constexpr std::uint32_t kOptions = PCRE2_MATCH_UNSET_BACKREF | PCRE2_NEVER_UTF | PCRE2_NEVER_UCP |
                                   PCRE2_NEVER_BACKSLASH_C | PCRE2_USE_OFFSET_LIMIT;

PCRE2_SPTR16 Units(std::u16string_view text) {
  static constexpr char16_t kNothing[1] = {};  // PCRE2 takes no null pointer
  return reinterpret_cast<PCRE2_SPTR16>(text.data() != nullptr ? text.data() : kNothing);
}

struct Deleter {
  void operator()(pcre2_code_16* code) const { pcre2_code_free_16(code); }
  void operator()(pcre2_compile_context_16* context) const { pcre2_compile_context_free_16(context); }
  void operator()(pcre2_match_context_16* context) const { pcre2_match_context_free_16(context); }
  void operator()(pcre2_match_data_16* data) const { pcre2_match_data_free_16(data); }
  void operator()(pcre2_jit_stack_16* stack) const { pcre2_jit_stack_free_16(stack); }
};
template <class T>
using Owned = std::unique_ptr<T, Deleter>;

template <class T>
T* Allocated(T* object) {
  if (object == nullptr) RaiseRuntime(number::kOutOfMemory);
  return object;
}

// What a callout charges. An exception must not pass through compiled code, so it is put off.
struct Meter {
  Budget* budget = nullptr;
  std::int64_t steps = 0;
  bool isUsedUp = false;

  static int Charge(pcre2_callout_block_16*, void* self) {
    auto* meter = static_cast<Meter*>(self);
    try {
      meter->budget->Charge(meter->steps);
      return 0;
    } catch (const Interrupted&) {
      meter->isUsedUp = true;
      return PCRE2_ERROR_CALLOUT;
    }
  }
};

Owned<pcre2_code_16> Compile(const std::u16string& pattern, std::uint32_t options) {
  const Owned<pcre2_compile_context_16> context(Allocated(pcre2_compile_context_create_16(nullptr)));
  pcre2_set_newline_16(context.get(), PCRE2_NEWLINE_LF);
  pcre2_set_parens_nest_limit_16(context.get(), RegExpPattern::kMaximumDepth);
  int error = 0;
  PCRE2_SIZE place = 0;
  Owned<pcre2_code_16> code(
      pcre2_compile_16(Units(pattern), pattern.size(), options, &error, &place, context.get()));
  // A translated pattern is well-formed; what PCRE2 can refuse is its size.
  if (!code) RaiseRuntime(number::kOutOfMemory);
  pcre2_jit_compile_16(code.get(), PCRE2_JIT_COMPLETE);  // without it the interpreter does the same
  return code;
}

}  // namespace

class RegExpProgram::Library {
 public:
  explicit Library(std::u16string translation) : pattern(std::move(translation)) {
    quick = Compile(pattern, kOptions);
    data.reset(Allocated(pcre2_match_data_create_from_pattern_16(quick.get(), nullptr)));
    context.reset(Allocated(pcre2_match_context_create_16(nullptr)));
    pcre2_set_callout_16(context.get(), &Meter::Charge, &meter);
    pcre2_set_heap_limit_16(context.get(), kHeapKibibytes);
    std::uint32_t all = 0;
    pcre2_pattern_info_16(quick.get(), PCRE2_INFO_ALLOPTIONS, &all);
    isAnchored = (all & PCRE2_ANCHORED) != 0;
  }

  // False when there is a large stack already.
  bool EnlargeStack() {
    if (stack) return false;
    stack.reset(pcre2_jit_stack_create_16(kSmallestStack, kLargestStack, nullptr));
    if (!stack) return false;
    pcre2_jit_stack_assign_16(context.get(), nullptr, stack.get());
    return true;
  }

  std::u16string pattern;
  Owned<pcre2_code_16> quick;
  Owned<pcre2_code_16> careful;
  Owned<pcre2_match_data_16> data;
  Owned<pcre2_match_context_16> context;
  Owned<pcre2_jit_stack_16> stack;
  Meter meter;
  bool isAnchored = false;
};

RegExpProgram::RegExpProgram(std::u16string_view pattern, RegExpFlags flags) : m_flags(flags) {
  const RegExpPattern translated(pattern, flags);
  m_groups = translated.GroupCount();
  m_hasLoops = translated.HasLoops();
  m_library = std::make_unique<Library>(translated.Translation());
}

RegExpProgram::~RegExpProgram() = default;

std::span<const std::size_t> RegExpProgram::Places() const {
  static_assert(PCRE2_UNSET == kNoPlace);
  return {pcre2_get_ovector_pointer_16(m_library->data.get()), 2 * (std::size_t{m_groups} + 1)};
}

// How many starting places one call may try.
std::size_t RegExpProgram::WindowOf(std::size_t length) const {
  if (length <= kShortSubject || m_library->isAnchored) return length + 1;
  if (!m_hasLoops) return kMostStartsWithoutLoops;
  return std::clamp<std::size_t>(kStartedUnits / length, 1, kMostStarts);
}

bool RegExpProgram::Match(std::u16string_view subject, std::size_t start, Budget& budget) {
  if (start > subject.size()) return false;
  const std::size_t window = WindowOf(subject.size());
  while (true) {
    const std::size_t lastStart = start + std::min(subject.size() - start, window - 1);
    switch (MatchQuickly(subject, start, lastStart, budget)) {
      case Outcome::Match: return true;
      case Outcome::OverLimit: return MatchCarefully(subject, start, budget);
      default: break;
    }
    if (lastStart == subject.size() || m_library->isAnchored) return false;
    start = lastStart + 1;
  }
}

RegExpProgram::Outcome RegExpProgram::MatchQuickly(std::u16string_view subject, std::size_t start,
                                                   std::size_t lastStart, Budget& budget) {
  const bool isShort = subject.size() <= kShortSubject;
  const std::size_t backtracks = isShort ? kMostBacktracks
                                         : std::clamp<std::size_t>(kBacktrackedUnits / subject.size(),
                                                                   kFewestBacktracks, kMostBacktracks);
  pcre2_match_context_16* context = m_library->context.get();
  pcre2_set_match_limit_16(context, static_cast<std::uint32_t>(backtracks));
  pcre2_set_offset_limit_16(context, lastStart);
  const Clock::time_point begin = isShort ? Clock::time_point() : Clock::now();
  const int result = Run(false, subject, start);
  // A step is about a nanosecond. In a short subject a look at the clock would cost as much as the match.
  budget.Charge(isShort ? static_cast<std::int64_t>(kShortMatchSteps + subject.size() / 2)
                        : std::chrono::nanoseconds(Clock::now() - begin).count());
  if (result >= 0) return Outcome::Match;
  return result == PCRE2_ERROR_NOMATCH ? Outcome::NoMatch : Outcome::OverLimit;
}

bool RegExpProgram::MatchCarefully(std::u16string_view subject, std::size_t start, Budget& budget) {
  Library& library = *m_library;
  if (!library.careful) library.careful = Compile(library.pattern, kOptions | PCRE2_AUTO_CALLOUT);
  library.meter = {&budget, kStepsPerCallout + static_cast<std::int64_t>(subject.size() / kUnitsPerStep)};
  pcre2_set_match_limit_16(library.context.get(), ~std::uint32_t{0});
  pcre2_set_offset_limit_16(library.context.get(), PCRE2_UNSET);
  // PCRE2 counts to 2^32 backtracks for a starting place; what needs more has no answer in the end.
  const int result = Run(true, subject, start);
  if (library.meter.isUsedUp) throw Interrupted();
  if (result < 0 && result != PCRE2_ERROR_NOMATCH) RaiseRuntime(number::kOutOfMemory);
  return result >= 0;
}

int RegExpProgram::Run(bool isCareful, std::u16string_view subject, std::size_t start) {
  Library& library = *m_library;
  const auto match = [&](std::uint32_t options) {
    return pcre2_match_16((isCareful ? library.careful : library.quick).get(), Units(subject), subject.size(),
                          start, options, library.data.get(), library.context.get());
  };
  int result = match(0);
  if (result == PCRE2_ERROR_JIT_STACKLIMIT && library.EnlargeStack()) result = match(0);
  // The interpreter has its memory on the heap, and more of it.
  if (result == PCRE2_ERROR_JIT_STACKLIMIT && isCareful) result = match(PCRE2_NO_JIT);
  return result;
}

}  // namespace hearthmake::vbscript
