// Variant: the host runtime's tagged value, reduced to the kinds the
// library stores (Empty, Null, Boolean, Long, Double, Date, String, object).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

namespace nxfv {

// Base of every reference-counted object that a Variant may hold.
class Object {
 public:
  virtual ~Object() = default;
};
using ObjectRef = std::shared_ptr<Object>;

struct NullValue {
  bool operator==(const NullValue&) const = default;
};
// A date value (days since 1899-12-30), kept apart from plain doubles.
struct DateValue {
  double days = 0;
  bool operator==(const DateValue&) const = default;
};

class Variant {
 public:
  enum class Kind { Empty, Null, Boolean, Long, Double, Date, String, Object };

  Variant() = default;
  Variant(NullValue) : v_(NullValue{}) {}
  Variant(bool b) : v_(b) {}
  Variant(int32_t l) : v_(l) {}
  Variant(int16_t i) : v_(static_cast<int32_t>(i)) {}
  Variant(double d) : v_(d) {}
  Variant(DateValue d) : v_(d) {}
  Variant(std::string s) : v_(std::make_shared<const std::string>(std::move(s))) {}
  Variant(const char* s) : v_(std::make_shared<const std::string>(s)) {}
  Variant(ObjectRef o) : v_(std::move(o)) {}
  template <class T, class = std::enable_if_t<std::is_base_of_v<Object, T>>>
  Variant(std::shared_ptr<T> o) : v_(ObjectRef(std::move(o))) {}

  Kind kind() const { return static_cast<Kind>(v_.index()); }
  bool IsEmpty() const { return kind() == Kind::Empty; }
  bool IsNull() const { return kind() == Kind::Null; }
  bool IsString() const { return kind() == Kind::String; }
  bool IsObject() const { return kind() == Kind::Object; }
  // Boolean, Long, Double or Date: the kinds that convert to a number
  // without parsing text.
  bool IsNumber() const;

  bool AsBool() const;  // numbers: non-zero; strings "True"/"False" or numeric text
  // Number value; text is parsed with the numeric rules; Empty gives 0.
  // Throws VbError 13 for text or objects that are not numbers.
  double AsDouble() const;
  // Rounded to even like the runtime's conversion; error 6 outside int32.
  int32_t AsLong() const;
  // Text form: Boolean "True"/"False", numbers in invariant form, dates as
  // their date number, Empty "", Null "". Objects give error 13.
  std::string AsString() const;
  // The held text, or null when the variant is not a string.
  const std::string* StringPtr() const;
  ObjectRef AsObject() const;  // null when not an object
  template <class T>
  std::shared_ptr<T> As() const {
    return std::dynamic_pointer_cast<T>(AsObject());
  }

  // Same kind and same value (strings by content, objects by identity).
  bool operator==(const Variant& o) const;

 private:
  // Strings are immutable and shared between copies, which keeps a Variant
  // at 24 bytes: items hold six of them and a listing makes a million items.
  using SharedText = std::shared_ptr<const std::string>;
  std::variant<std::monostate, NullValue, bool, int32_t, double, DateValue, SharedText, ObjectRef> v_;
};

// Text form of a double as the runtime prints it: up to 15 significant
// digits, no trailing zeros, "E+nn" exponent for very large/small values.
std::string FormatDouble(double d);

}  // namespace nxfv
