#include "host/commandline/CommandLine.hpp"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "host/Session.hpp"
#include "host/builds/Properties.hpp"
#include "host/commandline/Completion.hpp"
#include "host/commandline/ManPage.hpp"
#include "host/commands/Commands.hpp"
#include "host/packages/Packages.hpp"
#include "host/system/SystemTexts.hpp"

namespace hearthmake::host {

namespace {

constexpr const char* kOverview =
    "Builds suites of Visual Basic 6 projects: keeps sets of projects (builds), works out the compile\n"
    "order, brings the project files up to date and drives the compiler.";

constexpr const char* kEpilogue =
    "First steps:\n"
    "  hearthmake new Shop\n"
    "  hearthmake settings VBExe /opt/vb6/vb6.exe\n"
    "  hearthmake scan Shop ~/src/shop\n"
    "  hearthmake build Shop\n"
    "\n"
    "A BUILD is an id or a name, a PROJECT a name or an id. Paths may be POSIX or DOS paths.\n"
    "Each command has its own help: hearthmake build --help\n"
    "Exit status: 0 done, 1 the build failed, or a deployment, 2 wrong usage or input, 3 cancelled.";

constexpr const char* kPackagesWord = "packages";
// For the completions of shells; see Completion.hpp.
constexpr const char* kCompleteWord = "__complete";
// Prints the manual page, when the program is built.
constexpr const char* kManWord = "__man";

// A name that is a row of words says itself what may be left out and what repeated.
class HelpFormat : public CLI::Formatter {
 public:
  std::string make_option_usage(const CLI::Option* option) const override {
    return IsRow(option) ? make_option_name(option, true) : CLI::Formatter::make_option_usage(option);
  }
  std::string make_option_opts(const CLI::Option* option) const override {
    if (!IsRow(option)) return CLI::Formatter::make_option_opts(option);
    return option->get_required() ? " REQUIRED" : "";
  }

 private:
  static bool IsRow(const CLI::Option* option) { return option->get_name().find(' ') != std::string::npos; }
};

// Which words of the command are declared.
struct Extent {
  std::vector<std::string_view> typed;  // what stands on the command line
  // Only groups of words with one that was typed: declaring all takes longer than many a command.
  bool isTypedOnly = false;

  bool Holds(std::string_view word) const {
    return std::find(typed.begin(), typed.end(), word) != typed.end();
  }
};

// The words of the command with their options. Parsing fills the arguments and leaves the action to run.
class Words {
 public:
  Words(CLI::App& app, Extent extent) : m_app(app), m_extent(std::move(extent)) {
    AddGlobalOptions();
    if (IsWanted({"new", "list", "show", "delete"})) AddBuildWords();
    if (IsWanted({"add", "remove", "scan", "refs", "set", "version"})) AddProjectWords();
    if (IsWanted({"graph"})) AddGraphWord();
    if (IsWanted({"order", "build", "scripts", "bases"})) AddRunWords();
    if (IsWanted({"sources", "label", "checkin", "checkouts", "sourceprojects"})) AddSourceWords();
    if (IsWanted({"group", "regfiles", "register", "unregister", "distribute"})) AddOutputWords();
    if (IsWanted({kPackagesWord, "deploy", "catalog"})) AddDeploymentWords();
    if (IsWanted({"script"})) AddScriptWord();
    if (IsWanted({"settings"})) AddSettingWords();
    if (IsWanted({"import", "export"})) AddMovingWords();
    if (IsWanted({"doctor"})) AddDoctorWord();
  }

  const HostOptions& Options() const { return m_options; }
  ExitStatus Run(Session& session) const { return m_action(session); }

 private:
  bool IsWanted(std::initializer_list<std::string_view> words) const {
    return !m_extent.isTypedOnly ||
           std::any_of(words.begin(), words.end(), [this](auto word) { return m_extent.Holds(word); });
  }

  template <class Arguments>
  CLI::App* Add(const char* name, const std::string& description, const char* example, Arguments& arguments,
                ExitStatus (*run)(Session&, const Arguments&)) {
    CLI::App* word = m_app.add_subcommand(name, description);
    word->footer(std::string("Example:\n  ") + example);
    word->fallthrough();
    word->callback([this, &arguments, run] {
      m_action = [&arguments, run](Session& session) { return run(session, arguments); };
    });
    return word;
  }

