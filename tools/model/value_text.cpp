#include "tools/model/value_text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>

namespace zorl2_inspect {
namespace {

using google::protobuf::EnumDescriptor;
using google::protobuf::EnumValueDescriptor;

template <typename Number>
std::optional<Number> Parse(std::string_view text, int base = 10) {
  Number number{};
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, number, base);
  if (parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
  return number;
}

}  // namespace

bool IsPattern(std::string_view text) { return text.find_first_of("*?") != text.npos; }

bool FitsPattern(std::string_view text, std::string_view pattern) {
  std::size_t at = 0;
  std::size_t in_pattern = 0;
  // The place after the last star of the pattern, and the end of the text that the star matches.
  std::size_t star = std::string_view::npos;
  std::size_t star_end = 0;
  while (at < text.size()) {
    if (in_pattern < pattern.size() && pattern[in_pattern] == '*') {
      star = ++in_pattern;
      star_end = at;
    } else if (in_pattern < pattern.size() &&
               (pattern[in_pattern] == '?' || pattern[in_pattern] == text[at])) {
      ++in_pattern;
      ++at;
    } else if (star != std::string_view::npos) {
      in_pattern = star;
      at = ++star_end;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', in_pattern) == std::string_view::npos;
}

std::string Uppercase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return upper;
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

const EnumValueDescriptor* FindEnumValue(const EnumDescriptor& type, std::string_view text) {
  if (const auto number = Parse<int>(text)) return type.FindValueByNumber(*number);
  const std::string name = Uppercase(text);
  if (name.empty()) return nullptr;
  const EnumValueDescriptor* found = nullptr;
  int ends = 0;
  for (int i = 0; i < type.value_count(); ++i) {
    const std::string& known = type.value(i)->name();
    if (known == name) return type.value(i);
    const std::string end = "_" + name;
    if (known.size() > end.size() && known.substr(known.size() - end.size()) == end) {
      found = type.value(i);
      ++ends;
    }
  }
  return ends == 1 ? found : nullptr;
}

std::string EnumNames(const EnumDescriptor& type) {
  std::string names;
  for (int i = 0; i < type.value_count(); ++i) {
    names += (i == 0 ? "" : ", ") + type.value(i)->name();
  }
  return names;
}

std::optional<std::uint64_t> ParseUnsigned(std::string_view text) {
  if (text.substr(0, 2) == "0x") return Parse<std::uint64_t>(text.substr(2), 16);
  return Parse<std::uint64_t>(text);
}

std::optional<std::int64_t> ParseSigned(std::string_view text) { return Parse<std::int64_t>(text); }

std::optional<std::uint64_t> ParseRate(std::string_view text) {
  if (const auto kbps = ParseUnsigned(text)) return kbps;
  const std::size_t digits = std::min(text.find_first_not_of("0123456789."), text.size());
  double rate = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + digits, rate);
  if (digits == 0 || parsed.ptr != text.data() + digits) return std::nullopt;
  std::string unit = Uppercase(Trimmed(text.substr(digits)));
  const std::size_t bits = unit.find("B/S");
  if (bits != std::string::npos && bits + 3 == unit.size()) unit.erase(bits);
  static const std::string kUnits = "KMGT";
  const std::size_t power = unit.size() == 1 ? kUnits.find(unit) : std::string::npos;
  if (power == std::string::npos) return std::nullopt;
  rate *= std::pow(1000.0, static_cast<double>(power));
  // No rate of a message has more than 32 bits.
  if (rate > 1e18) return std::nullopt;
  return static_cast<std::uint64_t>(std::llround(rate));
}

std::optional<std::vector<std::uint32_t>> ParseDotted(std::string_view text) {
  std::vector<std::uint32_t> values;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find('.', begin), text.size());
    const auto value = Parse<std::uint32_t>(text.substr(begin, end - begin));
    if (!value) return std::nullopt;
    values.push_back(*value);
    begin = end + 1;
  }
  return values;
}

}  // namespace zorl2_inspect
