#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "foundation/modDatabase.hpp"
#include "support/TypeLibPeBuilder.hpp"
#include "support/TypeLibSltgWriter.hpp"
#include "support/Workbench.hpp"

namespace hearthmake::support {

// What a call raised; number 0 when it raised nothing.
struct Failure {
  std::int32_t number = 0;
  std::string source;
  std::string text;

  Failure() = default;
  Failure(std::int32_t n, std::string s, std::string t)
      : number(n), source(std::move(s)), text(std::move(t)) {}
  Failure(automation::BuildErrors n, std::string s, std::string t)
      : Failure(static_cast<std::int32_t>(n), std::move(s), std::move(t)) {}
  friend bool operator==(const Failure&, const Failure&) = default;
  friend void PrintTo(const Failure& failure, std::ostream* out) {
    *out << failure.number << " from \"" << failure.source << "\": " << failure.text;
  }
};

inline Failure FailureOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const automation::Error& error) {
    return {error.Number(), error.Source(), error.Description()};
  }
  return {};
}

inline const Failure kNoFailure;

// Hears the notices of a build.
class NoticeSink final : public BuildEvents {
 public:
  void ScriptNotify(const std::string& strMessage, automation::Variant& /*Cancel*/,
                    std::int32_t Progress) override {
    notices.push_back(strMessage);
    progress.push_back(Progress);
  }
  std::vector<std::string> notices;
  std::vector<std::int32_t> progress;
};

// A saved build on a workbench, and what tests of its projects do with it.
class ProjectBench : public Workbench {
 public:
  ProjectBench() { NewBuild(); }
  ~ProjectBench() { build->RemoveSink(sink); }

  // One row per key; the order of Visual Basic. Line feeds become CR LF when written.
  static std::string ProjectText(const std::string& type, const std::string& name,
                                 const std::string& moreRows = {}) {
    return "Type=" + type + "\n" + moreRows + "Startup=\"(None)\"\nName=\"" + name + "\"\nTitle=\"" + name +
           " library\"\nMajorVer=1\nMinorVer=0\nRevisionVer=0\nAutoIncrementVer=0\n";
  }
  // Writes a project file and adds it to the build.
  Project& Add(const std::string& path, const std::string& text) {
    Write(path, text);
    return *build->Projects().Add(path);
  }
  Project& AddDll(const std::string& path, const std::string& name, const std::string& moreRows = {}) {
    return Add(path, ProjectText("OleDll", name, moreRows));
  }

  // A binary with a type library: {000000nn-0000-0000-0000-000000000000}.
  static std::string LibraryId(std::uint8_t number) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    return std::string("{000000") + kDigits[number >> 4U] + kDigits[number & 0xFU] +
           "-0000-0000-0000-000000000000}";
  }
  static std::string LibraryBytes(std::uint8_t number, std::uint16_t major = 1, std::uint16_t minor = 0,
                                  const std::string& helpString = "A library") {
    test::TypeLibSltgWriter writer;
    writer.guid[0] = number;
    writer.name = "Lib";
    writer.helpString = helpString;
    writer.majorVersion = major;
    writer.minorVersion = minor;
    return writer.Write();
  }
  void MakeBinary(const std::string& path, std::uint8_t number, std::uint16_t major = 1,
                  std::uint16_t minor = 0, const std::string& helpString = "A library") const {
    WriteBytes(
        path, test::TypeLibPeBuilder().AddTypeLib(1, LibraryBytes(number, major, minor, helpString)).Build());
  }
  void SetClassesValue(const std::string& key, const std::string& value) const {
    registry->Set(platform::RegistryRoot::ClassesRoot, key, "", {platform::RegistryType::String, value});
  }

  // The rows of a project's file, without the line ends.
  std::vector<std::string> Rows(const std::string& path) const {
    const std::string bytes = Read(path);
    std::vector<std::string> rows;
    std::size_t start = 0;
    while (start < bytes.size()) {
      const std::size_t end = std::min(bytes.find("\r\n", start), bytes.size());
      rows.push_back(bytes.substr(start, end - start));
      start = end + 2;
    }
    return rows;
  }
  static std::vector<std::string> References(const Project& project) {
    std::vector<std::string> texts;
    for (const auto& reference : project.ReferenceList().Items()) {
      texts.push_back(reference->IsExternal() ? reference->ReferenceString()
                                              : "-> " + automation::Decimal(reference->ReferencedProject()));
    }
    return texts;
  }
  static std::string To(const Project& project) { return "-> " + automation::Decimal(project.Id()); }

  // What the database holds, whatever the objects think.
  static std::string StoredText(const std::string& sql, const std::string& column) {
    const auto row = modDatabase::OpenDynaset(sql);
    return row->AtEnd() ? "(no row)" : row->GetText(column);
  }
  static std::string Stored(const Project& project, const std::string& column) {
    return StoredText("SELECT * FROM Project WHERE id = " + automation::Decimal(project.Id()), column);
  }
  static int CountRows(const std::string& table) {
    const auto rows = modDatabase::OpenDynaset("SELECT * FROM " + table);
    int count = 0;
    for (; !rows->AtEnd(); rows->MoveNext()) ++count;
    return count;
  }
  // The same build, loaded anew from the database.
  automation::Ref<Build> Reload() const {
    auto again = automation::Make<Build>();
    again->Load(build->Id());
    return again;
  }

  automation::Ref<Build> build;
  NoticeSink sink;

 private:
  void NewBuild() {
    build = automation::Make<Build>();
    build->BeginEdit();
    build->SetName("Suite");
    build->ApplyEdit();
    build->AddSink(sink);
  }
};

}  // namespace hearthmake::support