  static void AddBuild(CLI::App* word, std::string& build) {
    word->add_option("BUILD", build, "id or name of the build")->required();
  }
  static void AddProjects(CLI::App* word, std::vector<std::string>& projects) {
    word->add_option("PROJECT", projects, "names or ids of projects; without any, all");
  }
  static void AddJson(CLI::App* word, bool& json, const char* description = "print JSON") {
    word->add_flag("--json", json, description);
  }

  void AddGlobalOptions() {
    m_app.add_option("--data", m_options.dataFolder, Texts().dataOption)->type_name("DIR")->take_last();
    if (HostSettings::ChoosesDrives()) AddDriveOptions();
    m_app.add_flag("--no-color", m_options.noColour, "no colours (also by NO_COLOR)");
  }

  void AddDriveOptions() {
    m_app
        .add_option_function<std::string>(
            "--wine-prefix", [this](const std::string& prefix) { m_options.winePrefix = prefix; },
            "Wine prefix whose drives and registry are used (else $HEARTHMAKE_WINE_PREFIX, "
            "settings --host WinePrefix)")
        ->type_name("DIR")
        ->take_last();
    m_app.add_option("--drive", m_options.drives, "give a drive letter a folder; may be repeated")
        ->type_name("X:=DIR")
        ->expected(1)
        ->take_all();
  }

  void AddBuildWords() {
    CLI::App* word = Add("new", "Make a build.", "hearthmake new Shop", m_new, &NewCommand);
    word->add_option("NAME", m_new.name, "its name, up to 30 characters")->required();

    word = Add("list", "List the builds.", "hearthmake list --json", m_list, &ListCommand);
    AddJson(word, m_list.json);

    word = Add("show",
               "Show a build, all about one of its projects, or one property. A wrong name lists what there\n"
               "is.",
               "hearthmake show Shop Prices", m_show, &ShowCommand);
    AddBuild(word, m_show.build);
    word->add_option("PROJECT", m_show.project, "name or id of a project, or a property of the build");
    word->add_option("PROPERTY", m_show.property, "a property of the project");
    AddJson(word, m_show.json);

    word = Add("delete", "Delete a build. Its project files stay as they are.", "hearthmake delete Shop",
               m_delete, &DeleteCommand);
    AddBuild(word, m_delete.build);
  }

  void AddProjectWords() {
    CLI::App* word = Add("add", "Add project files, or all that group files list, and detect references.",
                         "hearthmake add Shop src/Prices/Prices.vbp src/Tools.vbg", m_add, &AddCommand);
    AddBuild(word, m_add.build);
    word->add_option("FILE", m_add.files, "project (.vbp) and group (.vbg) files")->required();

    word = Add("remove", "Take projects out of a build. Refused while other projects reference them.",
               "hearthmake remove Shop Prices", m_remove, &RemoveCommand);
    AddBuild(word, m_remove.build);
    word->add_option("PROJECT", m_remove.projects, "names or ids of projects")->required();

    word =
        Add("scan",
            "Add every project below a folder, and detect references. Left out are files whose names hold\n"
            "\"test\" or begin with \"project\", and projects whose names are in the build already.",
            "hearthmake scan Shop ~/src/shop --tests", m_scan, &ScanCommand);
    AddBuild(word, m_scan.build);
    word->add_option("DIR", m_scan.folder, "the folder")->required();
    word->add_flag("--tests", m_scan.tests, "leave no project file out by its name");

    word = Add("refs",
               "Detect the references anew from the project files and list them. With --add and --drop the\n"
               "references stay as they are but for the change; the next compile writes it to the file.",
               "hearthmake refs Shop --add Till Prices --drop Till 3", m_refs, &RefsCommand);
    AddBuild(word, m_refs.build);
    word->add_option("PROJECT", m_refs.project, "only this project");
    word->add_option("--add", m_refs.add,
                     "give PROJECT a reference to TARGET: a project of the build, a library file, or a row\n"
                     "of a project file (Reference=*\\G{...")
        ->type_name("PROJECT TARGET");
    word->add_option("--drop", m_refs.drop, "take the reference at position INDEX away from PROJECT")
        ->type_name("PROJECT INDEX");
    AddJson(word, m_refs.json);

    AddPropertyWords();
  }

