#include "nxfv/platform/variant.h"

#include <atomic>
#include <cmath>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>
#include <cstdio>
#include <cstdlib>

#include "nxfv/platform/error_state.h"
#include "nxfv/platform/numeric_text.h"

namespace nxfv {

struct Variant::ObjectBox {
  std::atomic<uint32_t> refs{1};
  ObjectRef object;
};

Variant::Variant(std::string s) : kind_(Kind::String), text_(SharedText::MakeBlock(s)) {}

Variant::Variant(ObjectRef o) : kind_(Kind::Object), object_(new ObjectBox) { object_->object = std::move(o); }

Variant::Variant(const Variant& o) : kind_(o.kind_), d_(0) {
  std::memcpy(&d_, &o.d_, sizeof d_);
  if (kind_ == Kind::String) SharedText::AddRef(text_);
  if (kind_ == Kind::Object) object_->refs.fetch_add(1, std::memory_order_relaxed);
}

Variant::Variant(Variant&& o) noexcept : kind_(o.kind_), d_(0) {
  std::memcpy(&d_, &o.d_, sizeof d_);
  o.kind_ = Kind::Empty;
  o.d_ = 0;
}

Variant& Variant::operator=(const Variant& o) {
  if (this != &o) {
    Variant copy(o);
    *this = std::move(copy);
  }
  return *this;
}

Variant& Variant::operator=(Variant&& o) noexcept {
  if (this != &o) {
    Release();
    kind_ = o.kind_;
    std::memcpy(&d_, &o.d_, sizeof d_);
    o.kind_ = Kind::Empty;
    o.d_ = 0;
  }
  return *this;
}

void Variant::Release() {
  if (kind_ == Kind::String) SharedText::Release(text_);
  if (kind_ == Kind::Object && object_->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) delete object_;
  kind_ = Kind::Empty;
  d_ = 0;
}

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

std::string_view Variant::TextView() const {
  return kind_ == Kind::String && text_ ? text_->View() : std::string_view();
}

bool Variant::operator==(const Variant& o) const {
  if (kind() != o.kind()) return false;
  switch (kind_) {
    case Kind::Empty:
    case Kind::Null: return true;
    case Kind::Boolean: return b_ == o.b_;
    case Kind::Long: return l_ == o.l_;
    case Kind::Double:
    case Kind::Date: return d_ == o.d_;
    case Kind::String: return TextView() == o.TextView();
    case Kind::Object: return object_->object == o.object_->object;
  }
  return false;
}

bool Variant::AsBool() const {
  if (kind_ == Kind::String) {
    const std::string_view s = TextView();
    if (s == "True" || s == "true" || s == "TRUE") return true;
    if (s == "False" || s == "false" || s == "FALSE") return false;
  }
  return AsDouble() != 0;
}

double Variant::AsDouble() const {
  switch (kind()) {
    case Kind::Empty: return 0;
    case Kind::Boolean: return b_ ? -1 : 0;
    case Kind::Long: return l_;
    case Kind::Double:
    case Kind::Date: return d_;
    case Kind::String: {
      double d = 0;
      if (ParseNumericText(TextView(), NumericSeparators{}, d)) return d;
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
    case Kind::Boolean: return b_ ? "True" : "False";
    case Kind::Long: return std::to_string(l_);
    case Kind::Double:
    case Kind::Date: return FormatDouble(d_);
    case Kind::String: return std::string(TextView());
    case Kind::Object: RaiseError(kErrTypeMismatch);
  }
  return "";
}

ObjectRef Variant::AsObject() const { return kind_ == Kind::Object ? object_->object : nullptr; }

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
