#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/HostError.hpp"
#include "host/Session.hpp"
#include "host/reports/RunReports.hpp"

namespace hearthmake::host {

// The words of the command: each takes what was typed behind it and does its work, one file each. A build
// is an id or a name, a project a name or an id. Failures are HostError and automation::Error.

struct NewArguments {
  std::string name;
};
ExitStatus NewCommand(Session& session, const NewArguments& arguments);

struct ListArguments {
  bool json = false;
};
ExitStatus ListCommand(Session& session, const ListArguments& arguments);

struct ShowArguments {
  std::string build;
  std::string project;   // or a property of the build; empty: the build itself
  std::string property;  // of the project; empty: all
  bool json = false;
};
ExitStatus ShowCommand(Session& session, const ShowArguments& arguments);

struct DeleteArguments {
  std::string build;
};
ExitStatus DeleteCommand(Session& session, const DeleteArguments& arguments);

struct AddArguments {
  std::string build;
  std::vector<std::string> files;
};
ExitStatus AddCommand(Session& session, const AddArguments& arguments);

struct RemoveArguments {
  std::string build;
  std::vector<std::string> projects;
};
ExitStatus RemoveCommand(Session& session, const RemoveArguments& arguments);

struct ScanArguments {
  std::string build;
  std::string folder;
  bool tests = false;
};
ExitStatus ScanCommand(Session& session, const ScanArguments& arguments);

struct RefsArguments {
  std::string build;
  std::string project;                                    // empty: all
  std::vector<std::pair<std::string, std::string>> add;   // project, target
  std::vector<std::pair<std::string, std::string>> drop;  // project, position from 1
  bool json = false;
};
ExitStatus RefsCommand(Session& session, const RefsArguments& arguments);

struct OrderArguments {
  std::string build;
  bool json = false;
};
ExitStatus OrderCommand(Session& session, const OrderArguments& arguments);

struct GraphArguments {
  std::string build;
  std::vector<std::string> projects;  // none: all
  std::string file;                   // empty: text to standard output
  bool users = false;                 // with those that need the projects
  bool reduce = true;
  bool json = false;
};
ExitStatus GraphCommand(Session& session, const GraphArguments& arguments);

struct BuildArguments {
  std::string build;
  bool resume = false;
  bool sources = false;    // take the latest sources first, whatever the setting says
  bool noSources = false;  // don't, whatever the setting says
  bool changed = false;
  std::vector<std::string> only;
  std::string from;
  bool keepGoing = false;
  bool dryRun = false;
  bool why = false;
  bool json = false;
  ReportOptions reports;
};
ExitStatus BuildCommand(Session& session, const BuildArguments& arguments);

struct SourcesArguments {
  std::string build;
  std::vector<std::string> projects;  // source projects; none: all
  std::optional<std::string> label;
  bool json = false;
};
ExitStatus SourcesCommand(Session& session, const SourcesArguments& arguments);

struct LabelArguments {
  std::string build;
  std::string label;
  std::string comment;
};
ExitStatus LabelCommand(Session& session, const LabelArguments& arguments);

struct CheckinArguments {
  std::string build;
  std::vector<std::string> files;
  std::string comment;  // empty: the library's own
  bool keep = false;
};
ExitStatus CheckinCommand(Session& session, const CheckinArguments& arguments);

struct CheckoutsArguments {
  std::string build;
  bool json = false;
};
ExitStatus CheckoutsCommand(Session& session, const CheckoutsArguments& arguments);

struct SourceprojectsArguments {
  std::string build;
  std::string action = "list";  // or add, edit, remove
  std::string source;           // path or id
  std::optional<std::string> ini;
  std::optional<std::string> user;
  std::optional<std::string> project;
  std::optional<std::string> folder;
  std::optional<std::string> database;
  std::optional<std::string> flags;
  bool password = false;       // asked for on the terminal
  bool passwordStdin = false;  // read from standard input
  bool json = false;
};
ExitStatus SourceprojectsCommand(Session& session, const SourceprojectsArguments& arguments);

struct GroupArguments {
  std::string build;
  std::string file;
  std::string startUp;  // a project; empty: none
  bool fix = false;     // the projects' references too
};
ExitStatus GroupCommand(Session& session, const GroupArguments& arguments);

struct RegfilesArguments {
  std::string build;
  std::string relative;  // a folder; empty: full paths, files in the data folder
};
ExitStatus RegfilesCommand(Session& session, const RegfilesArguments& arguments);

struct RegisterArguments {
  std::string build;
  std::vector<std::string> projects;  // none: all
};
ExitStatus RegisterCommand(Session& session, const RegisterArguments& arguments);
ExitStatus UnregisterCommand(Session& session, const RegisterArguments& arguments);

struct DistributeArguments {
  std::string build;
  std::vector<std::string> projects;  // none: all
};
ExitStatus DistributeCommand(Session& session, const DistributeArguments& arguments);

struct ScriptsArguments {
  std::string build;
  std::string event;    // empty: all seven
  std::string setFrom;  // a file, or "-" for standard input
  bool clear = false;
  bool check = false;
};
ExitStatus ScriptsCommand(Session& session, const ScriptsArguments& arguments);

struct BasesArguments {
  std::string build;
  std::string start;  // empty: the build's own
};
ExitStatus BasesCommand(Session& session, const BasesArguments& arguments);

enum class PackagesAction { List, Show, Add, Edit, Assign, Remove };
struct PackagesArguments {
  std::string build;
  PackagesAction action = PackagesAction::List;
  std::string package;                                      // a name or id; of a new one its name
  std::vector<std::pair<std::string, std::string>> values;  // of properties, as they were typed
  bool password = false;                                    // asked for
  bool passwordFromInput = false;
  std::vector<std::string> words;  // of assign: package and projects
  bool none = false;               // of assign: words are projects that go into no package
  bool json = false;
};
ExitStatus PackagesCommand(Session& session, const PackagesArguments& arguments);

struct DeployArguments {
  std::string build;
  std::vector<std::string> packages;  // none: all
  bool mts = false;                   // else COM+
  bool json = false;
};
ExitStatus DeployCommand(Session& session, const DeployArguments& arguments);

struct CatalogArguments {
  std::string build;  // empty: what is installed; else how it differs from this build
  bool mts = false;   // else COM+
  bool json = false;
  std::string unprotect;  // a package by name or key
  std::string remove;     // the same
};
ExitStatus CatalogCommand(Session& session, const CatalogArguments& arguments);

struct ScriptArguments {
  std::vector<std::string> words;  // everything behind the command's word
};
ExitStatus ScriptCommand(Session& session, const ScriptArguments& arguments);

struct SetArguments {
  std::string build;
  std::vector<std::string> words;  // project, property and value; without a project, of the build itself
};
ExitStatus SetCommand(Session& session, const SetArguments& arguments);

struct VersionArguments {
  std::string build;
  std::vector<std::string> words;  // a version, when the first looks like one, then projects; none: all
  std::string bump;                // major, minor or revision; empty: none
  bool json = false;
};
ExitStatus VersionCommand(Session& session, const VersionArguments& arguments);

struct DoctorArguments {
  std::string build;  // empty: the machine only
  bool json = false;
};
ExitStatus DoctorCommand(Session& session, const DoctorArguments& arguments);

struct SettingsArguments {
  std::string key;    // empty: all
  std::string value;  // used when hasValue
  bool hasValue = false;
  bool host = false;
};
ExitStatus SettingsCommand(Session& session, const SettingsArguments& arguments);

struct ImportArguments {
  std::string file;  // a Jet database or an exported build
  std::string into;  // a data folder; empty: the session's
  bool replace = false;
  std::string name;  // of the imported build; empty: its own
};
ExitStatus ImportCommand(Session& session, const ImportArguments& arguments);

struct ExportArguments {
  std::string build;
  std::string file;  // empty: standard output
  bool passwords = false;
};
ExitStatus ExportCommand(Session& session, const ExportArguments& arguments);

}  // namespace hearthmake::host