  void AddPropertyWords() {
    CLI::App* word = Add("set",
                         "Set a property of a project, or of the build itself where no project is named. A\n"
                         "wrong name lists what there is.",
                         "hearthmake set Shop Prices CompatibleMode BinaryCompatibility", m_set, &SetCommand);
    AddBuild(word, m_set.build);
    word->add_option("[PROJECT] PROPERTY VALUE", m_set.words,
                     "a project by name or id, a property as show lists them, and a text, a number, true\n"
                     "or false, or a name of an enumeration")
        ->required()
        ->expected(2, 3);

    word = Add("version",
               "Show, set or raise the versions of projects: all are changed, or, on an error, none. Each\n"
               "number is 0 to 9999. The next compile writes them to the project files, but for the\n"
               "revision where AutoIncrementVer is on: that one the compiler counts in the file.",
               "hearthmake version Shop --bump minor Prices Till", m_version, &VersionCommand);
    AddBuild(word, m_version.build);
    word->add_option("[X.Y.Z] [PROJECT...]", m_version.words,
                     "major, minor and revision number to set, and names or ids of projects; without any,\n"
                     "all");
    word->add_option("--bump", m_version.bump, "raise this part by one and set those behind it to 0")
        ->type_name("PART")
        ->check(CLI::IsMember({"major", "minor", "revision"}));
    AddJson(word, m_version.json);
  }

  void AddGraphWord() {
    CLI::App* word = Add(
        "graph",
        "Draw the references of a build: as text of Graphviz on standard output, or as a picture. Shapes\n"
        "tell the types of projects, colours what failed or changed, red a cycle. With PROJECTs, only\n"
        "these and all that they need.",
        "hearthmake graph Shop -o shop.svg", m_graph, &GraphCommand);
    AddBuild(word, m_graph.build);
    word->add_option("PROJECT", m_graph.projects, "names or ids of projects; without any, all");
    word->add_option("-o,--output", m_graph.file,
                     "write to FILE: .dot for the text; .svg, .png or .pdf are drawn by Graphviz")
        ->type_name("FILE");
    word->add_flag("--users", m_graph.users, "also those that need the PROJECTs");
    word->add_flag("--reduce,!--no-reduce", m_graph.reduce,
                   "leave references out that others imply (on, unless --no-reduce)");
    AddJson(word, m_graph.json, "write JSON instead of Graphviz's text; no reference is left out");
  }

  void AddRunWords() {
    CLI::App* word = Add("order", "Print the compile order; when there is none, a cycle of references.",
                         "hearthmake order Shop", m_order, &OrderCommand);
    AddBuild(word, m_order.build);
    AddJson(word, m_order.json);

    word = Add("build", "Compile the projects of a build in the order of their references.",
               "hearthmake build Shop --resume", m_build, &BuildCommand);
    AddBuild(word, m_build.build);
    word->add_flag("--resume", m_build.resume, "go on where the last run failed or was cancelled");
    CLI::Option* sources = word->add_flag("--sources", m_build.sources,
                                          "take the latest sources first, as with TakeLatestFromVSS on");
    word->add_flag("--no-sources", m_build.noSources, "compile what is there, whatever TakeLatestFromVSS is")
        ->excludes(sources);
    AddRunChoices(word);
    AddJson(word, m_build.json, "print each event as a line of JSON");
    AddReports(word, m_build.reports);

    word = Add("scripts",
               "List, show, set or check the scripts that a build runs at the seven points of its way. They\n"
               "run when the setting RunScripts is on.",
               "hearthmake scripts Shop BeforeComplie --set before.vbs", m_scripts, &ScriptsCommand);
    AddBuild(word, m_scripts.build);
    word->add_option("EVENT", m_scripts.event, "one of the seven, as the list names them; prints its script");
    word->add_option("--set", m_scripts.setFrom, "take the script of EVENT from FILE (- for standard input)")
        ->type_name("FILE");
    word->add_flag("--clear", m_scripts.clear, "take the script of EVENT away")->excludes("--set");
    word->add_flag("--check", m_scripts.check,
                   "compile without running: includes, %Build.…% values and syntax");

    word = Add("bases",
               "Give each library and control its own base address, on 64 KB boundaries, in compile order.",
               "hearthmake bases Shop '&H11000000'", m_bases, &BasesCommand);
    AddBuild(word, m_bases.build);
    word->add_option(
        "START", m_bases.start,
        "first address (&H..., 0x... or decimal), kept for the next time; without it the one kept");
  }

