#pragma once

#include <cstdint>
#include <span>

#include "automation/Variant.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// A function of the language itself. Arguments are values: no references; one that was left out between
// others is Variant::Missing(), those left out at the end are not in the span. The machine checks the
// number of arguments (error 450) before it calls. An argument may be an object where its default member
// is wanted. Long work is charged to context.budget.
struct Intrinsic {
  const char* name;
  std::uint8_t minimumArguments;
  std::uint8_t maximumArguments;
  automation::Variant (*call)(Context& context, std::span<automation::Variant> arguments);
};

inline constexpr std::uint8_t kAnyNumberOfArguments = 255;

// The intrinsics by subject, each list defined in the file of its name. Eval, Execute, ExecuteGlobal, GetRef,
// Err and what else needs the running program are the machine's own.
std::span<const Intrinsic>
ConversionIntrinsics();                        // CBool … CStr, Hex, Oct, Asc, Chr, VarType, TypeName, Is…
std::span<const Intrinsic> MathIntrinsics();   // Abs … Tan, Int, Fix, Round, Sgn, Rnd, Randomize, RGB
std::span<const Intrinsic> TextIntrinsics();   // Len, Mid, InStr, Replace, Split, Join, Filter, StrComp …
std::span<const Intrinsic> ArrayIntrinsics();  // Array, LBound, UBound
std::span<const Intrinsic> DateIntrinsics();   // Now, DateAdd, DateDiff, DatePart, DateSerial, Weekday …
std::span<const Intrinsic> FormatIntrinsics();  // FormatNumber, FormatCurrency, FormatPercent, FormatDateTime
std::span<const Intrinsic> HostIntrinsics();    // MsgBox, InputBox, CreateObject, GetObject, ScriptEngine …

// A constant of the language: vbCrLf, vbRed, vbSunday …
struct IntrinsicConstant {
  const char* name;
  automation::Variant value;
};
std::span<const IntrinsicConstant> IntrinsicConstants();

}  // namespace hearthmake::vbscript
