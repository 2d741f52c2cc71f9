#include "platform/variant.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "platform/error_state.h"
#include "platform/numeric_text.h"

namespace nxfv {

bool Variant::IsNumber() const {
  switch (kind()) {
    case Kind::Boolean:
    case Kind::Long:
    case Kind::Double:
    case Kind::Date:
      return true;
    default:
      return false;
  }
}

const std::string* Variant::StringPtr() const {
  auto* s = std::get_if<SharedText>(&v_);
  return s ? s->get() : nullptr;
}

bool Variant::operator==(const Variant& o) const {
  if (kind() != o.kind()) return false;
  if (kind() == Kind::String) return *StringPtr() == *o.StringPtr();
  return v_ == o.v_;
}

bool Variant::AsBool() const {
  if (auto* s = StringPtr()) {
    if (*s == "True" || *s == "true" || *s == "TRUE") return true;
    if (*s == "False" || *s == "false" || *s == "FALSE") return false;
  }
  return AsDouble() != 0;
}

double Variant::AsDouble() const {
  switch (kind()) {
    case Kind::Empty: return 0;
    case Kind::Boolean: return std::get<bool>(v_) ? -1 : 0;
    case Kind::Long: return std::get<int32_t>(v_);
    case Kind::Double: return std::get<double>(v_);
    case Kind::Date: return std::get<DateValue>(v_).days;
    case Kind::String: {
      double d = 0;
      if (ParseNumericText(*StringPtr(), NumericSeparators{}, d)) return d;
      RaiseError(kErrTypeMismatch);
    }
    default:
      RaiseError(kErrTypeMismatch);
  }
}

int32_t Variant::AsLong() const {
  const double d = AsDouble();
  const double r = std::nearbyint(d);  // default rounding mode: half to even
  if (!(r >= -2147483648.0 && r <= 2147483647.0)) RaiseError(kErrOverflow);
  return static_cast<int32_t>(r);
}

std::string Variant::AsString() const {
  switch (kind()) {
    case Kind::Empty:
    case Kind::Null:
      return "";
    case Kind::Boolean: return std::get<bool>(v_) ? "True" : "False";
    case Kind::Long: return std::to_string(std::get<int32_t>(v_));
    case Kind::Double: return FormatDouble(std::get<double>(v_));
    case Kind::Date: return FormatDouble(std::get<DateValue>(v_).days);
    case Kind::String: return *StringPtr();
    case Kind::Object: RaiseError(kErrTypeMismatch);
  }
  return "";
}

ObjectRef Variant::AsObject() const {
  if (auto* o = std::get_if<ObjectRef>(&v_)) return *o;
  return nullptr;
}

std::string FormatDouble(double d) {
  if (std::isnan(d)) return "NaN";
  if (std::isinf(d)) return d > 0 ? "Infinity" : "-Infinity";
  if (d == 0) return "0";
  char buf[64];
  const double a = std::fabs(d);
  if (a >= 1e15 || a < 1e-4) {
    std::snprintf(buf, sizeof buf, "%.14E", d);
    // Trim mantissa zeros: 1.50000000000000E+020 -> 1.5E+20
    std::string s(buf);
    auto e = s.find('E');
    std::string mant = s.substr(0, e), exp = s.substr(e + 1);
    while (!mant.empty() && mant.back() == '0') mant.pop_back();
    if (!mant.empty() && mant.back() == '.') mant.pop_back();
    char sign = exp[0];
    std::string digits = exp.substr(1);
    while (digits.size() > 2 && digits[0] == '0') digits.erase(0, 1);
    return mant + "E" + sign + digits;
  }
  std::snprintf(buf, sizeof buf, "%.15g", d);
  return buf;
}

}  // namespace nxfv