  static void AddReports(CLI::App* word, ReportOptions& reports) {
    word->add_option("--html", reports.html,
                     "write a page about the run to FILE, whatever becomes of it: times, references, errors\n"
                     "with their source lines, and what changed since the last run with a page")
        ->type_name("FILE");
    word->add_option("--junit", reports.junit,
                     "write the results to FILE as JUnit XML, whatever becomes of the run")
        ->type_name("FILE")
        ->excludes("--dry-run");
    word->add_option("--code-quality", reports.codeQuality,
                     "write the errors to FILE as GitLab's code-quality JSON")
        ->type_name("FILE")
        ->excludes("--dry-run");
    word->add_option("--annotations", reports.annotations,
                     "mark errors and fold projects in the log of a CI service: github, gitlab, azure,\n"
                     "teamcity, or auto for the one on which it runs. docs/ci.md has examples")
        ->type_name("SERVICE")
        ->check(CLI::IsMember(AnnotationServices()))
        ->excludes("--dry-run");
  }

  void AddRunChoices(CLI::App* word) {
    word->add_flag("--changed", m_build.changed,
                   "compile only what is older than its project file, its sources or the binaries that it\n"
                   "references, and all that depends on it");
    word->add_option("--only", m_build.only, "compile just these projects")->type_name("PROJECT");
    word->add_option("--from", m_build.from, "compile this project and all behind it in compile order")
        ->type_name("PROJECT");
    word->add_flag("--keep-going", m_build.keepGoing,
                   "when a project fails, go on with those that do not depend on it");
    word->add_flag("--dry-run", m_build.dryRun,
                   "show what would be compiled and how the project files would change; touch nothing");
    word->add_flag("--why", m_build.why, "tell of each project why it is compiled or left out");
  }

  void AddSourceWords() {
    CLI::App* word =
        Add("sources",
            "Get the latest sources of a build from source control, or those of a label. Exit status 1 when\n"
            "they can't be got, or when a source project has no such label.",
            "hearthmake sources Shop --label 'Release 2'", m_sources, &SourcesCommand);
    AddBuild(word, m_sources.build);
    word->add_option("PROJECT", m_sources.projects, "paths or ids of source projects; without any, all");
    word->add_option("--label", m_sources.label, "the newest version that has this label, exactly")
        ->type_name("LABEL");
    AddJson(word, m_sources.json, "print each source project and file as a line of JSON");

    word = Add("label", "Put a label on the sources of a build as they are in source control.",
               "hearthmake label Shop 'Release 2' -m 'as shipped'", m_label, &LabelCommand);
    AddBuild(word, m_label.build);
    word->add_option("LABEL", m_label.label, "the label")->required();
    word->add_option("-m,--message", m_label.comment, "a comment to it")->type_name("TEXT");

    word = Add(
        "checkin",
        "Check files in to source control, each where its working folder says. A file is checked out\n"
        "first, without being got, unless you hold it. Exit status 1 when one could not be checked in.",
        "hearthmake checkin Shop src/Prices/Prices.vbp -m 'New base address'", m_checkin, &CheckinCommand);
    AddBuild(word, m_checkin.build);
    word->add_option("FILE", m_checkin.files, "files below the working folders")->required();
    word->add_option("-m,--message", m_checkin.comment, "the comment, else 'Hearthmake Check in'")
        ->type_name("TEXT");
    word->add_flag("--keep", m_checkin.keep, "keep the files checked out");

    word = Add("checkouts", "List the files of a build's sources that somebody has checked out.",
               "hearthmake checkouts Shop --json", m_checkouts, &CheckoutsCommand);
    AddBuild(word, m_checkouts.build);
    AddJson(word, m_checkouts.json);

    word = Add("sourceprojects",
               "List, add, change or remove the source projects of a build: where its sources come from and\n"
               "where they are worked on. docs/sourcecontrol.md tells what the ini file says.",
               "hearthmake sourceprojects Shop add '$/Shop' --ini /srv/shop/srcsafe.ini --folder ~/src/shop",
               m_sourceprojects, &SourceprojectsCommand);
    AddBuild(word, m_sourceprojects.build);
    word->add_option("ACTION", m_sourceprojects.action, "list (the default), add, edit or remove")
        ->check(CLI::IsMember({"list", "add", "edit", "remove"}));
    word->add_option("SOURCE", m_sourceprojects.source,
                     "the path inside the database, as '$/Shop', or the id of the source project");
    AddSourceProperties(word);
    AddJson(word, m_sourceprojects.json, "print the list as JSON");
  }

