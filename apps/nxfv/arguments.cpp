#include "nxfv/arguments.h"

#include <algorithm>

namespace nxfv::cli {

namespace {

bool IsOption(const std::string& a) { return a.size() > 1 && a[0] == '-'; }

const OptionSpec* Find(const CommandSyntax& syntax, std::string_view name) {
  const auto it = std::find_if(syntax.options.begin(), syntax.options.end(),
                               [&](const OptionSpec& o) { return o.name == name; });
  return it == syntax.options.end() ? nullptr : &*it;
}

}  // namespace

bool ParsedArguments::Has(std::string_view name) const {
  return std::any_of(options.begin(), options.end(), [&](const auto& o) { return o.first == name; });
}

std::string ParsedArguments::Value(std::string_view name) const {
  const auto it = std::find_if(options.rbegin(), options.rend(), [&](const auto& o) { return o.first == name; });
  return it == options.rend() ? std::string() : it->second;
}

std::vector<std::string> ParsedArguments::Values(std::string_view name) const {
  std::vector<std::string> values;
  for (const auto& [n, v] : options) {
    if (n == name) values.push_back(v);
  }
  return values;
}

std::optional<ParsedArguments> ParseArguments(const std::vector<std::string>& args, const CommandSyntax& syntax,
                                              std::ostream& err) {
  auto fail = [&](const std::string& message) {
    err << "nxfv " << syntax.command << ": " << message << "\n";
    return std::nullopt;
  };
  ParsedArguments parsed;
  bool havePositional = false;
  bool optionsDone = false;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (optionsDone || !IsOption(a)) {
      if (havePositional && !syntax.manyPositionals) return fail("only one " + syntax.positional + " may be given");
      if (!havePositional) parsed.positional = a;
      parsed.positionals.push_back(a);
      havePositional = true;
      continue;
    }
    if (a == "--") {
      optionsDone = true;
      continue;
    }
    if (a == "--help" || a == "-h") {
      ParsedArguments help;
      help.help = true;
      return help;
    }
    // Only long options take the "=value" form.
    const size_t eq = a.rfind("--", 0) == 0 ? a.find('=') : std::string::npos;
    const std::string name = a.substr(0, eq);
    if (name == "--help") return fail("option --help takes no value");
    const OptionSpec* option = Find(syntax, name);
    if (option == nullptr) return fail("unknown option " + a + " (see nxfv --help)");
    if (!option->takesValue) {
      if (eq != std::string::npos) return fail("option " + name + " takes no value");
      parsed.options.emplace_back(name, std::string());
      continue;
    }
    std::string value;
    if (eq != std::string::npos) {
      value = a.substr(eq + 1);
    } else if (i + 1 < args.size()) {
      value = args[++i];
    } else {
      return fail("option " + name + " needs a value");
    }
    if (option->check) {
      if (const std::string problem = option->check(value); !problem.empty()) return fail(problem);
    }
    parsed.options.emplace_back(name, std::move(value));
  }
  const std::string* replacing = nullptr;
  for (const auto& given : parsed.options)
    for (const std::string& name : syntax.replacesPositional)
      if (replacing == nullptr && given.first == name) replacing = &name;
  if (replacing != nullptr && havePositional) return fail(syntax.positional + " may not be given with " + *replacing);
  if (!havePositional && replacing == nullptr && !syntax.positionalOptional)
    return fail("missing " + syntax.positional + " (see nxfv --help)");
  return parsed;
}

std::string OptionSyntaxUsage() {
  return "Options may stand before or after the path, as --opt VALUE or --opt=VALUE.\n"
         "-- ends the options: a name that starts with '-' may follow it.\n";
}

}  // namespace nxfv::cli
