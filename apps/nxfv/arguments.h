// The one argument parser of the nxfv commands. A command declares its
// options and the name of its single positional argument; the parser reads
// the arguments after the command name:
//   --flag                 a flag; "--flag=x" is a usage error
//   --opt VALUE            the next argument is the value, taken as it stands
//   --opt=VALUE            the same in one argument (VALUE may be empty)
//   --                     ends the options: what follows is positional
//   -                      positional (not an option)
//   --help, -h             every command has it: the parse stops there
// Options may stand before or after the positional argument. Usage errors
// are reported in argument order (the first one wins), written to err as
// "nxfv COMMAND: MESSAGE\n":
//   list --bogus /    ->  "nxfv list: unknown option --bogus (see nxfv --help)"
//   list --pattern    ->  "nxfv list: option --pattern needs a value"
//   list / /tmp       ->  "nxfv list: only one PATH may be given" (unless manyPositionals)
//   list --json       ->  "nxfv list: missing PATH (see nxfv --help)"
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace nxfv::cli {

struct OptionSpec {
  using Check = std::function<std::string(const std::string& value)>;
  OptionSpec(std::string optionName, bool withValue = false, Check valueCheck = {})
      : name(std::move(optionName)), takesValue(withValue), check(std::move(valueCheck)) {}

  std::string name;  // with its dashes: "--json"
  bool takesValue;
  // Checks a value as soon as it is read, so that a bad value and a later
  // bad option come out in argument order. Returns the message (after
  // "nxfv COMMAND: "), or "" when the value is fine.
  Check check;
};

struct CommandSyntax {
  std::string command;     // "list"
  std::string positional;  // the one positional argument, named as in the usage: "PATH"
  std::vector<OptionSpec> options;
  // Options that stand in for the positional argument (list --drives): with
  // one of them given the positional is not needed, and may not be given.
  std::vector<std::string> replacesPositional = {};
  // The positional argument may be left out (settings [FILE]).
  bool positionalOptional = false;
  // Any number of positional arguments (copy SRC... DEST): all go to
  // ParsedArguments::positionals; the command checks how many it needs.
  bool manyPositionals = false;
};

struct ParsedArguments {
  bool help = false;  // --help was given before any usage error; nothing else is filled in
  // Every option given, in argument order: name and value ("" for a flag).
  std::vector<std::pair<std::string, std::string>> options;
  std::string positional;  // the first one
  std::vector<std::string> positionals;

  bool Has(std::string_view name) const;
  // The value of the last occurrence ("" when absent): a repeated option overrides.
  std::string Value(std::string_view name) const;
  // Every value given for the option, in argument order.
  std::vector<std::string> Values(std::string_view name) const;
};

// Returns nullopt on a usage error, after writing its message to err.
std::optional<ParsedArguments> ParseArguments(const std::vector<std::string>& args, const CommandSyntax& syntax,
                                              std::ostream& err);

// How options are written, for the usage texts.
std::string OptionSyntaxUsage();

}  // namespace nxfv::cli