  void AddSourceProperties(CLI::App* word) {
    word->add_option("--ini", m_sourceprojects.ini, "ini file of the database")->type_name("FILE");
    word->add_option("--user", m_sourceprojects.user, "who opens it")->type_name("NAME");
    CLI::Option* password = word->add_flag("--password", m_sourceprojects.password,
                                           "ask for a password or access token on the terminal");
    word->add_flag("--password-stdin", m_sourceprojects.passwordStdin,
                   "read it from the first line of standard input")
        ->excludes(password);
    word->add_option("--project", m_sourceprojects.project, "path inside the database")->type_name("PATH");
    word->add_option("--folder", m_sourceprojects.folder,
                     "the working folder; empty: the one that the database has for the user")
        ->type_name("DIR");
    word->add_option("--database", m_sourceprojects.database, "a description of the database")
        ->type_name("TEXT");
    word->add_option("--flags", m_sourceprojects.flags,
                     "how files are got: readonly or writable, recursive or flat, keep (local work is not\n"
                     "replaced), timenow, timemodified or timeupdated, parted by commas; none; or a number.\n"
                     "add takes recursive without it")
        ->type_name("FLAGS");
  }

  void AddOutputWords() {
    CLI::App* word = Add(
        "group", "Write a project group file (.vbg) that opens every project of a build that is compiled.",
        "hearthmake group Shop ~/src/shop/Shop.vbg --startup Till --fix", m_group, &GroupCommand);
    AddBuild(word, m_group.build);
    word->add_option("FILE", m_group.file, "the group file; one that is there is replaced")->required();
    word->add_option("--startup", m_group.startUp, "the project that starts when the group is run")
        ->type_name("PROJECT");
    word->add_flag(
        "--fix", m_group.fix,
        "let the projects' files refer to each other by project file, so that the group runs from\n"
        "sources; the next build puts type libraries in their place");

    word = Add("regfiles",
               "Write two batch files that register and unregister the ActiveX components of a build on\n"
               "another machine, and print their names. They go to the data folder and hold full paths.",
               "hearthmake regfiles Shop --relative ~/src/shop/bin", m_regfiles, &RegfilesCommand);
    AddBuild(word, m_regfiles.build);
    word->add_option("--relative", m_regfiles.relative,
                     "write them to this folder, with paths that start there")
        ->type_name("DIR");

    word = Add("register", Texts().registerWord, "hearthmake register Shop Prices", m_register,
               &RegisterCommand);
    AddBuild(word, m_register.build);
    AddProjects(word, m_register.projects);

    word = Add("unregister",
               "Take the ActiveX components of a build out of the registry. Their binaries must still be\n"
               "there: they tell what to take out. Exit status 1 when one could not be.",
               "hearthmake unregister Shop", m_unregister, &UnregisterCommand);
    AddBuild(word, m_unregister.build);
    AddProjects(word, m_unregister.projects);

    word = Add("distribute",
               "Copy the binaries of a build to where their projects' CopyPath says, with the type library\n"
               "where RemoteServerFiles is on. Exit status 1 when one could not be copied.",
               "hearthmake distribute Shop Prices", m_distribute, &DistributeCommand);
    AddBuild(word, m_distribute.build);
    AddProjects(word, m_distribute.projects);
  }

  void AddDeploymentWords() {
    AddPackagesWord();
    CLI::App* word =
        Add("deploy",
            "Bring the packages of a build, with the binaries of their projects, into the catalog of\n"
            "COM+ applications or MTS packages, and export those with an ExportPath. Exit status 1\n"
            "when it failed.",
            "hearthmake deploy Shop Orders", m_deploy, &DeployCommand);
    AddBuild(word, m_deploy.build);
    word->add_option("PACKAGE", m_deploy.packages, "names or ids of packages; without any, all");
    word->add_flag("--mts", m_deploy.mts, "to MTS instead of COM+");
    AddJson(word, m_deploy.json, "print each event as a line of JSON");

    word = Add("catalog", Texts().catalogWord, "hearthmake catalog Shop", m_catalog, &CatalogCommand);
    word->add_option("BUILD", m_catalog.build, "id or name of a build to compare with");
    word->add_flag("--mts", m_catalog.mts, "the packages of MTS instead of the applications of COM+");
    word->add_option("--unprotect", m_catalog.unprotect,
                     "let NAME be changed and removed again, which DisableChanges or DisableDelete forbid")
        ->type_name("NAME");
    word->add_option("--remove", m_catalog.remove, "take NAME out of the catalog, protected or not")
        ->type_name("NAME")
        ->excludes("--unprotect");
    AddJson(word, m_catalog.json);
  }

