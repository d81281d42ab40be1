// The parts of fmt that are not inline, for the command that carries its libraries along: Debian has them in
// a shared library only, which would bring the shared C++ library with it, and having them in every file that
// formats a text makes compiling it take three times as long.
#include <fmt/format-inl.h>

#include <locale>

// What fmt's headers expect somebody to instantiate, as far as it is used.
FMT_BEGIN_NAMESPACE
namespace detail {
template std::locale locale_ref::get<std::locale>() const;
template thousands_sep_result<char> thousands_sep_impl<char>(locale_ref);
template char decimal_point_impl<char>(locale_ref);
}  // namespace detail
FMT_END_NAMESPACE
