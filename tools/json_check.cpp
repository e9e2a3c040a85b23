#include "tools/json_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <utility>

#include "tools/plain_text.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::EnumDescriptor;
using google::protobuf::FieldDescriptor;

constexpr int kDepthLimit = 100;
constexpr std::size_t kShown = 24;

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A word is what a bare name, a number, true, false or null is made of.
bool IsWord(char c) {
  return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '+' ||
         c == '-' || c == '.' || c == '$';
}

const FieldDescriptor* FieldNamed(const Descriptor& type, const std::string& name) {
  const FieldDescriptor* field = type.FindFieldByName(name);
  for (int i = 0; field == nullptr && i < type.field_count(); ++i) {
    if (type.field(i)->json_name() == name) field = type.field(i);
  }
  return field;
}

// The names of an enumeration or the fields of a message, for a person who mistyped one.
template <typename Type, typename Count, typename At>
std::string Names(const Type& type, Count count, At at) {
  std::string names;
  for (int i = 0; i < (type.*count)(); ++i) {
    names += names.empty() ? "" : ", ";
    names += (type.*at)(i)->name();
  }
  return names;
}

class Checker {
 public:
  explicit Checker(std::string_view text) : text_(text) {}

  bool Message(const Descriptor& type, int depth) {
    Space();
    const std::size_t start = at_;
    if (!Is('{')) return Fail(start, "an object for " + type.name(), Here());
    ++at_;
    std::set<const FieldDescriptor*> seen;
    while (true) {
      Space();
      if (Is('}')) break;
      if (!Member(type, depth, &seen)) return false;
      if (!Separator('}')) return false;
    }
    const std::size_t end = at_++;
    for (int i = 0; i < type.field_count(); ++i) {
      const FieldDescriptor* field = type.field(i);
      if (!field->is_required() || seen.count(field) != 0) continue;
      const std::size_t outer = Enter(field->name());
      Fail(end, "the required field", "the end of its object");
      path_.resize(outer);
      return false;
    }
    return true;
  }

  // Any value; its content is of no interest.
  bool Skip(int depth) {
    Space();
    if (depth > kDepthLimit) return Fail(at_, "at most 100 levels of nesting", "one more");
    if (Is('"') || Is('\'')) return String(nullptr);
    if (!Is('{') && !Is('[')) return Word(nullptr);
    const char close = Is('{') ? '}' : ']';
    ++at_;
    while (true) {
      Space();
      if (Is(close)) break;
      if (close == '}' && !Key(nullptr)) return false;
      if (!Skip(depth + 1) || !Separator(close)) return false;
    }
    ++at_;
    return true;
  }

  bool End() {
    Space();
    return at_ == text_.size() || Fail(at_, "the end of the text", Here());
  }

  void Space() {
    while (at_ < text_.size() && IsSpace(text_[at_])) ++at_;
  }
  bool Is(char c) const { return at_ < text_.size() && text_[at_] == c; }
  std::size_t at() const { return at_; }
  void Advance() { ++at_; }
  bool AtEnd() const { return at_ == text_.size(); }

  // After a member or element: a comma, or the closing character ahead.
  bool Separator(char close) {
    Space();
    if (Is(',')) {
      ++at_;
      return true;
    }
    return Is(close) || Fail(at_, fmt::format("',' or '{}'", close), Here());
  }

  std::optional<JsonProblem> problem() && { return std::move(problem_); }

 private:
  bool Fail(std::size_t offset, std::string expected, std::string found) {
    problem_ = JsonProblem{offset, path_, std::move(expected), std::move(found)};
    return false;
  }

  std::size_t Enter(std::string_view step) {
    const std::size_t outer = path_.size();
    if (!path_.empty() && step[0] != '[') path_ += '.';
    path_ += step;
    return outer;
  }

  std::string Here() const {
    if (at_ == text_.size()) return "the end of the text";
    if (Is('"') || Is('\'')) {
      const std::size_t close = text_.find(text_[at_], at_ + 1);
      return Quoted(text_.substr(at_ + 1, close - at_ - 1), kShown);
    }
    std::size_t end = at_;
    while (end < text_.size() && IsWord(text_[end])) ++end;
    return Quoted(text_.substr(at_, std::max<std::size_t>(end - at_, 1)), kShown);
  }

  bool String(std::string* value) {
    const char quote = text_[at_];
    const std::size_t start = at_++;
    while (at_ < text_.size() && text_[at_] != quote) {
      const char c = text_[at_];
      if (static_cast<unsigned char>(c) < 0x20) {
        return Fail(at_, "an escape such as \\n", "a control character inside a string");
      }
      // The names that matter here have no escapes in them.
      if (value != nullptr) *value += c;
      at_ += c == '\\' ? 2 : 1;
    }
    if (at_ >= text_.size()) {
      at_ = text_.size();
      return Fail(start, "a closing quote", "the end of the text");
    }
    ++at_;
    return true;
  }

  bool Word(std::string* value) {
    const std::size_t start = at_;
    while (at_ < text_.size() && IsWord(text_[at_])) ++at_;
    if (at_ == start) return Fail(start, "a value", Here());
    const std::string word(text_.substr(start, at_ - start));
    const bool literal = word == "true" || word == "false" || word == "null";
    if (value == nullptr && !literal && !IsDigit(word[0]) && word[0] != '-') {
      at_ = start;
      return Fail(start, "a value", Here());
    }
    if (value != nullptr) *value = word;
    return true;
  }