  void AddPackagesWord() {
    CLI::App* word = Add(
        kPackagesWord,
        "List the packages of a build: what a catalog of component services gets of it, and which of its\n"
        "projects go there. The same package is an MTS package and a COM+ application.",
        "hearthmake packages Shop add Orders --Description 'The order desk' --Shutdowntime 10", m_packages,
        &PackagesCommand);
    AddBuild(word, m_packages.build);
    AddJson(word, m_packages.json, "print JSON (list and show)");

    AddPackagesAction(word, "list", "List the packages with their projects.", PackagesAction::List);
    CLI::App* action =
        AddPackagesAction(word, "show", "Show all properties of a package.", PackagesAction::Show);
    AddPackage(action);
    action = AddPackagesAction(word, "add", "Make a package.", PackagesAction::Add);
    action->add_option("NAME", m_packages.package, "its name, up to 50 characters")->required();
    AddPackageProperties(action, false);
    action = AddPackagesAction(word, "edit", "Set properties of a package.", PackagesAction::Edit);
    AddPackage(action);
    AddPackageProperties(action, true);
    action = AddPackagesAction(word, "assign", "Put projects into a package, or into none.",
                               PackagesAction::Assign);
    action
        ->add_option("PACKAGE PROJECT...", m_packages.words,
                     "a package, then the projects; behind --none projects")
        ->required();
    action->add_flag("--none", m_packages.none, "take the projects out of their packages");
    action =
        AddPackagesAction(word, "remove", "Remove a package that no project is in.", PackagesAction::Remove);
    AddPackage(action);
  }

  CLI::App* AddPackagesAction(CLI::App* packages, const char* name, const char* description,
                              PackagesAction action) {
    CLI::App* word = packages->add_subcommand(name, description);
    word->fallthrough();
    word->parse_complete_callback([this, action] { m_packages.action = action; });
    return word;
  }

  void AddPackage(CLI::App* word) {
    word->add_option("PACKAGE", m_packages.package, "name or id of the package")->required();
  }

  void AddPackageProperties(CLI::App* word, bool withName) {
    // They are many, and made only for those who might use them.
    if (!m_extent.Holds(kPackagesWord)) return;
    for (const PackageProperty& property : SettablePackageProperties()) {
      const std::string& name = property.member->name;
      if (name == "Name" && !withName) continue;
      word->add_option_function<std::string>(
              "--" + name,
              [this, name](const std::string& value) { m_packages.values.emplace_back(name, value); },
              property.isOfMts ? "of MTS only" : "")
          ->ignore_case()
          ->take_last()
          ->type_name(ChoicesText(*property.member));
    }
    word->add_flag("--password", m_packages.password, "ask for the password of User on the terminal");
    word->add_flag("--password-stdin", m_packages.passwordFromInput,
                   "take it from the first line of standard input")
        ->excludes("--password");
  }

  void AddScriptWord() {
    CLI::App* word =
        Add("script",
            "Run a VBScript file: hearthmake script [//OPTION...] FILE.vbs [ARG...]\n"
            "Everything behind FILE belongs to the script. Options of the script host: //T:SECONDS ends the\n"
            "script after that time, //B shows no messages, //I does; //nologo and //E:VBScript are\n"
            "accepted. The options of hearthmake itself stand before the word script. Exit status: that of\n"
            "WScript.Quit, 1 on an error or a time-out, 2 wrong usage, 3 cancelled.",
            "hearthmake script deploy.vbs /target:test Shop", m_script, &ScriptCommand);
    word->fallthrough(false);
    word->prefix_command();
    word->parse_complete_callback([this, word] { m_script.words = word->remaining(); });
  }

  void AddSettingWords() {
    CLI::App* word = Add("settings", "Show or change the settings of the library, or of this command.",
                         "hearthmake settings VBExe '/opt/vb6/vb6.exe'", m_settings, &SettingsCommand);
    word->add_option("KEY", m_settings.key, "name of a setting");
    CLI::Option* value = word->add_option("VALUE", m_settings.value, "its new value");
    word->add_flag("--host", m_settings.host, Texts().hostOption);
    word->parse_complete_callback([this, value] { m_settings.hasValue = value->count() > 0; });
  }

