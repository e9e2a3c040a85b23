// Writes all JSON of the tool.
#pragma once

#include <rapidjson/prettywriter.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "tools/text/json_allocator.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

// Writes one value after the other, each on a line of its own. The caller calls the functions in
// the order of the JSON text.
class JsonWriter {
 public:
  enum class Layout { kIndented, kOneLine };

  // The output must remain valid.
  JsonWriter(Output& out, Layout layout);

  void BeginObject();
  void EndObject();
  void BeginArray();
  void EndArray();
  void Key(std::string_view name);

  void Null();
  void Value(bool value);
  void Value(double value);
  // Writes a text that is not UTF-8, which no JSON string can hold, as an object with its bytes:
  // {"hex": "67 65 ff"}. Reports the first one on standard error.
  void Value(std::string_view text);
  void Value(const char* text) { Value(std::string_view(text)); }
  void Value(const std::string& text) { Value(std::string_view(text)); }
  template <typename Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
  void Value(Integer value) {
    if constexpr (std::is_signed_v<Integer>) {
      Signed(value);
    } else {
      Unsigned(value);
    }
  }

  template <typename T>
  void Member(std::string_view name, const T& value) {
    Key(name);
    Value(value);
  }

  // Null for an empty text or an absent value.
  void MemberOrNull(std::string_view name, std::string_view text) {
    Key(name);
    if (text.empty()) {
      Null();
    } else {
      Value(text);
    }
  }
  template <typename T>
  void MemberOrNull(std::string_view name, const std::optional<T>& value) {
    Key(name);
    if (value) {
      Value(*value);
    } else {
      Null();
    }
  }

 private:
  struct Sink {
    using Ch = char;
    Output* out;
    void Put(char character) { out->Write(character); }
    void Flush() {}
  };
  using Compact = rapidjson::Writer<Sink, rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator>;
  using Pretty = rapidjson::PrettyWriter<Sink, rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator>;

  template <typename Function>
  void Do(Function function);
  void Bytes(std::string_view bytes);
  void Signed(std::int64_t value);
  void Unsigned(std::uint64_t value);

  Output& out_;
  Layout layout_;
  Sink sink_;
  Compact compact_;
  Pretty pretty_;
  int depth_ = 0;
  bool reported_ = false;
};

}  // namespace zorl2_inspect
