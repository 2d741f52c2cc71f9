#include "nxfv/arguments.h"

#include <gtest/gtest.h>

#include <sstream>

namespace nxfv::cli {
namespace {

// "help", or the positional and every option as "name=value" in order; on a
// usage error, what was written to standard error.
std::string Parse(const std::vector<std::string>& args) {
  const CommandSyntax syntax{"t",
                             "PATH",
                             {{"--json"},
                              {"--pattern", true},
                              {"--n", true, [](const std::string& v) {
                                 return v.find_first_not_of("0123456789") == std::string::npos ? "" : "--n: '" + v + "'";
                               }}}};
  std::ostringstream err;
  const std::optional<ParsedArguments> parsed = ParseArguments(args, syntax, err);
  if (!parsed) return err.str();
  EXPECT_EQ(err.str(), "");
  if (parsed->help) return "help";
  std::string s = parsed->positional;
  for (const auto& [name, value] : parsed->options) s += " " + name + "=" + value;
  return s;
}

TEST(ArgumentsTest, ReadsOptionsAndThePositionalInAnyOrder) {
  struct Case { std::vector<std::string> args; const char* parsed; } cases[] = {
      {{"--json", "p"}, "p --json="},
      {{"p", "--pattern", "*.txt", "--json"}, "p --pattern=*.txt --json="},
      {{"--pattern=*.a;*.b", "p"}, "p --pattern=*.a;*.b"},
      {{"--pattern=", "p", "--pattern=x=y"}, "p --pattern= --pattern=x=y"},
      {{"--pattern", "--json", "p"}, "p --pattern=--json"},  // a value is taken as it stands
      {{"--", "-x.zip"}, "-x.zip"},
      {{"--json", "--", "--json"}, "--json --json="},
      {{"-"}, "-"},
      {{"--n", "12", "p"}, "p --n=12"},
      {{"p", "--help", "--bogus"}, "help"},
      {{"-h"}, "help"},
      {{"--", "--help"}, "--help"},
  };
  for (const Case& c : cases) EXPECT_EQ(Parse(c.args), c.parsed) << c.args.size();
}

TEST(ArgumentsTest, FirstUsageErrorInArgumentOrderWins) {
  struct Case { std::vector<std::string> args; const char* err; } cases[] = {
      {{"--bogus", "p"}, "nxfv t: unknown option --bogus (see nxfv --help)\n"},
      {{"p", "--bogus=1"}, "nxfv t: unknown option --bogus=1 (see nxfv --help)\n"},
      {{"-x", "p"}, "nxfv t: unknown option -x (see nxfv --help)\n"},
      {{"--json=1", "p"}, "nxfv t: option --json takes no value\n"},
      {{"--help=1"}, "nxfv t: option --help takes no value\n"},
      {{"p", "--pattern"}, "nxfv t: option --pattern needs a value\n"},
      {{"a", "b", "--bogus"}, "nxfv t: only one PATH may be given\n"},
      {{"--", "a", "-b"}, "nxfv t: only one PATH may be given\n"},
      {{"--json"}, "nxfv t: missing PATH (see nxfv --help)\n"},
      {{"--"}, "nxfv t: missing PATH (see nxfv --help)\n"},
      {{"--n", "x", "--bogus"}, "nxfv t: --n: 'x'\n"},  // checked as soon as it is read
      {{"--bogus", "--n", "x"}, "nxfv t: unknown option --bogus (see nxfv --help)\n"},
      {{"--bogus", "--help"}, "nxfv t: unknown option --bogus (see nxfv --help)\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(Parse(c.args), c.err);
}

}  // namespace
}  // namespace nxfv::cli