  void AddMovingWords() {
    CLI::App* word = Add(
        "import",
        "Take over the builds of a Jet database (Jet 3 or 4), which gives a new database; or a build that\n"
        "was exported, which is added to those that are there. When it fails nothing has changed.",
        "hearthmake import /mnt/old/Build.mdb --into ~/builds", m_import, &ImportCommand);
    word->add_option("FILE", m_import.file, "the database (.mdb) or the exported build (.json)")->required();
    word->add_option("--into", m_import.into,
                     "the data folder, made where it is missing; else that of --data")
        ->type_name("DIR");
    word->add_flag("--replace", m_import.replace,
                   "put it in the place of the database, or of the build of that name, that is there");
    word->add_option("--name", m_import.name, "give the exported build this name")->type_name("NAME");

    word =
        Add("export",
            "Write a build with all that is stored of it as JSON, to FILE or to standard output, for import\n"
            "elsewhere. The project files themselves are not in it.",
            "hearthmake export Shop shop.json", m_export, &ExportCommand);
    AddBuild(word, m_export.build);
    word->add_option("FILE", m_export.file, "the file; one that is there is replaced");
    word->add_flag("--passwords", m_export.passwords,
                   "with the passwords of packages and source projects, as they are");
  }

  void AddDoctorWord() {
    CLI::App* word =
        Add("doctor",
            "Look for what would keep a build from succeeding: compiler, Wine, data folder and database, and "
            "with\n"
            "BUILD its files, references, folders and addresses. Says how to mend what it finds and changes\n"
            "nothing. Exit status 1 when something is an error.",
            "hearthmake doctor Shop", m_doctor, &DoctorCommand);
    word->add_option("BUILD", m_doctor.build,
                     "id or name of a build; without it only the machine is looked at");
    AddJson(word, m_doctor.json);
  }

