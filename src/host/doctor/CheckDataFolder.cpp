#include <fmt/format.h>

#include <filesystem>

#include "host/doctor/Checks.hpp"
#include "host/system/Places.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

namespace {

constexpr std::uintmax_t kMegabyte = 1024 * 1024;
// A database, its journal and the binaries of a build take less than this.
constexpr std::uintmax_t kScarce = 200 * kMegabyte;
constexpr std::uintmax_t kNone = 5 * kMegabyte;

}  // namespace

void CheckDataFolder(Session& session, Findings& findings) {
  const std::string& folder = session.Settings().DataFolder();
  std::error_code error;
  if (!std::filesystem::exists(folder, error)) {
    findings.Note("The data folder is not there yet; the first build makes it.", folder,
                  "hearthmake new NAME");
    return;
  }
  if (!std::filesystem::is_directory(folder, error)) {
    findings.Fail("The data folder is no folder.", folder, "Choose another one with --data DIR.");
    return;
  }
  std::string why;
  if (!IsWritable(folder, why)) {
    findings.Fail(fmt::format("The data folder can't be written: {}.", why), folder,
                  "chmod u+rwx " + ShellQuote(folder));
    return;
  }
  const std::filesystem::space_info space = std::filesystem::space(folder, error);
  const std::string text = fmt::format("{} MB are free.", error ? 0 : space.available / kMegabyte);
  if (error || space.available >= kScarce) {
    findings.Ok("The data folder can be written.", folder);
  } else if (space.available >= kNone) {
    findings.Warn("The disk of the data folder is nearly full: " + text, folder, "Make room on that disk.");
  } else {
    findings.Fail("The disk of the data folder is full: " + text, folder, "Make room on that disk.");
  }
}

}  // namespace hearthmake::host
