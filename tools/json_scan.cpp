#include "tools/json_scan.h"

#include <fmt/format.h>

#include <cctype>
#include <cstring>

namespace zorl2_inspect {
namespace {

// A strict reader of JSON that builds nothing: it follows one path, and collects the names of the
// outermost object.
class Scanner {
 public:
  Scanner(std::string_view text, std::string_view wanted) : text_(text), wanted_(wanted) {}

  bool Scan() {
    if (text_.substr(0, 3) == "\xef\xbb\xbf") at_ = 3;
    if (!Value(0)) return false;
    Skip();
    return at_ == text_.size() || Refuse("the end of the text");
  }

  JsonError error;
  std::size_t found = 0;
  std::vector<std::string> names;

 private:
  char Here() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool AtEnd() const { return at_ >= text_.size(); }
  void Skip() {
    while (!AtEnd() && std::strchr(" \t\r\n", text_[at_]) != nullptr && text_[at_] != '\0') ++at_;
  }

  bool Refuse(std::string_view expected) {
    error.offset = at_;
    std::string found_here = "the end";
    if (!AtEnd()) {
      const auto byte = static_cast<unsigned char>(Here());
      found_here = byte > 0x20 && byte < 0x7f ? fmt::format("'{}'", Here())
                                              : fmt::format("the byte 0x{:02x}", byte);
    }
    error.problem = fmt::format("expected {}, found {}", expected, found_here);
    return false;
  }

  bool Value(int depth) {
    Skip();
    // The wanted path goes through here: the deepest such place is the answer.
    if (wanted_.substr(0, path_.size()) == path_) {
      const char next = wanted_.size() > path_.size() ? wanted_[path_.size()] : '.';
      if (path_.empty() || next == '.' || next == '[') found = at_;
    }
    if (depth > kJsonDepthLimit) {
      return Refuse(fmt::format("at most {} levels of nesting", kJsonDepthLimit));
    }
    switch (Here()) {
      case '{':
        return Object(depth);
      case '[':
        return Array(depth);
      case '"':
        return String(nullptr);
      case 't':
        return Word("true");
      case 'f':
        return Word("false");
      case 'n':
        return Word("null");
      default:
        return Number();
    }
  }

  bool Object(int depth) {
    ++at_;
    Skip();
    if (Here() == '}') return ++at_, true;
    for (;;) {
      Skip();
      const std::size_t place = at_;
      std::string name;
      if (Here() != '"') return Refuse("a name in double quotes");
      if (!String(&name)) return false;
      if (depth == 0) names.push_back(name);
      const std::size_t length = path_.size();
      if (!path_.empty()) path_ += '.';
      path_ += name;
      if (path_ == wanted_) found = place;
      Skip();
      if (Here() != ':') return Refuse("':'");
      ++at_;
      if (!Value(depth + 1)) return false;
      path_.resize(length);
      Skip();
      if (Here() == '}') return ++at_, true;
      if (Here() != ',') return Refuse("',' or '}'");
      ++at_;
    }
  }

  bool Array(int depth) {
    ++at_;
    Skip();
    if (Here() == ']') return ++at_, true;
    for (std::size_t index = 0;; ++index) {
      const std::size_t length = path_.size();
      // A path is only followed while it can still lead to the wanted one.
      path_ += fmt::format("[{}]", index);
      if (!Value(depth + 1)) return false;
      path_.resize(length);
      Skip();
      if (Here() == ']') return ++at_, true;
      if (Here() != ',') return Refuse("',' or ']'");
      ++at_;
    }
  }

  bool String(std::string* content) {
    ++at_;
    while (!AtEnd() && Here() != '"') {
      if (static_cast<unsigned char>(Here()) < 0x20) return Refuse("no control character in text");
      if (Here() == '\\') {
        ++at_;
        if (AtEnd() || std::strchr("\"\\/bfnrtu", Here()) == nullptr || Here() == '\0') {
          return Refuse("an escape such as \\n or \\u0041");
        }
        if (Here() == 'u') {
          for (int i = 0; i < 4; ++i) {
            ++at_;
            if (AtEnd() || std::isxdigit(static_cast<unsigned char>(Here())) == 0) {
              return Refuse("four hexadecimal digits");
            }
          }
        }
      }
      if (content != nullptr) *content += Here();
      ++at_;
    }
    if (AtEnd()) return Refuse("the double quote that ends the text");
    ++at_;
    return true;
  }

  bool Word(std::string_view word) {
    if (text_.substr(at_, word.size()) != word) return Refuse("a value");
    at_ += word.size();
    return true;
  }

  bool Digits() {
    if (std::isdigit(static_cast<unsigned char>(Here())) == 0) return Refuse("a digit");
    while (std::isdigit(static_cast<unsigned char>(Here())) != 0) ++at_;
    return true;
  }

  bool Number() {
    if (Here() != '-' && std::isdigit(static_cast<unsigned char>(Here())) == 0) {
      return Refuse("a value");
    }
    if (Here() == '-') ++at_;
    if (!Digits()) return false;
    if (Here() == '.') {
      ++at_;
      if (!Digits()) return false;
    }
    if (Here() == 'e' || Here() == 'E') {
      ++at_;
      if (Here() == '+' || Here() == '-') ++at_;
      if (!Digits()) return false;
    }
    return true;
  }

  std::string_view text_;
  std::string_view wanted_;
  std::size_t at_ = 0;
  std::string path_;
};

}  // namespace

std::optional<JsonError> CheckJson(std::string_view text) {
  Scanner scanner(text, "");
  if (scanner.Scan()) return std::nullopt;
  return scanner.error;
}

std::size_t FindJsonPath(std::string_view text, std::string_view path) {
  Scanner scanner(text, path);
  scanner.Scan();
  return scanner.found;
}

std::vector<std::string> JsonNames(std::string_view text) {
  Scanner scanner(text, "");
  scanner.Scan();
  return scanner.names;
}

}  // namespace zorl2_inspect
