// Variant: the host runtime's tagged value, reduced to the kinds the
// library stores (Empty, Null, Boolean, Long, Double, Date, String, object).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "nxfv/platform/shared_text.h"

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
  enum class Kind : uint8_t { Empty, Null, Boolean, Long, Double, Date, String, Object };

  Variant() : d_(0) {}
  Variant(NullValue) : kind_(Kind::Null), d_(0) {}
  Variant(bool b) : kind_(Kind::Boolean), b_(b) {}
  Variant(int32_t l) : kind_(Kind::Long), l_(l) {}
  Variant(int16_t i) : kind_(Kind::Long), l_(i) {}
  Variant(double d) : kind_(Kind::Double), d_(d) {}
  Variant(DateValue d) : kind_(Kind::Date), d_(d.days) {}
  Variant(std::string s);
  Variant(const char* s) : Variant(std::string(s)) {}
  Variant(ObjectRef o);
  template <class T, class = std::enable_if_t<std::is_base_of_v<Object, T>>>
  Variant(std::shared_ptr<T> o) : Variant(ObjectRef(std::move(o))) {}

  Variant(const Variant& o);
  Variant(Variant&& o) noexcept;
  Variant& operator=(const Variant& o);
  Variant& operator=(Variant&& o) noexcept;
  ~Variant() { Release(); }

  Kind kind() const { return kind_; }
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
  // The held text; empty when the variant is not a string (IsString tells).
  std::string_view TextView() const;
  ObjectRef AsObject() const;  // null when not an object
  template <class T>
  std::shared_ptr<T> As() const {
    return std::dynamic_pointer_cast<T>(AsObject());
  }

  // Same kind and same value (strings by content, objects by identity).
  bool operator==(const Variant& o) const;

 private:
  // Text and object references live in counted boxes that copies share: a
  // Variant is 16 bytes, and items hold six of them (a listing makes a
  // million items). Boxes are never changed once made.
  struct ObjectBox;
  void Release();

  Kind kind_ = Kind::Empty;
  union {
    bool b_;
    int32_t l_;
    double d_;
    SharedText::Block* text_;  // null for the empty text
    ObjectBox* object_;
  };
};

// Text form of a double as the runtime prints it: up to 15 significant
// digits, no trailing zeros, "E+nn" exponent for very large/small values.
std::string FormatDouble(double d);

}  // namespace nxfv