  bool Key(std::string* name) {
    Space();
    std::string ignored;
    std::string* const into = name != nullptr ? name : &ignored;
    if (Is('"') || Is('\'')) {
      if (!String(into)) return false;
    } else if (at_ == text_.size() || !IsWord(text_[at_])) {
      return Fail(at_, "a field name in quotes", Here());
    } else {
      Word(into);
    }
    Space();
    if (!Is(':')) return Fail(at_, "':' behind the field name", Here());
    ++at_;
    return true;
  }

  bool Member(const Descriptor& type, int depth, std::set<const FieldDescriptor*>* seen) {
    const std::size_t start = at_;
    std::string name;
    if (!Key(&name)) return false;
    const FieldDescriptor* field = FieldNamed(type, name);
    if (field == nullptr) {
      return Fail(start,
                  "a field of " + type.name() + " (" +
                      Names(type, &Descriptor::field_count,
                            static_cast<const FieldDescriptor* (Descriptor::*)(int) const>(
                                &Descriptor::field)) +
                      ")",
                  Quoted(name, kShown));
    }
    Space();
    if (text_.substr(at_, 4) == "null") {
      at_ += 4;
      return true;
    }
    seen->insert(field);
    const std::size_t outer = Enter(field->name());
    const bool good = field->is_repeated() ? List(*field, depth) : Value(*field, depth);
    if (good) path_.resize(outer);
    return good;
  }

  bool List(const FieldDescriptor& field, int depth) {
    if (!Is('[')) return Fail(at_, "an array", Here());
    ++at_;
    for (std::size_t i = 0;; ++i) {
      Space();
      if (Is(']')) break;
      const std::size_t outer = Enter(fmt::format("[{}]", i));
      if (!Value(field, depth)) return false;
      path_.resize(outer);
      if (!Separator(']')) return false;
    }
    ++at_;
    return true;
  }

  bool Value(const FieldDescriptor& field, int depth) {
    Space();
    if (field.cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
      return Message(*field.message_type(), depth + 1);
    }
    const std::size_t start = at_;
    const bool quoted = Is('"') || Is('\'');
    const std::string found = quoted ? "" : Here();
    std::string value;
    if (!quoted && (at_ == text_.size() || !IsWord(text_[at_]))) {
      return Fail(start, Wanted(field), found);
    }
    if (!(quoted ? String(&value) : Word(&value))) return false;
    if (Fits(field, value, quoted)) return true;
    return Fail(start, Wanted(field), quoted ? Quoted(value, kShown) : found);
  }

  static std::string Wanted(const FieldDescriptor& field) {
    switch (field.cpp_type()) {
      case FieldDescriptor::CPPTYPE_BOOL:
        return "true or false";
      case FieldDescriptor::CPPTYPE_STRING:
        return "a string";
      case FieldDescriptor::CPPTYPE_ENUM:
        return "one of " +
               Names(*field.enum_type(), &EnumDescriptor::value_count, &EnumDescriptor::value);
      case FieldDescriptor::CPPTYPE_INT32:
        return "a whole number from -2147483648 to 2147483647";
      case FieldDescriptor::CPPTYPE_UINT32:
        return "a whole number from 0 to 4294967295";
      default:
        return "a whole number from 0 to 18446744073709551615";
    }
  }

  static bool Fits(const FieldDescriptor& field, const std::string& value, bool quoted) {
    switch (field.cpp_type()) {
      case FieldDescriptor::CPPTYPE_BOOL:
        return value == "true" || value == "false";
      case FieldDescriptor::CPPTYPE_STRING:
        return quoted;
      case FieldDescriptor::CPPTYPE_ENUM: {
        char* end = nullptr;
        const long number = std::strtol(value.c_str(), &end, 10);
        if (end != value.c_str() && *end == '\0') {
          return field.enum_type()->FindValueByNumber(static_cast<int>(number)) != nullptr;
        }
        return field.enum_type()->FindValueByName(value) != nullptr;
      }
      default:
        return FitsNumber(field, value);
    }
  }

  static bool FitsNumber(const FieldDescriptor& field, const std::string& value) {
    char* end = nullptr;
    const long double number = std::strtold(value.c_str(), &end);
    if (end == value.c_str() || *end != '\0') return false;
    long double low = 0;
    long double high = 18446744073709551615.0L;
    if (field.cpp_type() == FieldDescriptor::CPPTYPE_INT32) {
      low = INT32_MIN;
      high = INT32_MAX;
    } else if (field.cpp_type() == FieldDescriptor::CPPTYPE_UINT32) {
      high = UINT32_MAX;
    }
    return number >= low && number <= high &&
           number == static_cast<long double>(static_cast<__int128>(number));
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::string path_;
  std::optional<JsonProblem> problem_;
};

}  // namespace

std::optional<JsonProblem> FindJsonProblem(std::string_view value, const Descriptor& type) {
  Checker checker(value);
  if (checker.Message(type, 0)) checker.End();
  return std::move(checker).problem();
}

std::optional<JsonProblem> SplitJson(std::string_view text, std::vector<std::string_view>* values) {
  Checker checker(text);
  checker.Space();
  const bool array = checker.Is('[');
  if (array) checker.Advance();
  while (true) {
    checker.Space();
    if (array ? checker.Is(']') : checker.AtEnd()) break;
    const std::size_t start = checker.at();
    if (!checker.Skip(0)) return std::move(checker).problem();
    values->push_back(text.substr(start, checker.at() - start));
    if (array && !checker.Separator(']')) return std::move(checker).problem();
  }
  if (array) {
    checker.Advance();
    checker.End();
  }
  return std::move(checker).problem();
}

}  // namespace zorl2_inspect
