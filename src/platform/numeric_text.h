// The runtime's numeric-text test and conversion.
//
// Accepted: optional blanks, optional sign, digits with optional thousands
// separators and one decimal separator, optional exponent E/D with sign,
// trailing blanks; or an &H (hex) / &O (octal) literal.
//   "2024", " 7 ", "1e5", "1,000", "&H1F"  -> numeric
//   "", "e5", "1.2.3", "12a"               -> not numeric
#pragma once

#include <string>
#include <string_view>

namespace nxfv {

struct NumericSeparators {
  std::string thousands = ",";
  std::string decimal = ".";
};

bool ParseNumericText(std::string_view text, const NumericSeparators& seps, double& value);
bool IsNumericText(std::string_view text, const NumericSeparators& seps = {});

}  // namespace nxfv
