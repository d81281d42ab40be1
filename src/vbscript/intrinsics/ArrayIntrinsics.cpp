#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Arguments.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"
#include "vbscript/intrinsics/TextLists.hpp"

namespace hearthmake::vbscript {

using automation::ArrayBuffer;
using automation::Variant;
using automation::VariantType;

namespace {

Variant Array(Context& context, Arguments arguments) {
  context.budget.Charge(static_cast<std::int64_t>(arguments.size()));
  return ArrayOf(arguments);
}

// The bound of a dimension, counted from 1. A dynamic array that has not got its size yet has none: error 9.
ArrayBuffer::Bound BoundOf(Arguments arguments) {
  if (Resolve(arguments[0]).Type() != VariantType::Array) RaiseRuntime(number::kTypeMismatch);
  const std::int32_t dimension = LongOr(arguments, 1, 1);
  const std::span<const ArrayBuffer::Bound> bounds = arguments[0].AsArray()->Bounds();
  if (dimension < 1 || static_cast<std::size_t>(dimension) > bounds.size())
    RaiseRuntime(number::kSubscriptOutOfRange);
  return bounds[static_cast<std::size_t>(dimension) - 1];
}

Variant LBound(Context&, Arguments arguments) { return Variant::FromLong(BoundOf(arguments).lower); }

Variant UBound(Context&, Arguments arguments) {
  const ArrayBuffer::Bound bound = BoundOf(arguments);
  return Variant::FromLong(bound.lower + bound.count - 1);
}

constexpr Intrinsic kIntrinsics[] = {
    {"Array", 0, kAnyNumberOfArguments, Array},
    {"LBound", 1, 2, LBound},
    {"UBound", 1, 2, UBound},
};

}  // namespace

std::span<const Intrinsic> ArrayIntrinsics() { return kIntrinsics; }

}  // namespace hearthmake::vbscript