  CLI::App& m_app;
  Extent m_extent;
  HostOptions m_options;
  std::function<ExitStatus(Session&)> m_action;
  NewArguments m_new;
  ListArguments m_list;
  ShowArguments m_show;
  DeleteArguments m_delete;
  AddArguments m_add;
  RemoveArguments m_remove;
  ScanArguments m_scan;
  RefsArguments m_refs;
  OrderArguments m_order;
  GraphArguments m_graph;
  BuildArguments m_build;
  SourcesArguments m_sources;
  LabelArguments m_label;
  CheckinArguments m_checkin;
  CheckoutsArguments m_checkouts;
  SourceprojectsArguments m_sourceprojects;
  BasesArguments m_bases;
  GroupArguments m_group;
  RegfilesArguments m_regfiles;
  RegisterArguments m_register;
  RegisterArguments m_unregister;
  DistributeArguments m_distribute;
  ScriptsArguments m_scripts;
  PackagesArguments m_packages;
  DeployArguments m_deploy;
  CatalogArguments m_catalog;
  ScriptArguments m_script;
  SetArguments m_set;
  VersionArguments m_version;
  SettingsArguments m_settings;
  ImportArguments m_import;
  ExportArguments m_export;
  DoctorArguments m_doctor;
};

std::string ErrorNumber(std::int32_t number) {
  return number < 0 ? "&H" + automation::Hex(number) : automation::Decimal(number);
}

std::string Described(const automation::Error& error) {
  const std::string where = error.Source().empty() ? "" : " in " + error.Source();
  return fmt::format("{} (error {}{})", Printable(error.Description()), ErrorNumber(error.Number()), where);
}

void Tell(const Console& console, const std::string& message, const std::string& advice) {
  console.Note(console.PaintErr(Colour::Red, "error: ") + Printable(message));
  if (!advice.empty()) console.Err(Printable(advice) + "\n");
}

bool IsAboutDatabase(const automation::Error& error) {
  return error.Number() == static_cast<std::int32_t>(automation::BuildErrors::beNoDatabase) ||
         error.Source().starts_with("DAO.");
}

void PrepareApp(CLI::App& app) {
  app.formatter(std::make_shared<HelpFormat>());
  app.footer(kEpilogue);
  app.set_version_flag("--version", "hearthmake " HEARTHMAKE_VERSION);
  app.require_subcommand(1);
}

ExitStatus Run(Session& session, const Words& words) {
  try {
    return words.Run(session);
  } catch (const HostError& error) {
    Tell(session.Out(), error.what(), error.Advice());
    return error.Status();
  } catch (const automation::Error& error) {
    Tell(session.Out(), Described(error), IsAboutDatabase(error) ? session.Database().Diagnose() : "");
  } catch (const std::bad_alloc&) {
    Tell(session.Out(), "Out of memory.", "");
  }
  return ExitStatus::WrongInput;
}

}  // namespace

struct CommandDeclaration::Parts {
  CLI::App app{kOverview, "hearthmake"};
  std::optional<Words> words;
};

CommandDeclaration::CommandDeclaration() : m_parts(std::make_unique<Parts>()) {
  PrepareApp(m_parts->app);
  m_parts->words.emplace(m_parts->app, Extent{{kPackagesWord}});
}

CommandDeclaration::~CommandDeclaration() = default;

const CLI::App& CommandDeclaration::App() const { return m_parts->app; }

namespace {

ExitStatus AnswerCompletion(const std::vector<std::string>& arguments) {
  const CommandDeclaration declaration;
  Console(true).Out(AnswerShell(declaration.App(), arguments));
  return ExitStatus::Done;
}

// __man TEMPLATE DATE
ExitStatus PrintManPage(const std::vector<std::string>& arguments) {
  std::ifstream file(arguments.empty() ? "" : arguments[0]);
  if (arguments.size() != 2 || !file) return ExitStatus::WrongInput;
  const std::string text(std::istreambuf_iterator<char>(file), {});
  const CommandDeclaration declaration;
  try {
    Console(true).Out(ManPage(declaration.App(), text, HEARTHMAKE_VERSION, arguments[1]));
  } catch (const HostError& error) {
    Tell(Console(true), error.what(), error.Advice());
    return error.Status();
  }
  return ExitStatus::Done;
}

ExitStatus RunParsed(const Words& words) {
  try {
    Session session(words.Options());
    return Run(session, words);
  } catch (const HostError& error) {
    Tell(Console(words.Options().noColour), error.what(), error.Advice());
    return error.Status();
  }
}

// Nothing when the command line is wrong or asks for help: what is said then needs all words.
std::optional<ExitStatus> RunTypedWord(int argc, const char* const* argv,
                                       const std::vector<std::string_view>& typed) {
  CLI::App app{kOverview, "hearthmake"};
  PrepareApp(app);
  const Words words(app, {typed, true});
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForVersion& version) {
    app.exit(version);
    return ExitStatus::Done;
  } catch (const CLI::Error&) {
    return std::nullopt;
  }
  return RunParsed(words);
}

}  // namespace

ExitStatus RunCommandLine(int argc, const char* const* argv) {
  if (argc > 1) {
    const std::vector<std::string> arguments(argv + 2, argv + argc);
    if (std::string_view(argv[1]) == kCompleteWord) return AnswerCompletion(arguments);
    if (std::string_view(argv[1]) == kManWord) return PrintManPage(arguments);
  }
  const std::vector<std::string_view> typed(argv + std::min(argc, 1), argv + argc);
  if (const auto status = RunTypedWord(argc, argv, typed)) return *status;
  CLI::App app{kOverview, "hearthmake"};
  PrepareApp(app);
  const Words words(app, {typed});
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& help) {
    app.exit(help);
    return ExitStatus::Done;
  } catch (const CLI::ParseError& error) {
    const Console console(words.Options().noColour);
    const std::vector<std::string> unknown = app.remaining();
    const bool isUnknownWord = app.get_subcommands().empty() && !unknown.empty();
    Tell(console, isUnknownWord ? fmt::format("There is no command '{}'.", unknown.front()) : error.what(),
         "See: hearthmake --help");
    return ExitStatus::WrongInput;
  }
  return RunParsed(words);
}

std::string UsageProblem(const std::vector<std::string>& arguments) {
  CLI::App app{kOverview, "hearthmake"};
  app.require_subcommand(1);
  const Words words(app, {{arguments.begin(), arguments.end()}});
  std::vector<std::string> lastFirst(arguments.rbegin(), arguments.rend());
  try {
    app.parse(lastFirst);
  } catch (const CLI::Success&) {
    return {};
  } catch (const CLI::ParseError& error) {
    return error.what();
  }
  return {};
}

}  // namespace hearthmake::host
